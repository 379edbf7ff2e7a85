#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace base {

/// Reads little-endian numbers from a byte string. A number that lies outside reads as 0; where 0 could be
/// taken for a real value, the caller checks the bounds with Has() first.
class Bytes {
  public:
    explicit Bytes(std::string_view data) : data_(data) {}

    bool Has(std::size_t offset, std::size_t size) const {
        return offset <= data_.size() && size <= data_.size() - offset;
    }

    std::uint16_t Word(std::size_t offset) const;
    std::uint32_t DoubleWord(std::size_t offset) const;

    std::size_t Size() const { return data_.size(); }

    std::string_view Part(std::size_t offset, std::size_t size) const;

  private:
    const std::uint8_t* At(std::size_t offset) const {
        return reinterpret_cast<const std::uint8_t*>(data_.data()) + offset;
    }

    std::string_view data_;
};

/// A section of a PE image (PE format, section table).
struct PeSection {
    std::uint32_t address;
    std::uint32_t offset;
    std::uint32_t size; ///< bytes that the file holds of it
};

/// The parts of a PE image that a reader of its resources needs.
struct PeImage {
    std::vector<PeSection> sections;
    std::uint32_t resourceAddress = 0; ///< relative to the image base
    std::uint32_t resourceSize = 0;

    /// File offset of the `size` bytes at a relative address; nothing when no section holds them all.
    std::optional<std::size_t> OffsetOf(std::uint32_t address, std::uint32_t size) const;
};

/// Reads the headers. Returns nothing when they are not those of a PE32 or PE32+ image with a resource
/// directory.
std::optional<PeImage> ReadPeImage(const Bytes& bytes);

} // namespace base
