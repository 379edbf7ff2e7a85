#include "archive/codec/Crc32Kernels.h"

#include "archive/codec/CpuTarget.h"
#include "archive/codec/Crc32Clmul.h"
#include "base/LittleEndian.h"

namespace codec {

namespace {

constexpr std::size_t kSlices = 8;
using SliceTables = std::array<std::array<std::uint32_t, 256>, kSlices>;

/// Table k gives the effect of a byte that k further zero bytes follow, so that eight bytes take eight
/// independent look-ups.
constexpr SliceTables MakeSliceTables() {
    SliceTables tables{};
    tables[0] = kCrc32Table;
    for (std::size_t k = 1; k < kSlices; k++)
        for (std::size_t n = 0; n < 256; n++)
            tables[k][n] = Crc32Step(tables[k - 1][n], 0);
    return tables;
}

constexpr SliceTables kSliceTables = MakeSliceTables();

constexpr Crc32Kernel kPortable{"portable", UpdateCrc32Portable};

std::vector<const Crc32Kernel*> FindKernels() {
    std::vector<const Crc32Kernel*> kernels{&kPortable};
#if PELLARION_X86_64
    static constexpr Crc32Kernel kClmul{"pclmul", UpdateCrc32Clmul};
    [[maybe_unused]] static constexpr Crc32Kernel kWideClmul{"vpclmul", UpdateCrc32WideClmul};
    if (FastCodeAllowed() && __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1")) {
        kernels.push_back(&kClmul);
#ifndef _WIN32 // where GCC does not align the stack for such wide registers
        if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("vpclmulqdq"))
            kernels.push_back(&kWideClmul);
#endif
    }
#endif
    return kernels;
}

} // namespace

std::uint32_t UpdateCrc32Portable(std::uint32_t crc, const std::uint8_t* data, std::size_t size) {
    for (; size >= kSlices; data += kSlices, size -= kSlices) {
        const std::uint32_t low = base::LoadLittle32(data) ^ crc;
        const std::uint32_t high = base::LoadLittle32(data + 4);
        crc = kSliceTables[7][low & 0xFF] ^ kSliceTables[6][(low >> 8) & 0xFF] ^
              kSliceTables[5][(low >> 16) & 0xFF] ^ kSliceTables[4][low >> 24] ^
              kSliceTables[3][high & 0xFF] ^ kSliceTables[2][(high >> 8) & 0xFF] ^
              kSliceTables[1][(high >> 16) & 0xFF] ^ kSliceTables[0][high >> 24];
    }
    for (; size != 0; data++, size--)
        crc = Crc32Step(crc, *data);
    return crc;
}

const std::vector<const Crc32Kernel*>& Crc32Kernels() {
    static const std::vector<const Crc32Kernel*> kernels = FindKernels();
    return kernels;
}

} // namespace codec
