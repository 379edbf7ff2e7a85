#include "archive/codec/FollowerTable.h"

#include <algorithm>
#include <bit>

namespace codec {

namespace {

constexpr unsigned kMostFollowers = 32;

/// Bits of an index into a set of `count` followers: as many as the numbers 0..count-1 need, but at least
/// one.
constexpr unsigned IndexBits(unsigned count) {
    return std::max(1u, static_cast<unsigned>(std::bit_width(count - 1)));
}

static_assert(IndexBits(1) == 1 && IndexBits(2) == 1 && IndexBits(3) == 2 && IndexBits(4) == 2);
static_assert(IndexBits(5) == 3 && IndexBits(16) == 4 && IndexBits(17) == 5 && IndexBits(32) == 5);

/// The entry for a value that is stored in full behind `before` bits.
constexpr std::uint32_t InFull(std::uint32_t before) {
    return before << 24 | 0xFF << 16 | (8 + before);
}

} // namespace

void FollowerTable::Read(InflateBits& bits) {
    for (std::size_t j = rows_.size(); j-- > 0;) {
        std::array<std::uint32_t, kRow>& row = rows_[j];
        const unsigned count = std::min(bits.GetBits(6), kMostFollowers);
        if (count == 0) {
            row.fill(InFull(0));
            continue;
        }
        const unsigned indexBits = IndexBits(count);
        const std::size_t indexes = std::size_t{1} << indexBits;
        for (std::size_t k = 0; k < indexes; k++) {
            // An index past the set reads as 0.
            const std::uint32_t follower = k < count ? bits.GetBits(8) : 0;
            row[2 * k] = follower << 8 | (1 + indexBits);
            row[2 * k + 1] = InFull(1);
        }
        for (std::size_t filled = 2 * indexes; filled < kRow; filled *= 2)
            std::copy_n(row.begin(), filled, row.begin() + static_cast<std::ptrdiff_t>(filled));
    }
}

} // namespace codec
