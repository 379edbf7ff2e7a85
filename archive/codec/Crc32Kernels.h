#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace codec {

/// Entry n: n shifted right eight times, each time XOR-ed with 0xEDB88320 when the bit shifted out was 1.
constexpr std::array<std::uint32_t, 256> MakeCrc32Table() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t n = 0; n < 256; n++) {
        std::uint32_t value = n;
        for (int bit = 0; bit < 8; bit++)
            value = (value >> 1) ^ ((value & 1) != 0 ? 0xEDB88320u : 0u);
        table[n] = value;
    }
    return table;
}

inline constexpr std::array<std::uint32_t, 256> kCrc32Table = MakeCrc32Table();
static_assert(kCrc32Table[1] == 0x77073096u && kCrc32Table[255] == 0x2D02EF8Du);

/// One byte through the register.
constexpr std::uint32_t Crc32Step(std::uint32_t crc, std::uint8_t byte) {
    return kCrc32Table[(crc ^ byte) & 0xFF] ^ (crc >> 8);
}

/// Many bytes through the register, eight at a time by tables.
std::uint32_t UpdateCrc32Portable(std::uint32_t crc, const std::uint8_t* data, std::size_t size);

/// One way to run many bytes through the register.
struct Crc32Kernel {
    const char* name;
    std::uint32_t (*update)(std::uint32_t crc, const std::uint8_t* data, std::size_t size);
};

/// The ways that this processor can run, the portable one first, the fastest last.
const std::vector<const Crc32Kernel*>& Crc32Kernels();

} // namespace codec
