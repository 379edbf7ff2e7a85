#include "platform/DropFiles.h"

#include "base/LittleEndian.h"
#include "base/Utf8.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace platform {
namespace {

constexpr std::size_t kWideFlagOffset = 16;

std::vector<std::string> AnsiNames(std::span<const std::uint8_t> bytes) {
    std::vector<std::string> names;
    std::string_view rest(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    for (std::size_t end = rest.find('\0'); end != 0 && end != std::string_view::npos;
         end = rest.find('\0')) {
        names.push_back(AnsiToUtf8(rest.substr(0, end)));
        rest.remove_prefix(end + 1);
    }
    return names;
}

std::vector<std::string> WideNames(std::span<const std::uint8_t> bytes) {
    std::vector<std::string> names;
    std::u16string name;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto unit = static_cast<char16_t>(base::LoadLittle16(&bytes[at]));
        if (unit != 0) {
            name.push_back(unit);
            continue;
        }
        if (name.empty())
            break;
        names.push_back(base::Utf8FromUtf16(name));
        name.clear();
    }
    return names;
}

} // namespace

std::string BuildDropFiles(const std::vector<std::string>& paths) {
    std::string block(kDropFilesHeaderSize, '\0');
    block[0] = static_cast<char>(kDropFilesHeaderSize);
    for (const std::string& path : paths) {
        if (path.empty())
            continue; // would end the list
        block += Utf8ToAnsi(path);
        block.push_back('\0');
    }
    block.push_back('\0');
    return block;
}

std::vector<std::string> ParseDropFiles(std::span<const std::uint8_t> block) {
    if (block.size() < kDropFilesHeaderSize)
        return {};
    const std::size_t start = base::LoadLittle32(block.data());
    if (start < kDropFilesHeaderSize || start > block.size())
        return {};
    const std::span<const std::uint8_t> names = block.subspan(start);
    return base::LoadLittle32(&block[kWideFlagOffset]) == 0 ? AnsiNames(names) : WideNames(names);
}

} // namespace platform
