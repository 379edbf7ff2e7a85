#pragma once

#include "archive/codec/InflateBits.h"
#include "archive/codec/InflateTables.h"

namespace codec {

/// A decoded symbol: its entry, and the bits it was taken from, which still hold its extra bits.
struct SymbolBits {
    std::uint32_t entry;
    std::uint64_t from;

    /// Base plus extra bits, for lengths and distances.
    std::uint32_t Value() const {
        const std::uint64_t all = from & ((std::uint64_t{1} << (entry & 0xFF)) - 1);
        return (entry >> 16) + static_cast<std::uint32_t>(all >> ((entry >> 8) & 0x1F));
    }
};

/// Takes one symbol and its extra bits, at most 31, from bits that hold as many.
inline SymbolBits TakeSymbol(InflateBits& bits, const std::uint32_t* table, unsigned rootBits) {
    std::uint32_t entry = table[bits.buffer & ((1u << rootBits) - 1)];
    if ((entry & kEntryLink) != 0) {
        bits.DropBits(entry & 0xFF);
        entry = table[(entry >> 16) + (bits.buffer & ((1u << ((entry >> 8) & 0x1F)) - 1))];
    }
    const SymbolBits symbol{entry, bits.buffer};
    bits.DropBits(entry & 0xFF);
    return symbol;
}

} // namespace codec
