#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace support {

/// Writes a stream bit by bit, the lowest bit of each byte first, as Deflate (RFC 1951, section 3.1.1) and
/// the reducing methods have it.
class BitWriter {
  public:
    /// A number: its lowest bit first.
    BitWriter& Bits(std::uint32_t value, unsigned count) {
        for (unsigned i = 0; i < count; i++)
            Bit((value >> i) & 1);
        return *this;
    }

    /// A Huffman code: its highest bit first.
    BitWriter& Code(std::uint32_t code, unsigned length) {
        for (unsigned i = length; i-- > 0;)
            Bit((code >> i) & 1);
        return *this;
    }

    BitWriter& AlignToByte() {
        used_ = 0;
        return *this;
    }

    /// Whole bytes, after the bits so far have been filled up to one.
    BitWriter& Bytes(std::span<const std::uint8_t> bytes) {
        AlignToByte();
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
        return *this;
    }

    const std::vector<std::uint8_t>& Stream() const { return bytes_; }

  private:
    void Bit(std::uint32_t bit) {
        if (used_ == 0)
            bytes_.push_back(0);
        bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | bit << used_);
        used_ = (used_ + 1) % 8;
    }

    std::vector<std::uint8_t> bytes_;
    unsigned used_ = 0;
};

} // namespace support
