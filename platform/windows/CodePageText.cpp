#include "platform/CodePageText.h"

#include "base/Utf8.h"
#include "platform/CodePage.h"
#include "platform/windows/Wide.h"
#include "platform/windows/Windows.h"

#include <array>
#include <cstdlib>

namespace platform {
namespace {

UINT KnownPage(int codePage) {
    const auto page = static_cast<UINT>(codePage);
    return ::IsValidCodePage(page) != 0 ? page : 1252;
}

/// Reads the character that `bytes` begin with, and appends it; returns its length, 0 when there is none.
std::size_t ReadCharacter(UINT page, std::string_view bytes, std::wstring& text) {
    const std::size_t length = ::IsDBCSLeadByteEx(page, static_cast<BYTE>(bytes[0])) != 0 ? 2 : 1;
    std::array<wchar_t, 2> units{};
    if (length > bytes.size())
        return 0;
    const int count =
        ::MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(length),
                              units.data(), static_cast<int>(units.size()));
    // Bytes without a meaning may also come as one of the control characters above 0x7F.
    if (count <= 0 || (units[0] >= 0x80 && units[0] < 0xA0))
        return 0;
    text.append(units.data(), static_cast<std::size_t>(count));
    return length;
}

} // namespace

std::string LegacyToUtf8(int codePage, std::string_view bytes) {
    const UINT page = KnownPage(codePage);
    std::wstring text;
    while (!bytes.empty()) {
        std::size_t length = ReadCharacter(page, bytes, text);
        if (length == 0) {
            // What follows the byte in front may start a character of its own.
            text.push_back(L'?');
            length = 1;
        }
        bytes.remove_prefix(length);
    }
    return Utf8OfWide(text);
}

std::string Utf8ToLegacy(int codePage, std::string_view text) {
    const UINT page = KnownPage(codePage);
    std::string bytes;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        const bool isText = base::NextCodePoint(text, position) != base::kNotUtf8;
        const std::wstring wide = WideOf(text.substr(start, position - start));
        std::array<char, 4> written{};
        BOOL isMissing = FALSE;
        const int count =
            ::WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()),
                                  written.data(), static_cast<int>(written.size()), nullptr, &isMissing);
        if (!isText || count <= 0 || isMissing != 0)
            bytes.push_back('?');
        else
            bytes.append(written.data(), static_cast<std::size_t>(count));
    }
    return bytes;
}

int AnsiCodePage() {
    const char* wanted = std::getenv("PELLARION_ANSI_CODEPAGE");
    const int number = wanted == nullptr ? 0 : std::atoi(wanted);
    return number > 0 ? number : static_cast<int>(::GetACP());
}

} // namespace platform
