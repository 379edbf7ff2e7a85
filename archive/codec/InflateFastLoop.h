#pragma once

#include "archive/codec/InflateKernels.h"
#include "archive/codec/MatchCopy.h"
#include "base/LittleEndian.h"

#include <cstring>

namespace codec {

/// The body of every kernel. It is inlined into each of them, so that it is compiled for each kind of
/// processor. `kCopyNear` copies matches from less than kPairLeastDistance bytes before.
///
/// The processor cannot predict whether a symbol is a literal or a match, nor whether a match is near or far,
/// so the common path has no branch for it. Each look-up in the pair table writes one byte (the literal, or a
/// byte that the match overwrites) and copies 32 bytes (the match, or bytes that later symbols overwrite).
/// Then the output position moves on.
///
/// The stream is read at a bit position and not through a buffer that is refilled. The load of the bits for
/// one look-up then depends only on the look-up before the last one, so it has been done by the time it is
/// needed.
template <auto kCopyNear>
class InflateFastLoop {
  public:
    [[gnu::always_inline]] InflateFastLoop(const InflateBits& bits, std::uint8_t* space, std::size_t at,
                                           const InflateTables& tables)
        : tables_(tables), in_(bits.begin),
          position_(static_cast<std::uint64_t>(bits.next - in_) * 8 - bits.count), space_(space),
          out_(space + at) {
        Aim();
    }

    [[gnu::always_inline]] FastLoopEnd Run(const std::uint8_t* inEnd, const std::uint8_t* spaceEnd) {
        const std::uint64_t lastPosition = (static_cast<std::uint64_t>(inEnd - in_) - kFastInput) * 8;
        const std::uint8_t* const lastOut = spaceEnd - kFastSpace;
        FastLoopEnd end = FastLoopEnd::kMargins;
        while (position_ <= lastPosition && out_ <= lastOut && end == FastLoopEnd::kMargins) {
            // How far back a match may reach; a little less than exact for the second look-up.
            const std::uint64_t reach = static_cast<std::uint64_t>(out_ - space_) - kPairLeastDistance;
            if ((entry_ & kPairOther) == 0) [[likely]] {
                if (!PairStep(reach)) [[unlikely]]
                    return FastLoopEnd::kTooFar;
                if ((entry_ & kPairOther) == 0) [[likely]] {
                    if (!PairStep(reach)) [[unlikely]]
                        return FastLoopEnd::kTooFar;
                    continue;
                }
            }
            const std::uint64_t before = position_;
            if (!OtherStep(end, spaceEnd)) {
                position_ = before;
                break;
            }
        }
        return end;
    }

    [[gnu::always_inline]] void Leave(InflateBits& bits, std::size_t& at) const {
        bits.SeekBit(position_);
        at = static_cast<std::size_t>(out_ - space_);
    }

  private:
    static constexpr std::uint64_t Low(std::uint64_t bits, std::uint64_t count) {
        return bits & ((std::uint64_t{1} << count) - 1);
    }

    /// The stream at the bit position: at least 57 bits.
    [[gnu::always_inline]] std::uint64_t Load() const {
        return base::LoadLittle64(in_ + (position_ >> 3)) >> (position_ & 7);
    }

    [[gnu::always_inline]] void Aim() {
        word_ = Load();
        bits_ = word_;
        entry_ = tables_.pairs[Low(bits_, kPairBits)];
    }

    /// A literal or a match out of one entry. False when its distance is before the start.
    [[gnu::always_inline]] bool PairStep(std::uint64_t reach) {
        const std::uint64_t entry = entry_;
        const std::uint64_t drop = entry & 0xFF;
        // Less kPairLeastDistance, so that one comparison finds what is too near and what is too far.
        const auto base = static_cast<std::uint64_t>(static_cast<std::int64_t>(entry) >> kPairDistanceShift);
        const std::uint64_t distance = base + (Low(bits_, drop) >> ((entry >> 16) & 63));
        position_ += drop;
        // One entry drops at most kPairBits + 14 bits, so the old word holds enough for the next, and the new
        // one need not be waited for.
        static_assert(2 * (kPairBits + 14) <= 57);
        bits_ = word_ >> drop;
        word_ = Load();
        entry_ = tables_.pairs[Low(bits_, kPairBits)];

        *out_ = static_cast<std::uint8_t>(entry >> 24);
        std::uint8_t* const to = out_ + ((entry >> 32) & 1);
        const std::uint64_t length = (entry >> 8) & 0xFF;
        out_ += length;
        if (distance > reach) [[unlikely]]
            return CopyUncommon(to, distance + kPairLeastDistance, length);
        const std::uint8_t* const from = to - distance - kPairLeastDistance;
        std::memcpy(to, from, 16);
        std::memcpy(to + 16, from + 16, 16);
        if (length > 32) [[unlikely]]
            CopyMatchChunks(to + 32, from + 32, out_);
        return true;
    }

    [[gnu::always_inline]] bool CopyUncommon(std::uint8_t* to, std::uint64_t distance, std::uint64_t length) {
        if (distance < kPairLeastDistance) {
            kCopyNear(to, distance, length);
            return true;
        }
        if (distance <= static_cast<std::uint64_t>(to - space_)) {
            CopyMatchChunks(to, to - distance, to + length);
            return true;
        }
        out_ -= length;
        return false;
    }

    /// One symbol through the full tables. False, with the position in the middle of it, for a match that the
    /// space may be too small for; only Deflate64 has such long ones.
    [[gnu::always_inline]] bool OtherStep(FastLoopEnd& end, const std::uint8_t* spaceEnd) {
        const std::uint32_t symbol = Take(tables_.litLen.data(), tables_.litLenRootBits);
        if ((symbol & kEntryLiteral) != 0) {
            *out_++ = static_cast<std::uint8_t>(symbol >> 16);
        } else if ((symbol & kEntryEndOfBlock) != 0) {
            end = FastLoopEnd::kEndOfBlock;
            return true;
        } else {
            const std::uint64_t length = value_;
            // The word has room for 20 bits of a length and 29 of a distance, but not for the sixteen extra
            // bits of a Deflate64 length. No other entry drops more than sixteen in all.
            if ((symbol & 0xFF) > 16) [[unlikely]]
                word_ = Load();
            Take(tables_.distance.data(), tables_.distanceRootBits);
            const std::uint64_t distance = value_;
            if (distance > static_cast<std::uint64_t>(out_ - space_)) {
                end = FastLoopEnd::kTooFar;
                return true;
            }
            if (length > static_cast<std::uint64_t>(spaceEnd - out_))
                return false;
            if (length >= 128)
                CopyMatch(out_, distance, length);
            else if (distance < kPairLeastDistance)
                kCopyNear(out_, distance, length);
            else
                CopyMatchChunks(out_, out_ - distance, out_ + length);
            out_ += length;
        }
        Aim();
        return true;
    }

    /// Takes one symbol from `word_` and sets `value_` to its base and extra bits together.
    [[gnu::always_inline]] std::uint32_t Take(const std::uint32_t* table, unsigned rootBits) {
        std::uint32_t entry = table[Low(word_, rootBits)];
        if ((entry & kEntryLink) != 0) {
            word_ >>= entry & 0x3F;
            position_ += entry & 0x3F;
            entry = table[(entry >> 16) + Low(word_, (entry >> 8) & 0x1F)];
        }
        const unsigned drop = entry & 0x3F;
        value_ = (entry >> 16) + (Low(word_, drop) >> ((entry >> 8) & 0x1F));
        word_ >>= drop;
        position_ += drop;
        return entry;
    }

    const InflateTables& tables_;
    const std::uint8_t* in_;
    std::uint64_t position_; ///< in bits, from the start of the input
    std::uint64_t word_ = 0; ///< the stream from `position_` on
    std::uint64_t bits_ = 0; ///< the same, fewer bits, known earlier
    std::uint64_t entry_ = 0;
    std::uint64_t value_ = 0;
    std::uint8_t* space_;
    std::uint8_t* out_;
};

/// Runs the loop between the states that a kernel is given.
template <auto kCopyNear>
[[gnu::always_inline]] inline FastLoopEnd RunInflateFastLoop(InflateBits& bits, std::uint8_t* space,
                                                             std::size_t& at, std::size_t size,
                                                             const InflateTables& tables) {
    if (!tables.hasPairs || static_cast<std::size_t>(bits.end - bits.next) < kFastInput ||
        size - at < kFastSpace || at < kPairLiteralDistance)
        return FastLoopEnd::kMargins;
    InflateFastLoop<kCopyNear> loop(bits, space, at, tables);
    const FastLoopEnd end = loop.Run(bits.end, space + size);
    loop.Leave(bits, at);
    return end;
}

} // namespace codec
