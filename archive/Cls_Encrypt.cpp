#include "archive/Cls_Encrypt.h"

#include "Crc32Kernels.h"
#include "platform/CodePage.h"

#include <string>

namespace archive {

// The key schedule is the one of the ZIP application note, section 6.1.5.

void Cls_Encrypt::UpdateKeys(std::uint8_t byte) {
    key0_ = Crc32Step(key0_, byte);
    key1_ = (key1_ + (key0_ & 0xFF)) * 134775813u + 1;
    key2_ = Crc32Step(key2_, static_cast<std::uint8_t>(key1_ >> 24));
}

std::uint8_t Cls_Encrypt::DecryptByte() const {
    const std::uint32_t t = (key2_ & 0xFFFF) | 2;
    return static_cast<std::uint8_t>((t * (t ^ 1)) >> 8);
}

void Cls_Encrypt::ZipPrepareKey(std::span<std::uint8_t> data, std::string_view password) {
    key0_ = 0x12345678u;
    key1_ = 0x23456789u;
    key2_ = 0x34567890u;
    const std::string bytes = platform::Utf8ToAnsi(password);
    for (const char byte : bytes)
        UpdateKeys(static_cast<std::uint8_t>(byte));
    ZipDecryptArray(data.first(12));
}

void Cls_Encrypt::ZipDecryptArray(std::span<std::uint8_t> data) {
    for (std::uint8_t& byte : data) {
        byte = static_cast<std::uint8_t>(byte ^ DecryptByte());
        UpdateKeys(byte);
    }
}

} // namespace archive
