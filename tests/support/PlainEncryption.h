#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <zlib.h>

namespace support {

/// Encrypts as the ZIP application note says (section 6.1), with zlib's CRC table in place of the program's.
class PlainEncryption {
  public:
    explicit PlainEncryption(std::string_view password) {
        for (const char byte : password)
            Update(static_cast<std::uint8_t>(byte));
    }

    /// The bytes (of a string or a vector), encrypted; the keys go on from call to call.
    template <typename Bytes>
    Bytes Encrypt(Bytes bytes) {
        for (auto& byte : bytes) {
            const std::uint32_t t = (keys_[2] | 2) & 0xFFFF;
            const auto plain = static_cast<std::uint8_t>(byte);
            byte = static_cast<typename Bytes::value_type>(plain ^ ((t * (t ^ 1)) >> 8 & 0xFF));
            Update(plain);
        }
        return bytes;
    }

  private:
    static std::uint32_t Step(std::uint32_t crc, std::uint32_t byte) {
        return static_cast<std::uint32_t>(get_crc_table()[(crc ^ byte) & 0xFF]) ^ (crc >> 8);
    }

    void Update(std::uint8_t byte) {
        keys_[0] = Step(keys_[0], byte);
        keys_[1] = (keys_[1] + (keys_[0] & 0xFF)) * 0x08088405u + 1;
        keys_[2] = Step(keys_[2], keys_[1] >> 24);
    }

    std::array<std::uint32_t, 3> keys_ = {0x12345678, 0x23456789, 0x34567890};
};

} // namespace support
