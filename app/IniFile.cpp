#include "app/IniFile.h"

#include "base/ProfileText.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

namespace app {

namespace {

constexpr std::uint64_t kLargestFile = 16U << 20;

} // namespace

std::optional<std::string> ReadIniContent(const std::string& file) {
    base::SystemError error;
    std::optional<std::string> content = platform::ReadWholeFile(file, kLargestFile, error);
    if (!content && error.code == base::kErrorFileNotFound)
        return std::string();
    return content;
}

void ReplaceIniContent(const std::string& file, const std::string& before, const std::string& after) {
    if (after != before)
        static_cast<void>(platform::WriteWholeFile(file, after));
}

std::string ReadIni(const std::string& section, const std::string& key, const std::string& fallback,
                    const std::string& file) {
    const std::string content = ReadIniContent(file).value_or("");
    const auto value = base::FindProfileValue(content, section, key);
    return value ? platform::FileTextToUtf8(*value) : fallback;
}

bool WriteIni(const std::string& section, const std::string& key, const std::string& value,
              const std::string& file) {
    // A file that is there but cannot be read must not be replaced by one with a single value.
    if (const auto content = ReadIniContent(file))
        ReplaceIniContent(file, *content, base::SetProfileValue(*content, section, key, value));
    return true;
}

} // namespace app
