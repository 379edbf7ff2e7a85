#include "archive/codec/TraditionalDecryption.h"

#include "archive/codec/Crc32Kernels.h"
#include "platform/CodePage.h"

#include <string>

namespace codec {

namespace {

constexpr std::uint32_t kMultiplier = 134775813;

/// The lowest byte of each entry of the CRC table.
constexpr std::array<std::uint8_t, 256> MakeLowBytes() {
    std::array<std::uint8_t, 256> bytes{};
    for (std::size_t n = 0; n < bytes.size(); n++)
        bytes[n] = static_cast<std::uint8_t>(kCrc32Table[n]);
    return bytes;
}

/// The CRC table with bit 1 of each entry cleared. A number whose bit 1 is set keeps that bit when it is
/// XOR-ed with one of these entries.
constexpr std::array<std::uint32_t, 256> MakeWithoutBit1() {
    std::array<std::uint32_t, 256> entries{};
    for (std::size_t n = 0; n < entries.size(); n++)
        entries[n] = kCrc32Table[n] & ~2u;
    return entries;
}

constexpr std::array<std::uint8_t, 256> kCrc32LowBytes = MakeLowBytes();
constexpr std::array<std::uint32_t, 256> kCrc32WithoutBit1 = MakeWithoutBit1();

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
    // Each byte depends on the one before it through all three keys, so the time that this loop takes is the
    // length of that chain of operations. Everything that does not depend on the newest byte is therefore
    // computed beside the chain.
    //
    // The new key0 and the new key2 are a table entry XOR-ed with the old key shifted right by eight bits
    // (the "Rest" variables). The shifted part is known early; only the table entry has to be waited for.
    // key1 is multiplied and increased for the next step (key1Next) before the next byte is known.
    //
    // The key stream byte is bits 8 to 15 of t * other, where t is key2 with bit 1 set and other is t with
    // bit 0 inverted. Both are kept ready from step to step: kCrc32WithoutBit1 leaves bit 1 set when they are
    // brought up to date.
    std::uint32_t key0 = key0_;
    std::uint32_t key2 = key2_;
    std::uint32_t key1Next = key1_ * kMultiplier + 1;
    std::uint32_t key1 = key1_;
    std::uint32_t t = key2 | 2;
    std::uint32_t other = t ^ 1;
    for (std::uint8_t& byte : data) {
        const std::uint32_t mixed = (key0 ^ byte) << 8;
        const std::uint32_t key0Rest = key0 >> 8;
        const std::uint32_t key0RestLow = key0Rest & 0xFF;
        const std::uint32_t key2High = key2 << 24;
        const std::uint32_t key2Rest = key2 >> 8;
        const std::uint32_t tRest = key2Rest | 2;
        const std::uint32_t otherRest = tRest ^ 1;

        // Only bits 8 to 15 of the product are used, so the upper half of t does not matter.
        const std::uint32_t stream = t * other;
        const std::uint32_t index = ((stream ^ mixed) >> 8) & 0xFF;
        key1 = key1Next + (kCrc32LowBytes[index] ^ key0RestLow) * kMultiplier;
        const std::uint32_t index2 = (key1 ^ key2High) >> 24;
        t = kCrc32WithoutBit1[index2] ^ tRest;
        other = kCrc32WithoutBit1[index2] ^ otherRest;

        byte = static_cast<std::uint8_t>(byte ^ (stream >> 8));
        key0 = kCrc32Table[index] ^ key0Rest;
        key1Next = key1 * kMultiplier + 1;
        key2 = kCrc32Table[index2] ^ key2Rest;
    }
    key0_ = key0;
    key1_ = key1;
    key2_ = key2;
}

} // namespace codec
