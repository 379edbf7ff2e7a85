#pragma once

#include "archive/codec/InflateBits.h"
#include "archive/codec/InflateKernels.h"
#include "archive/codec/InflateTables.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace codec {

/// The longest way back that a match can name, in both modes: distance code 31 with all its extra bits.
inline constexpr std::size_t kFarthestMatch = 49153 + (1 << 14) - 1;

/// Where decoded bytes go: an array that may grow while it is filled.
class InflateOutput {
  public:
    virtual ~InflateOutput() = default;

    /// Asks for room for at least `size` bytes in all, which is at most the decoder's limit. The bytes below
    /// `used` are kept. The decoder may write to every byte of the returned array.
    virtual std::span<std::uint8_t> Grow(std::size_t used, std::size_t size) = 0;

    /// Called before every Grow. An output that need not keep everything may remove bytes from the front of
    /// the array and move the rest forward, as long as the last kFarthestMatch bytes below `used` stay.
    /// Returns the number of bytes removed.
    virtual std::size_t TakeFront(std::size_t used) {
        static_cast<void>(used);
        return 0;
    }
};

/// How the decoding of a stream ended.
struct InflateResult {
    std::int16_t status = 0;  ///< as Inflate returns it
    bool badTable = false;    ///< a code was refused: the output is not to be used
    std::size_t produced = 0; ///< bytes written to the output, those taken off the front included
};

/// Decodes one stream: blocks, their tables, and their symbols where the fast loop must not go (near the ends
/// of the arrays).
class InflateDecoder {
  public:
    /// Never produces more than `limit` bytes. `input` and `output` must outlive the decoder. With `start`,
    /// the first bytes of the output are there already and count as produced: matches may reach back into
    /// them.
    InflateDecoder(std::span<const std::uint8_t> input, InflateOutput& output, std::size_t limit,
                   bool deflate64, const InflateKernel& kernel, std::size_t start = 0);

    InflateResult Decode();

  private:
    enum class Outcome { kGoOn, kStop, kBadTable };

    Outcome DecodeBlock(unsigned type);
    Outcome CopyStored();
    bool ReadDynamicTables();
    bool ReadCodeLengths(std::span<std::uint8_t> lengths, std::span<const std::uint32_t> table,
                         unsigned rootBits);
    Outcome DecodeSymbols(const InflateTables& tables);
    Outcome DecodeOneSymbol(const InflateTables& tables, bool& endOfBlock);
    bool MakeRoom(std::size_t count);

    InflateBits bits_;
    InflateOutput& output_;
    std::span<std::uint8_t> space_;
    std::size_t at_ = 0; // in space_, as is limit_
    std::size_t limit_;
    std::size_t taken_ = 0; // bytes that the output took off the front
    bool deflate64_;
    const InflateKernel& kernel_;
    std::int16_t status_ = 0;
    InflateTables tables_;
};

} // namespace codec
