#include "platform/ProfileStrings.h"

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/ProfileText.h"

#include <algorithm>

namespace platform {
namespace {

constexpr std::uint64_t kMaxFileSize = 16U << 20;

} // namespace

std::size_t GetProfileString(std::string_view section, std::string_view key, std::string_view fallback,
                             std::span<char> buffer, const std::string& file) {
    if (buffer.empty())
        return 0;
    base::SystemError error;
    const std::string content = ReadWholeFile(file, kMaxFileSize, error).value_or("");
    const std::optional<std::string_view> found =
        FindProfileValue(content, Utf8ToAnsi(section), Utf8ToAnsi(key));
    const std::string value = found ? AnsiToUtf8(*found) : std::string(fallback);
    const std::size_t length = std::min(value.size(), buffer.size() - 1);
    std::copy_n(value.begin(), length, buffer.begin());
    buffer[length] = '\0';
    return length;
}

base::SystemError WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                                     const std::string& file) {
    base::SystemError error;
    const std::optional<std::string> before = ReadWholeFile(file, kMaxFileSize, error);
    // A file that is there but cannot be read must not be replaced by one with a single value.
    if (!before && error.code != base::kErrorFileNotFound)
        return error;
    const std::string content =
        SetProfileValue(before.value_or(""), Utf8ToAnsi(section), Utf8ToAnsi(key), Utf8ToAnsi(value));
    return WriteWholeFile(file, content);
}

} // namespace platform
