#pragma once

#include "InflateKernels.h"
#include "InflateSymbol.h"
#include "MatchCopy.h"

namespace archive {

/// The body of every kernel. A template-free function that is inlined into each, so that each is compiled for
/// its own processor.
[[gnu::always_inline]] inline FastLoopEnd InflateFastLoop(InflateBits& state, std::uint8_t* space,
                                                          std::size_t& at, std::size_t size,
                                                          const InflateTables& tables) {
    if (static_cast<std::size_t>(state.end - state.next) < kFastInput || size - at < kFastSpace)
        return FastLoopEnd::kMargins;
    InflateBits bits = state;
    std::uint8_t* out = space + at;
    const std::uint8_t* const inLast = state.end - kFastInput;
    const std::uint8_t* const outLast = space + size - kFastSpace;
    FastLoopEnd end = FastLoopEnd::kMargins;
    while (bits.next <= inLast && out <= outLast) {
        bits.Refill();
        const InflateBits before = bits;
        const SymbolBits symbol = TakeSymbol(bits, tables.litLen.data(), tables.litLenRootBits);
        if ((symbol.entry & kEntryLiteral) != 0) {
            *out++ = static_cast<std::uint8_t>(symbol.entry >> 16);
            continue;
        }
        if ((symbol.entry & kEntryEndOfBlock) != 0) {
            end = FastLoopEnd::kEndOfBlock;
            break;
        }
        const std::size_t length = symbol.Value();
        bits.Refill();
        const std::size_t distance =
            TakeSymbol(bits, tables.distance.data(), tables.distanceRootBits).Value();
        if (distance > static_cast<std::size_t>(out - space)) {
            end = FastLoopEnd::kTooFar;
            break;
        }
        // Only Deflate64 has matches longer than the margin.
        if (length > kFastSpace && length > static_cast<std::size_t>(space + size - out)) {
            bits = before;
            break;
        }
        CopyMatch(out, distance, length);
        out += length;
    }
    state = bits;
    at = static_cast<std::size_t>(out - space);
    return end;
}

} // namespace archive
