#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace tests {

/// Builds, byte by byte, a PE image whose one section is a resource directory with a string table.
class PeBuilder {
  public:
    bool is64Bit = false;
    std::uint32_t language = 0x0409;
    std::map<std::uint32_t, std::u16string> strings; ///< by id

    /// The finished image; ResourcesAt() is known after it.
    std::string Build() {
        const std::string resources = Resources();
        image_ = "MZ";
        image_.resize(0x3C, '\0');
        Put32(image_, 0x40);
        image_.append("PE\0\0", 4);
        PutHeaders(static_cast<std::uint32_t>(resources.size()));
        resourcesAt_ = image_.size();
        return image_ + resources;
    }

    /// Offset of the resource section in the last image.
    std::size_t ResourcesAt() const { return resourcesAt_; }

    static constexpr std::uint32_t kAddress = 0x1000; ///< to which the section is loaded

    static void Put16(std::string& bytes, std::uint32_t value) {
        bytes.push_back(static_cast<char>(value & 0xFF));
        bytes.push_back(static_cast<char>(value >> 8 & 0xFF));
    }

    static void Put32(std::string& bytes, std::uint32_t value) {
        Put16(bytes, value & 0xFFFF);
        Put16(bytes, value >> 16);
    }

    static void Set32(std::string& bytes, std::size_t offset, std::uint32_t value) {
        std::string number;
        Put32(number, value);
        bytes.replace(offset, 4, number);
    }

  private:
    void PutHeaders(std::uint32_t size) {
        const std::uint32_t optionalSize = (is64Bit ? 112U : 96U) + 16 * 8;
        Put16(image_, is64Bit ? 0x8664 : 0x14C);
        Put16(image_, 1); // sections
        image_.append(12, '\0');
        Put16(image_, optionalSize);
        Put16(image_, 0x2102); // executable, 32-bit, DLL
        const std::size_t optional = image_.size();
        Put16(image_, is64Bit ? 0x20B : 0x10B);
        image_.resize(optional + (is64Bit ? 108 : 92), '\0');
        Put32(image_, 16);          // data directories
        image_.append(2 * 8, '\0'); // export, import
        Put32(image_, kAddress);
        Put32(image_, size);
        image_.resize(optional + optionalSize, '\0');
        image_.append(".rsrc\0\0\0", 8);
        Put32(image_, size);
        Put32(image_, kAddress);
        Put32(image_, size);
        Put32(image_, static_cast<std::uint32_t>(image_.size()) + 4 + 16);
        image_.append(16, '\0');
    }

    /// A directory with entries by id, each an id and an offset.
    static void PutDirectory(std::string& bytes, const std::map<std::uint32_t, std::uint32_t>& entries) {
        bytes.append(14, '\0');
        Put16(bytes, static_cast<std::uint32_t>(entries.size()));
        for (const auto& [id, offset] : entries) {
            Put32(bytes, id);
            Put32(bytes, offset);
        }
    }

    std::map<std::uint32_t, std::string> Blocks() const {
        std::map<std::uint32_t, std::string> blocks;
        for (const auto& [id, text] : strings)
            blocks[id / 16 + 1];
        for (auto& [block, data] : blocks) {
            for (std::uint32_t id = (block - 1) * 16; id < block * 16; ++id) {
                const auto found = strings.find(id);
                const std::u16string text = found == strings.end() ? u"" : found->second;
                Put16(data, static_cast<std::uint32_t>(text.size()));
                for (const char16_t unit : text)
                    Put16(data, unit);
            }
        }
        return blocks;
    }

    /// Type, block and language directories, the data entries, then the blocks.
    std::string Resources() const {
        constexpr std::uint32_t kDirectory = 0x80000000;
        const std::map<std::uint32_t, std::string> blocks = Blocks();
        const auto count = static_cast<std::uint32_t>(blocks.size());
        const std::uint32_t blockLevel = 16 + 8;
        const std::uint32_t languageLevel = blockLevel + 16 + 8 * count;
        const std::uint32_t entryLevel = languageLevel + 24 * count;
        std::string bytes;
        PutDirectory(bytes, {{6, kDirectory | blockLevel}});
        std::map<std::uint32_t, std::uint32_t> level;
        for (const auto& [block, data] : blocks)
            level[block] = kDirectory | (languageLevel + 24 * static_cast<std::uint32_t>(level.size()));
        PutDirectory(bytes, level);
        for (std::uint32_t i = 0; i < count; ++i)
            PutDirectory(bytes, {{language, entryLevel + 16 * i}});
        std::uint32_t data = entryLevel + 16 * count;
        for (const auto& [block, content] : blocks) {
            Put32(bytes, kAddress + data);
            Put32(bytes, static_cast<std::uint32_t>(content.size()));
            bytes.append(8, '\0');
            data += static_cast<std::uint32_t>(content.size());
        }
        for (const auto& [block, content] : blocks)
            bytes += content;
        return bytes;
    }

    std::string image_;
    std::size_t resourcesAt_ = 0;
};

} // namespace tests
