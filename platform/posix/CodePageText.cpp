#include "platform/CodePageText.h"

#include "base/Utf8.h"
#include "platform/posix/CodePageTable.h"
#include "platform/posix/IconvHandle.h"

namespace platform {
namespace {

std::string ReadMultiByte(int codePage, std::string_view bytes) {
    const IconvHandle converter("UTF-8", IconvName(codePage));
    if (!converter)
        return ReadSingleByte(1252, bytes);
    std::string result;
    result.reserve(bytes.size() * 3 / 2);
    while (!bytes.empty()) {
        bytes.remove_prefix(converter.Convert(bytes, result));
        if (bytes.empty())
            break;
        // The byte in front has no meaning here; what follows may start a character of its own.
        result.push_back('?');
        bytes.remove_prefix(1);
    }
    return result;
}

std::string WriteMultiByte(int codePage, std::string_view text) {
    const IconvHandle converter(IconvName(codePage), "UTF-8");
    if (!converter)
        return WriteSingleByte(1252, text);
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        text.remove_prefix(converter.Convert(text, result));
        if (text.empty())
            break;
        result.push_back('?');
        std::size_t skipped = 0;
        base::NextCodePoint(text, skipped);
        text.remove_prefix(skipped);
    }
    return result;
}

bool IsMultiByte(int codePage) {
    return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950;
}

} // namespace

std::string LegacyToUtf8(int codePage, std::string_view bytes) {
    return IsMultiByte(codePage) ? ReadMultiByte(codePage, bytes) : ReadSingleByte(codePage, bytes);
}

std::string Utf8ToLegacy(int codePage, std::string_view text) {
    return IsMultiByte(codePage) ? WriteMultiByte(codePage, text) : WriteSingleByte(codePage, text);
}

} // namespace platform
