#include "archive/Cls_Encrypt.h"

#include "Crc32Kernels.h"
#include "platform/CodePage.h"

#include <string>

namespace archive {

namespace {

constexpr std::uint32_t kMultiplier = 134775813;

} // namespace

// The key schedule is the one of the ZIP application note, section 6.1.5.

void Cls_Encrypt::UpdateKeys(std::uint8_t byte) {
    key0_ = Crc32Step(key0_, byte);
    key1_ = (key1_ + (key0_ & 0xFF)) * kMultiplier + 1;
    key2_ = Crc32Step(key2_, static_cast<std::uint8_t>(key1_ >> 24));
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
    // Each byte waits for the one before it through all three keys, so the time is the length of that chain:
    // what does not depend on the plain byte is done beside it. key1's step is spread over the sum.
    std::uint32_t key0 = key0_;
    std::uint32_t key1 = key1_;
    std::uint32_t key2 = key2_;
    for (std::uint8_t& byte : data) {
        const std::uint32_t t = (key2 & 0xFFFF) | 2;
        const std::uint32_t other = ((key2 & 0xFFFF) ^ 1) | 2;
        const std::uint32_t mixed = key0 ^ byte;
        const std::uint32_t key0Shifted = key0 >> 8;
        const std::uint32_t key1Scaled = key1 * kMultiplier + 1;
        const std::uint32_t key2Low = key2 & 0xFF;
        const std::uint32_t key2Shifted = key2 >> 8;

        const std::uint32_t stream = (t * other >> 8) & 0xFF;
        byte = static_cast<std::uint8_t>(byte ^ stream);
        key0 = kCrc32Table[(mixed ^ stream) & 0xFF] ^ key0Shifted;
        key1 = key1Scaled + (key0 & 0xFF) * kMultiplier;
        key2 = kCrc32Table[key2Low ^ (key1 >> 24)] ^ key2Shifted;
    }
    key0_ = key0;
    key1_ = key1;
    key2_ = key2;
}

} // namespace archive
