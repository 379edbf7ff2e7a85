#pragma once

#include "archive/codec/CpuTarget.h"

#if PELLARION_X86_64

#include <cstddef>
#include <cstdint>

namespace codec {

/// CRC-32 by carry-less multiplication, four blocks of 16 bytes at a time. Needs PCLMULQDQ and SSE4.1.
std::uint32_t UpdateCrc32Clmul(std::uint32_t crc, const std::uint8_t* data, std::size_t size);

/// The same, four blocks of 64 bytes at a time. Needs VPCLMULQDQ and AVX-512 F, too.
std::uint32_t UpdateCrc32WideClmul(std::uint32_t crc, const std::uint8_t* data, std::size_t size);

} // namespace codec

#endif
