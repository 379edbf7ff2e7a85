#pragma once

#include "support/BitWriter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

namespace support {

/// A small compressor for the reducing methods (ZIP application note, section 5.2): copies first, then
/// follower sets.
class ReduceWriter {
  public:
    explicit ReduceWriter(unsigned factor) : factor_(factor) {}

    /// Bytes as escapes and copies, not yet as bits.
    std::vector<std::uint8_t> Copies(std::span<const std::uint8_t> data) const {
        const unsigned lengthMask = (1u << (8 - factor_)) - 1;
        std::vector<std::uint8_t> out;
        std::map<std::array<std::uint8_t, 3>, std::size_t> seen;
        for (std::size_t at = 0; at < data.size();) {
            std::size_t length = 0;
            std::size_t distance = 0;
            if (at + 3 <= data.size()) {
                const auto [entry, fresh] = seen.try_emplace({data[at], data[at + 1], data[at + 2]}, at);
                distance = fresh ? 0 : at - entry->second;
                entry->second = at;
                if (distance != 0 && distance <= (256u << factor_))
                    while (length < lengthMask + 255 + 3 && at + length < data.size() &&
                           data[at + length] == data[at + length - distance])
                        length++;
            }
            const std::size_t back = distance - 1;
            // The shortest copy from the nearest 256 bytes would look like the escaped escape.
            if (length < 3 || (length == 3 && back < 256)) {
                out.push_back(data[at]);
                if (data[at++] == kEscape)
                    out.push_back(0);
                continue;
            }
            const auto coded = static_cast<unsigned>(length - 3);
            out.push_back(kEscape);
            out.push_back(
                static_cast<std::uint8_t>((back >> 8) << (8 - factor_) | std::min(coded, lengthMask)));
            if (coded >= lengthMask)
                out.push_back(static_cast<std::uint8_t>(coded - lengthMask));
            out.push_back(static_cast<std::uint8_t>(back));
            at += length;
        }
        return out;
    }

    /// The bytes as bits under sets of the most frequent followers, at most `mostFollowers` each.
    static std::vector<std::uint8_t> Followers(std::span<const std::uint8_t> bytes,
                                               std::size_t mostFollowers) {
        std::vector<std::array<unsigned, 256>> pairs(256);
        std::uint8_t last = 0;
        for (const std::uint8_t byte : bytes) {
            pairs[last][byte]++;
            last = byte;
        }
        BitWriter out;
        std::array<std::vector<std::uint8_t>, 256> sets;
        for (std::size_t j = 256; j-- > 0;) {
            std::vector<std::uint8_t>& set = sets[j];
            for (unsigned byte = 0; byte < 256; byte++)
                if (pairs[j][byte] != 0)
                    set.push_back(static_cast<std::uint8_t>(byte));
            std::stable_sort(set.begin(), set.end(),
                             [&](std::uint8_t a, std::uint8_t b) { return pairs[j][a] > pairs[j][b]; });
            set.resize(std::min(set.size(), mostFollowers));
            out.Bits(static_cast<std::uint32_t>(set.size()), 6);
            for (const std::uint8_t follower : set)
                out.Bits(follower, 8);
        }
        last = 0;
        for (const std::uint8_t byte : bytes) {
            const std::vector<std::uint8_t>& set = sets[last];
            const auto found = std::find(set.begin(), set.end(), byte);
            if (set.empty()) {
                out.Bits(byte, 8);
            } else if (found == set.end()) {
                out.Bits(1, 1).Bits(byte, 8);
            } else {
                const auto size = static_cast<std::uint32_t>(set.size());
                const auto bits = size < 3 ? 1u : static_cast<unsigned>(std::bit_width(size - 1));
                out.Bits(0, 1).Bits(static_cast<std::uint32_t>(found - set.begin()), bits);
            }
            last = byte;
        }
        return out.Stream();
    }

    std::vector<std::uint8_t> Compress(std::span<const std::uint8_t> data,
                                       std::size_t mostFollowers = 32) const {
        return Followers(Copies(data), mostFollowers);
    }

  private:
    static constexpr std::uint8_t kEscape = 144;
    unsigned factor_;
};

} // namespace support
