#pragma once

#include "support/Number.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <zlib.h>

namespace tests {

/// An entry to store, and what its header is to say that is not so.
struct RarItem {
    std::string name; ///< with "/" between folders
    std::string content;
    bool folder = false;
    bool link = false;
    bool encrypted = false;
    bool solid = false;
    bool packed = false; ///< claims a packing method other than stored
    std::optional<std::uint64_t> size{};
    std::optional<std::uint32_t> crc{};
    bool splitBefore = false;
    bool splitAfter = false;
};

/// Writes RAR archives of stored entries, or one volume of a set, in format 5 or 4.
class RarBuilder {
  public:
    int format = 5;
    std::vector<RarItem> items;
    bool isVolume = false;
    bool moreVolumes = false;
    bool encryptedHeaders = false;
    bool hasEnd = true;
    std::uint32_t time = 1'000'000'000; ///< format 5: Unix seconds
    std::uint32_t dosTime = 0x2B293C60; ///< format 4: 2001-09-09 07:35:00

    std::string Bytes() const {
        std::string bytes =
            format == 5 ? std::string("Rar!\x1A\x07\x01\x00", 8) : std::string("Rar!\x1A\x07\x00", 7);
        bytes += format == 5 ? Main5() : Main4();
        for (const RarItem& item : items)
            bytes += format == 5 ? Entry5(item) : Entry4(item);
        if (hasEnd)
            bytes += format == 5 ? Block5(Variable(5) + Variable(0) + Variable(moreVolumes))
                                 : Block4(0x7B, 0x4000u | moreVolumes, "");
        return bytes;
    }

    static std::uint32_t Crc(std::string_view bytes) {
        return static_cast<std::uint32_t>(
            ::crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
    }

  private:
    static std::string Variable(std::uint64_t value) {
        std::string bytes;
        for (; value > 0x7F; value >>= 7)
            bytes += static_cast<char>(value | 0x80);
        return bytes += static_cast<char>(value);
    }

    static std::string Block5(const std::string& fields) {
        const std::string header = Variable(fields.size()) + fields;
        return Number(Crc(header), 4) + header;
    }

    static std::string Block4(unsigned type, unsigned flags, const std::string& fields) {
        const std::string header = Number(type, 1) + Number(flags, 2) + Number(fields.size() + 7, 2) + fields;
        return Number(Crc(header), 2) + header;
    }

    std::string Main5() const {
        if (encryptedHeaders)
            return Block5(Variable(4) + Variable(0) + Variable(0) + Variable(0) + Variable(15) +
                          std::string(16, 's'));
        return Block5(Variable(1) + Variable(0) + Variable(isVolume));
    }

    std::string Main4() const {
        constexpr unsigned kNewNumbering = 0x10;
        return Block4(0x73, isVolume | kNewNumbering | (encryptedHeaders ? 0x80u : 0u), std::string(6, '\0'));
    }

    std::string Entry5(const RarItem& item) const {
        std::string extra;
        const auto record = [&](const std::string& fields) { extra += Variable(fields.size()) + fields; };
        if (item.encrypted)
            record(Variable(1) + std::string(30, 'e'));
        if (item.link)
            record(Variable(5) + Variable(1) + Variable(0) + Variable(item.content.size()) + item.content);
        const std::string data = item.link ? "" : item.content;
        const std::uint64_t compression = (item.packed ? 3u << 7 : 0u) | (item.solid ? 0x40u : 0u);
        return Block5(Variable(2) +
                      Variable((extra.empty() ? 0u : 1u) | 2u | (item.splitBefore ? 8u : 0u) |
                               (item.splitAfter ? 16u : 0u)) +
                      (extra.empty() ? "" : Variable(extra.size())) + Variable(data.size()) +
                      Variable(item.folder ? 3 : 6) + Variable(item.size.value_or(data.size())) +
                      Variable(item.folder ? 0x41ED : 0x81A4) + Number(time, 4) +
                      (item.folder ? "" : Number(item.crc.value_or(Crc(data)), 4)) + Variable(compression) +
                      Variable(1) + Variable(item.name.size()) + item.name + extra) +
               data;
    }

    std::string Entry4(const RarItem& item) const {
        const unsigned flags = 0x8000u | (item.folder ? 0xE0u : 0u) | (item.encrypted ? 4u : 0u) |
                               (item.solid ? 16u : 0u) | (item.splitBefore ? 1u : 0u) |
                               (item.splitAfter ? 2u : 0u) | 0x100u;
        const std::uint64_t size = item.size.value_or(item.content.size());
        const unsigned mode = item.folder ? 0x41ED : item.link ? 0xA1FF : 0x81A4;
        return Block4(0x74, flags,
                      Number(item.content.size(), 4) + Number(size, 4) + Number(3, 1) +
                          Number(item.crc.value_or(Crc(item.content)), 4) + Number(dosTime, 4) +
                          Number(item.packed ? 29 : 20, 1) + Number(item.packed ? 0x33 : 0x30, 1) +
                          Number(item.name.size(), 2) + Number(mode, 4) + Number(0, 4) +
                          Number(size >> 32, 4) + item.name) +
               item.content;
    }
};

} // namespace tests
