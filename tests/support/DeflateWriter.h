#pragma once

#include "support/BitWriter.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace support {

/// Canonical codes for given code lengths (RFC 1951, section 3.2.2). The lengths may be nonsense: that is for
/// the decoder to find.
class CanonicalCode {
  public:
    explicit CanonicalCode(std::vector<std::uint8_t> lengths)
        : lengths_(std::move(lengths)), codes_(lengths_.size()) {
        std::array<std::uint32_t, 17> next{};
        std::array<std::uint32_t, 17> count{};
        for (const std::uint8_t length : lengths_)
            count[length]++;
        count[0] = 0;
        for (std::size_t bits = 1; bits < next.size(); bits++)
            next[bits] = (next[bits - 1] + count[bits - 1]) << 1;
        for (std::size_t symbol = 0; symbol < lengths_.size(); symbol++)
            codes_[symbol] = next[lengths_[symbol]]++;
    }

    void Write(BitWriter& out, std::size_t symbol) const { out.Code(codes_.at(symbol), lengths_.at(symbol)); }

    const std::vector<std::uint8_t>& Lengths() const { return lengths_; }

  private:
    std::vector<std::uint8_t> lengths_;
    std::vector<std::uint32_t> codes_;
};

/// Code lengths: `count` symbols of which only the named ones have a code.
inline std::vector<std::uint8_t> Lengths(std::size_t count,
                                         std::initializer_list<std::pair<std::size_t, std::uint8_t>> used) {
    std::vector<std::uint8_t> lengths(count);
    for (const auto& [symbol, length] : used)
        lengths[symbol] = length;
    return lengths;
}

/// Writes Deflate blocks of any content, symbol by symbol.
class DeflateWriter {
  public:
    enum Type : std::uint8_t { kStored = 0, kFixed = 1, kDynamic = 2, kInvalid = 3 };

    DeflateWriter& Header(bool final, Type type) {
        out_.Bits(final, 1).Bits(type, 2);
        return *this;
    }

    DeflateWriter& Stored(bool final, std::span<const std::uint8_t> bytes) {
        const auto length = static_cast<std::uint32_t>(bytes.size());
        return StoredWith(final, length, ~length & 0xFFFF, bytes);
    }

    DeflateWriter& StoredWith(bool final, std::uint32_t length, std::uint32_t complement,
                              std::span<const std::uint8_t> bytes) {
        Header(final, kStored);
        out_.AlignToByte().Bits(length, 16).Bits(complement, 16).Bytes(bytes);
        return *this;
    }

    DeflateWriter& Fixed(bool final) {
        std::vector<std::uint8_t> lengths(288, 8);
        std::fill(lengths.begin() + 144, lengths.begin() + 256, std::uint8_t{9});
        std::fill(lengths.begin() + 256, lengths.begin() + 280, std::uint8_t{7});
        litLen_ = CanonicalCode(std::move(lengths));
        distance_ = CanonicalCode(std::vector<std::uint8_t>(32, 5));
        return Header(final, kFixed);
    }

    /// A dynamic block whose code-length code gives each of the lengths 0 to 15 four bits, so that no repeats
    /// are needed.
    DeflateWriter& Dynamic(bool final, const std::vector<std::uint8_t>& litLen,
                           const std::vector<std::uint8_t>& distance) {
        // Order of the code-length codes: 16, 17, 18 have none; the sixteen lengths four bits each.
        const CanonicalCode plain(std::vector<std::uint8_t>(16, 4));
        Header(final, kDynamic).Counts(litLen.size(), distance.size(), 19);
        for (int i = 0; i < 19; i++)
            out_.Bits(i < 3 ? 0 : 4, 3);
        for (const std::uint8_t length : litLen)
            plain.Write(out_, length);
        for (const std::uint8_t length : distance)
            plain.Write(out_, length);
        litLen_ = CanonicalCode(litLen);
        distance_ = CanonicalCode(distance);
        return *this;
    }

    /// The three counts that a dynamic block starts with.
    DeflateWriter& Counts(std::size_t litLen, std::size_t distance, std::size_t codeLengths) {
        out_.Bits(static_cast<std::uint32_t>(litLen - 257), 5);
        out_.Bits(static_cast<std::uint32_t>(distance - 1), 5);
        out_.Bits(static_cast<std::uint32_t>(codeLengths - 4), 4);
        return *this;
    }

    DeflateWriter& LitLen(std::size_t symbol, std::uint32_t extra = 0, unsigned extraBits = 0) {
        litLen_.Write(out_, symbol);
        out_.Bits(extra, extraBits);
        return *this;
    }

    DeflateWriter& Distance(std::size_t symbol, std::uint32_t extra = 0, unsigned extraBits = 0) {
        distance_.Write(out_, symbol);
        out_.Bits(extra, extraBits);
        return *this;
    }

    DeflateWriter& Literals(std::span<const std::uint8_t> bytes) {
        for (const std::uint8_t byte : bytes)
            LitLen(byte);
        return *this;
    }

    DeflateWriter& EndOfBlock() { return LitLen(256); }

    BitWriter& Bits() { return out_; }

    const std::vector<std::uint8_t>& Stream() const { return out_.Stream(); }

  private:
    BitWriter out_;
    CanonicalCode litLen_{{}};
    CanonicalCode distance_{{}};
};

} // namespace support
