#include "platform/CodePage.h"

#include "base/LegacyCharset.h"
#include "base/Utf8.h"
#include "platform/CodePageText.h"

namespace platform {
namespace {

int legacyCodePage = 1252;

} // namespace

void SetLegacyCharset(int charset) {
    legacyCodePage = base::CodePageOfCharset(charset);
}

std::string AnsiToUtf8(std::string_view bytes) {
    if (base::AsciiPrefix(bytes) == bytes.size())
        return std::string(bytes);
    const int codePage = AnsiCodePage();
    if (codePage != kUtf8CodePage)
        return LegacyToUtf8(codePage, bytes);
    return base::IsUtf8(bytes) ? std::string(bytes) : LegacyToUtf8(legacyCodePage, bytes);
}

std::string FileTextToUtf8(std::string_view bytes) {
    return base::IsUtf8(bytes) ? std::string(bytes) : AnsiToUtf8(bytes);
}

std::string Utf8ToAnsi(std::string_view text) {
    if (base::AsciiPrefix(text) == text.size())
        return std::string(text);
    const int codePage = AnsiCodePage();
    return codePage == kUtf8CodePage ? base::CleanedUtf8(text) : Utf8ToLegacy(codePage, text);
}

std::string CutToAnsiBytes(std::string_view text, std::size_t maxAnsiBytes) {
    if (base::AsciiPrefix(text) == text.size())
        return std::string(text.substr(0, maxAnsiBytes));
    std::size_t used = 0;
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t start = position;
        base::NextCodePoint(text, position);
        used += Utf8ToAnsi(text.substr(start, position - start)).size();
        if (used > maxAnsiBytes)
            return std::string(text.substr(0, start));
    }
    return std::string(text);
}

} // namespace platform
