#pragma once

#include "base/LittleEndian.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>

namespace codec {

/// Bits of a byte array, lowest bit of each byte first. Past the end of the array they read as 0.
///
/// `buffer` holds `count` valid bits; what stands above them is either 0 or what the bytes from `next` on
/// will put there anyway, so that refilling by OR is always right. The decode loops work on copies of these
/// members.
struct InflateBits {
    const std::uint8_t* begin = nullptr;
    const std::uint8_t* next = nullptr;
    const std::uint8_t* end = nullptr;
    std::uint64_t buffer = 0;
    unsigned count = 0;
    unsigned missing = 0; ///< bytes made up after the end; some may still be in `buffer`

    explicit InflateBits(std::span<const std::uint8_t> input)
        : begin(input.data()), next(input.data()), end(input.data() + input.size()) {}

    /// Makes at least 56 bits valid.
    void Refill() {
        if (end - next >= 8) {
            buffer |= base::LoadLittle64(next) << count;
            next += (63 - count) >> 3;
            count |= 56;
            return;
        }
        for (; count < 56; count += 8) {
            if (next != end)
                buffer |= static_cast<std::uint64_t>(*next++) << count;
            else
                missing++;
        }
    }

    void DropBits(unsigned bits) {
        assert(bits <= count);
        buffer >>= bits;
        count -= bits;
    }

    /// The next `bits` bits, at most 32, taken.
    std::uint32_t GetBits(unsigned bits) {
        assert(bits <= 32);
        if (count < bits)
            Refill();
        const auto value = static_cast<std::uint32_t>(buffer & ((std::uint64_t{1} << bits) - 1));
        DropBits(bits);
        return value;
    }

    /// Whether no bit of the input is left: all that follows reads as 0.
    bool Exhausted() const { return next == end && missing * 8 >= count; }

    /// Index of the first byte of which no bit has been taken; past the size when bits were made up.
    std::size_t BytePosition() const { return static_cast<std::size_t>(next - begin) + missing - count / 8; }

    /// Index of the first bit that has not been taken; past the end when bits were made up.
    std::uint64_t BitPosition() const {
        return (static_cast<std::uint64_t>(next - begin) + missing) * 8 - count;
    }

    /// Goes on at byte `position`, which is not past the end, and forgets the bits before it.
    void Seek(std::size_t position) {
        assert(position <= static_cast<std::size_t>(end - begin));
        next = begin + position;
        buffer = 0;
        count = 0;
        missing = 0;
    }

    /// Goes on at bit `position`, which is not past the end.
    void SeekBit(std::uint64_t position) {
        Seek(static_cast<std::size_t>(position >> 3));
        Refill();
        DropBits(static_cast<unsigned>(position & 7));
    }
};

} // namespace codec
