#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace codec {

/// CRC-32 of the ZIP format (reflected, polynomial 0xEDB88320, ISO 3309 / ITU-T V.42).
class Cls_CRC32 {
  public:
    void ResetCRC32();
    void CalcCRC32Byte(std::uint8_t byte);

    /// The same as CalcCRC32Byte for every byte of `data` in turn.
    void CalcCRC32Block(std::span<const std::uint8_t> data);

    /// The complement of the register, which stays as it is.
    std::uint32_t CRC32() const;

    /// Sets the register itself.
    void SetCRC32(std::uint32_t value);

    /// Entry of the CRC table; throws std::out_of_range for an index outside 0..255.
    std::uint32_t GetcrcTable(int index) const;

    /// CRC-32 of the whole array. The register holds the inverted result afterwards, so the same CRC cannot
    /// be continued.
    std::uint32_t CalcCRC32File(std::span<const std::uint8_t> data);

  private:
    std::uint32_t register_ = 0xFFFFFFFFu;
};

} // namespace codec
