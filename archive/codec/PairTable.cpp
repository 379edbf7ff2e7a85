#include "archive/codec/PairTable.h"

#include "archive/codec/CodeMeanings.h"

#include <algorithm>

namespace codec {

namespace {

/// A run of stream bits and what it adds to an entry.
struct Part {
    std::uint64_t entry = 0;
    std::uint32_t bits = 0;
};

/// The parts of one kind, grouped by their number of bits. `start[n]` is the first of n bits.
template <std::size_t kMost>
struct PartList {
    std::array<Part, kMost> parts;
    std::array<std::uint16_t, kPairBits + 2> start{};

    std::span<const Part> OfLength(unsigned bits) const {
        return std::span(parts).subspan(start[bits], static_cast<std::size_t>(start[bits + 1] - start[bits]));
    }
};

constexpr std::uint64_t Dropping(std::uint64_t bits) {
    return bits | bits << 16;
}

/// A code of at most kPairBits bits, and its symbol.
struct ShortCode {
    std::uint32_t bits;
    std::uint16_t symbol;
};

/// The codes of at most kPairBits bits, those of `length` bits from `start[length]` on.
struct ShortCodes {
    std::array<ShortCode, kMostSymbols> codes;
    std::array<std::uint16_t, kPairBits + 2> start{};

    explicit ShortCodes(const HuffmanCode& code) {
        ReversedCode reversed;
        std::uint16_t next = 0;
        for (unsigned length = 1; length <= kPairBits; length++) {
            start[length] = next;
            for (unsigned n = code.count[length]; n != 0; n--) {
                codes[next] = {reversed.Value(), code.symbols[next]};
                next++;
                reversed.Next(length);
            }
        }
        start[kPairBits + 1] = next;
    }
};

/// Each length has one code, but 0 has two.
constexpr std::size_t kMostLengths = kPairMostLength + 2;

void ListLiterals(PartList<256>& literals, const ShortCodes& codes) {
    std::uint16_t next = 0;
    for (unsigned length = 1; length <= kPairBits; length++) {
        literals.start[length] = next;
        for (std::size_t i = codes.start[length]; i < codes.start[length + 1]; i++)
            if (const std::uint64_t symbol = codes.codes[i].symbol; symbol < kEndOfBlockSymbol)
                literals.parts[next++] = {Dropping(length) | 1 << 8 | symbol << 24 | kPairLiteral |
                                              (kPairLiteralDistance - kPairLeastDistance)
                                                  << kPairDistanceShift,
                                          codes.codes[i].bits};
    }
    literals.start[kPairBits + 1] = next;
}

/// Each length code with each value of its extra bits, where both together leave room for a distance code.
void ListLengths(PartList<kMostLengths>& lengths, const ShortCodes& codes, bool deflate64) {
    const auto& meanings = deflate64 ? kDeflate64Lengths : kDeflateLengths;
    const auto forEach = [&](const auto& visit) {
        for (unsigned length = 1; length < kPairBits; length++)
            for (std::size_t i = codes.start[length]; i < codes.start[length + 1]; i++)
                if (const std::size_t symbol = codes.codes[i].symbol; symbol >= kFirstLengthSymbol) {
                    const CodeMeaning& meaning = meanings[symbol - kFirstLengthSymbol];
                    const unsigned longest = meaning.base + (1u << meaning.extraBits) - 1;
                    if (length + meaning.extraBits < kPairBits && longest <= kPairMostLength)
                        visit(codes.codes[i].bits, length, meaning);
                }
    };
    forEach([&](std::uint32_t, unsigned length, const CodeMeaning& meaning) {
        const unsigned all = length + meaning.extraBits;
        lengths.start[all + 1] =
            static_cast<std::uint16_t>(lengths.start[all + 1] + (1u << meaning.extraBits));
    });
    for (std::size_t bits = 1; bits < lengths.start.size(); bits++)
        lengths.start[bits] = static_cast<std::uint16_t>(lengths.start[bits] + lengths.start[bits - 1]);
    std::array<std::uint16_t, kPairBits + 2> fill = lengths.start;
    forEach([&](std::uint32_t code, unsigned length, const CodeMeaning& meaning) {
        const unsigned all = length + meaning.extraBits;
        for (std::uint32_t extra = 0; extra < (1u << meaning.extraBits); extra++)
            lengths.parts[fill[all]++] = {Dropping(all) | std::uint64_t{meaning.base + extra} << 8,
                                          code | extra << length};
    });
}

void ListDistances(PartList<kDistanceCodes>& distances, const ShortCodes& codes) {
    distances.start = codes.start;
    for (unsigned length = 1; length < kPairBits; length++)
        for (std::size_t i = codes.start[length]; i < codes.start[length + 1]; i++) {
            const CodeMeaning& meaning = kDistances[codes.codes[i].symbol];
            const std::uint64_t base = std::uint64_t{meaning.base} - kPairLeastDistance;
            distances.parts[i] = {Dropping(length) + meaning.extraBits + (base << kPairDistanceShift),
                                  codes.codes[i].bits};
        }
}

} // namespace

void BuildPairTable(PairTable& table, const HuffmanCode& litLen, const HuffmanCode& distance,
                    bool deflate64) {
    const ShortCodes litLenCodes(litLen);
    PartList<256> literals;
    ListLiterals(literals, litLenCodes);
    PartList<kMostLengths> lengths;
    ListLengths(lengths, litLenCodes, deflate64);
    PartList<kDistanceCodes> distances;
    ListDistances(distances, ShortCodes(distance));

    // The table doubles with each bit, and with it all that shorter runs of bits have put there. What no run
    // has claimed stays "none of these".
    table[0] = kPairOther;
    for (unsigned bits = 1; bits <= kPairBits; bits++) {
        const std::size_t half = std::size_t{1} << (bits - 1);
        std::copy_n(table.begin(), half, table.begin() + half);
        for (const Part& literal : literals.OfLength(bits))
            table[literal.bits] = literal.entry;
        for (unsigned distanceBits = 1; distanceBits < bits; distanceBits++) {
            const unsigned lengthBits = bits - distanceBits;
            for (const Part& d : distances.OfLength(distanceBits))
                for (const Part& l : lengths.OfLength(lengthBits))
                    table[l.bits | d.bits << lengthBits] = l.entry + d.entry;
        }
    }
}

} // namespace codec
