#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace tests {

/// Builds, byte by byte, a PE image whose one section is a resource directory with a string table.
class PeBuilder {
  public:
    bool is64Bit = false;
    std::uint32_t language = 0x0409;
    std::map<std::uint32_t, std::u16string> strings; ///< by id

    std::string Build() const {
        constexpr std::uint32_t kOptional = 0x58; // behind the DOS header, the signature and the COFF header
        const std::string resources = Resources();
        const auto size = static_cast<std::uint32_t>(resources.size());
        std::string image(ResourcesAt(), '\0');
        image.replace(0, 2, "MZ");
        Set32(image, 0x3C, 0x40);
        image.replace(0x40, 2, "PE");
        Set32(image, 0x44, (is64Bit ? 0x8664 : 0x14C) | 1 << 16); // machine, one section
        Set32(image, 0x54, OptionalSize() | 0x2102 << 16);        // executable, 32-bit, DLL
        Set32(image, kOptional, is64Bit ? 0x20B : 0x10B);
        const std::uint32_t directories = kOptional + OptionalSize() - 16 * 8;
        Set32(image, directories - 4, 16);
        Set32(image, directories + 16, kAddress); // the third, of resources
        Set32(image, directories + 20, size);
        const std::uint32_t section = kOptional + OptionalSize();
        image.replace(section, 5, ".rsrc");
        Set32(image, section + 8, size);
        Set32(image, section + 12, kAddress);
        Set32(image, section + 16, size);
        Set32(image, section + 20, ResourcesAt());
        return image + resources;
    }

    /// Offset of the resource section in the image.
    std::uint32_t ResourcesAt() const { return 0x58 + OptionalSize() + 40; }

    static void Set32(std::string& bytes, std::size_t offset, std::uint32_t value) {
        std::string number;
        Add32(number, value);
        bytes.replace(offset, 4, number);
    }

  private:
    static constexpr std::uint32_t kAddress = 0x1000; // to which the section is loaded

    std::uint32_t OptionalSize() const { return (is64Bit ? 112U : 96U) + 16 * 8; }

    static void Add16(std::string& bytes, std::uint32_t value) {
        bytes.push_back(static_cast<char>(value & 0xFF));
        bytes.push_back(static_cast<char>(value >> 8 & 0xFF));
    }

    static void Add32(std::string& bytes, std::uint32_t value) {
        Add16(bytes, value & 0xFFFF);
        Add16(bytes, value >> 16);
    }

    /// A directory with entries by id, each an id and an offset.
    static void AddDirectory(std::string& bytes, const std::map<std::uint32_t, std::uint32_t>& entries) {
        bytes.append(14, '\0');
        Add16(bytes, static_cast<std::uint32_t>(entries.size()));
        for (const auto& [id, offset] : entries) {
            Add32(bytes, id);
            Add32(bytes, offset);
        }
    }

    /// Sixteen strings, each a count of units and the units, by block number.
    std::map<std::uint32_t, std::string> Blocks() const {
        std::map<std::uint32_t, std::string> blocks;
        for (const auto& [present, ignored] : strings) {
            std::string& data = blocks[present / 16 + 1];
            data.clear();
            for (std::uint32_t id = present / 16 * 16; id < present / 16 * 16 + 16; ++id) {
                const auto found = strings.find(id);
                const std::u16string text = found == strings.end() ? u"" : found->second;
                Add16(data, static_cast<std::uint32_t>(text.size()));
                for (const char16_t unit : text)
                    Add16(data, unit);
            }
        }
        return blocks;
    }

    /// Type, block and language directories, the data entries, then the blocks.
    std::string Resources() const {
        constexpr std::uint32_t kDirectory = 0x80000000;
        const std::map<std::uint32_t, std::string> blocks = Blocks();
        const auto count = static_cast<std::uint32_t>(blocks.size());
        const std::uint32_t languages = 24 + 16 + 8 * count;
        const std::uint32_t entries = languages + 24 * count;
        std::string bytes;
        AddDirectory(bytes, {{6, kDirectory | 24}});
        std::map<std::uint32_t, std::uint32_t> level;
        for (const auto& [block, data] : blocks)
            level[block] = kDirectory | (languages + 24 * static_cast<std::uint32_t>(level.size()));
        AddDirectory(bytes, level);
        for (std::uint32_t i = 0; i < count; ++i)
            AddDirectory(bytes, {{language, entries + 16 * i}});
        std::string content;
        for (const auto& [block, data] : blocks) {
            Add32(bytes, kAddress + entries + 16 * count + static_cast<std::uint32_t>(content.size()));
            Add32(bytes, static_cast<std::uint32_t>(data.size()));
            bytes.append(8, '\0');
            content += data;
        }
        return bytes + content;
    }
};

} // namespace tests
