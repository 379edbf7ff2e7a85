#include "CodePageText.h"

#include "Wide.h"
#include "Windows.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <cstdlib>

namespace platform {
namespace {

UINT KnownPage(int codePage) {
    const auto page = static_cast<UINT>(codePage);
    return ::IsValidCodePage(page) != 0 ? page : 1252;
}

} // namespace

std::string LegacyToUtf8(int codePage, std::string_view bytes) {
    const UINT page = KnownPage(codePage);
    const int size = static_cast<int>(bytes.size());
    const int units = ::MultiByteToWideChar(page, 0, bytes.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    ::MultiByteToWideChar(page, 0, bytes.data(), size, wide.data(), units);
    // Bytes without a meaning come as one of the control characters above 0x7F, or as U+FFFD.
    std::ranges::replace_if(
        wide, [](wchar_t unit) { return unit == 0xFFFD || (unit >= 0x80 && unit < 0xA0); }, L'?');
    return Utf8OfWide(wide);
}

std::string Utf8ToLegacy(int codePage, std::string_view text) {
    const UINT page = KnownPage(codePage);
    const std::wstring wide = WideOf(text);
    const int size = static_cast<int>(wide.size());
    const int length =
        ::WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, wide.data(), size, nullptr, 0, "?", nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    ::WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, wide.data(), size, bytes.data(), length, "?", nullptr);
    return bytes;
}

int AnsiCodePage() {
    const char* wanted = std::getenv("PELLARION_ANSI_CODEPAGE");
    const int number = wanted == nullptr ? 0 : std::atoi(wanted);
    return number > 0 ? number : static_cast<int>(::GetACP());
}

} // namespace platform
