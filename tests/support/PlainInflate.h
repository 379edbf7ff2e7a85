#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace support {

/// What a Deflate stream must become, told as plainly as possible: one bit at a time, one code length at a
/// time, no table wider than a list of codes. The control for streams on which other decoders differ by
/// design.
class PlainInflate {
  public:
    PlainInflate(std::span<const std::uint8_t> input, std::size_t limit, bool deflate64)
        : input_(input), limit_(limit), deflate64_(deflate64) {}

    int status = 0;
    bool badTable = false;
    std::vector<std::uint8_t> output;

    void Run() {
        bool final = false;
        while (!final && status != -1 && !badTable) {
            final = Bits(1) == 1;
            const unsigned type = Bits(2);
            if (type == 0)
                Stored();
            else if (type == 3)
                status = -1;
            else if (!(type == 1 ? FixedCodes() : DynamicCodes()))
                badTable = true;
            else
                while (status != -1 && Symbol()) {
                }
        }
    }

  private:
    struct Code {
        std::vector<std::uint8_t> lengths;
        std::array<unsigned, 16> count{};

        bool Set(std::vector<std::uint8_t> from) {
            lengths = std::move(from);
            count.fill(0);
            for (const std::uint8_t length : lengths)
                count[length]++;
            count[0] = 0;
            std::int64_t left = 1;
            for (std::size_t bits = 1; bits < 16; bits++) {
                left = left * 2 - count[bits];
                if (left < 0)
                    return false;
            }
            return left == 0;
        }
    };

    unsigned Bits(unsigned n) {
        unsigned value = 0;
        for (unsigned i = 0; i < n; i++, bit_++)
            if (bit_ / 8 < input_.size())
                value |= static_cast<unsigned>((input_[bit_ / 8] >> (bit_ % 8)) & 1) << i;
        return value;
    }

    /// Walks the canonical code: `first` is the first code of each length, `index` the symbols before it.
    unsigned Decode(const Code& code) {
        unsigned value = 0;
        unsigned first = 0;
        for (std::uint8_t length = 1; length < 16; length++) {
            value |= Bits(1);
            if (value - first < code.count[length]) {
                unsigned skip = value - first;
                for (unsigned symbol = 0;; symbol++)
                    if (code.lengths[symbol] == length && skip-- == 0)
                        return symbol;
            }
            first = (first + code.count[length]) << 1;
            value <<= 1;
        }
        badTable = true;
        return 256;
    }

    void Stored() {
        bit_ = (bit_ + 7) / 8 * 8;
        const std::size_t at = bit_ / 8;
        if (at + 4 > input_.size() - 1 || input_.empty()) {
            status = -1;
            return;
        }
        const unsigned length = Bits(16);
        if (Bits(16) != (~length & 0xFFFF))
            status = -2;
        if (at + 4 + length > input_.size() || output.size() + length > limit_) {
            status = -1;
            return;
        }
        for (unsigned i = 0; i < length; i++)
            output.push_back(static_cast<std::uint8_t>(Bits(8)));
    }

    bool FixedCodes() {
        std::vector<std::uint8_t> lengths;
        for (unsigned n = 0; n < 288; n++)
            lengths.push_back(n < 144 ? 8 : n < 256 ? 9 : n < 280 ? 7 : 8);
        return litLen_.Set(lengths) && distance_.Set(std::vector<std::uint8_t>(32, 5));
    }

    bool DynamicCodes() {
        static constexpr unsigned kOrder[] = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                              11, 4,  12, 3, 13, 2, 14, 1, 15};
        const unsigned litLenCount = Bits(5) + 257;
        const unsigned distanceCount = Bits(5) + 1;
        const unsigned codeLengthCount = Bits(4) + 4;
        std::vector<std::uint8_t> own(19);
        for (unsigned i = 0; i < codeLengthCount; i++)
            own[kOrder[i]] = static_cast<std::uint8_t>(Bits(3));
        Code code;
        if (!code.Set(own))
            return false;
        std::vector<std::uint8_t> lengths;
        while (lengths.size() < litLenCount + distanceCount) {
            const unsigned symbol = Decode(code);
            if (symbol == 16 && lengths.empty())
                return false;
            const unsigned repeat = symbol < 16    ? 1
                                    : symbol == 16 ? 3 + Bits(2)
                                    : symbol == 17 ? 3 + Bits(3)
                                                   : 11 + Bits(7);
            const auto value = static_cast<std::uint8_t>(symbol < 16    ? symbol
                                                         : symbol == 16 ? lengths.back()
                                                                        : 0);
            lengths.insert(lengths.end(), repeat, value);
        }
        if (lengths.size() > litLenCount + distanceCount)
            return false;
        return litLen_.Set({lengths.begin(), lengths.begin() + litLenCount}) &&
               distance_.Set({lengths.begin() + litLenCount, lengths.end()});
    }

    /// One symbol; false at the end of the block.
    bool Symbol() {
        const unsigned symbol = Decode(litLen_);
        if (symbol == 256)
            return false;
        if (symbol < 256) {
            if (output.size() == limit_)
                status = -1;
            else
                output.push_back(static_cast<std::uint8_t>(symbol));
            return true;
        }
        const std::size_t length = Length(symbol - 257);
        const unsigned code = Decode(distance_);
        const unsigned extra = code < 2 ? 0 : code / 2 - 1;
        const std::size_t distance = (code < 2 ? code : (2u + code % 2) << extra) + 1 + Bits(extra);
        const bool endless = length == 0 && bit_ >= input_.size() * 8;
        if (distance > output.size() || output.size() + length > limit_ || endless) {
            status = -1;
            return true;
        }
        for (std::size_t i = 0; i < length; i++)
            output.push_back(output[output.size() - distance]);
        return true;
    }

    std::size_t Length(unsigned k) {
        if (k < 8)
            return k + 3;
        if (k > 28)
            return 0;
        if (k == 28)
            return deflate64_ ? 3 + Bits(16) : 258;
        const unsigned extra = k / 4 - 1;
        return ((4u + k % 4) << extra) + 3 + Bits(extra);
    }

    std::span<const std::uint8_t> input_;
    std::size_t limit_;
    bool deflate64_;
    std::size_t bit_ = 0;
    Code litLen_;
    Code distance_;
};

} // namespace support
