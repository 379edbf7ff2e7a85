#pragma once

#include "archive/codec/InflateBits.h"
#include "archive/codec/InflateTables.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace codec {

/// Input bytes and output space that a fast loop leaves to the careful loop.
inline constexpr std::size_t kFastInput = 32;
inline constexpr std::size_t kFastSpace = 640;

/// How a fast loop ended.
enum class FastLoopEnd {
    kMargins,    ///< too near the end of the input or of the space; the careful loop goes on
    kEndOfBlock, ///< symbol 256
    kTooFar,     ///< a distance before the start of the output
};

/// One way to decode the symbols of a block where neither the input nor the space ends soon.
struct InflateKernel {
    const char* name;

    /// Decodes from `bits` to space[at..size-1] and moves both on. Writes nowhere else and reads no input
    /// byte past the end. A match that does not fit in the space is left in the bits.
    FastLoopEnd (*decode)(InflateBits& bits, std::uint8_t* space, std::size_t& at, std::size_t size,
                          const InflateTables& tables);
};

/// The ways that this processor can run, the portable one first, the fastest last.
const std::vector<const InflateKernel*>& InflateKernels();

} // namespace codec
