#include "platform/windows/Wide.h"

#include "platform/windows/Windows.h"

namespace platform {

std::wstring WideOf(std::string_view text) {
    const int size = static_cast<int>(text.size());
    const int units = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), units);
    return wide;
}

std::string Utf8OfWide(std::wstring_view units) {
    const int size = static_cast<int>(units.size());
    const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, units.data(), size, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(bytes), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, units.data(), size, text.data(), bytes, nullptr, nullptr);
    return text;
}

} // namespace platform
