#include "archive/cabinet/CabinetFormat.h"

#include "base/LittleEndian.h"

namespace cabinet {
namespace {

/// Exclusive-or of all 32-bit words; up to three bytes at the end make a word of their own, the first of them
/// highest.
std::uint32_t Checksum(std::span<const std::uint8_t> data, std::uint32_t sum) {
    std::uint64_t wide = 0;
    std::size_t at = 0;
    for (; at + 8 <= data.size(); at += 8)
        wide ^= base::LoadLittle64(data.data() + at);
    sum ^= static_cast<std::uint32_t>(wide) ^ static_cast<std::uint32_t>(wide >> 32);
    if (data.size() - at >= 4) {
        sum ^= base::LoadLittle32(data.data() + at);
        at += 4;
    }
    std::uint32_t rest = 0;
    for (; at < data.size(); ++at)
        rest = rest << 8 | data[at];
    return sum ^ rest;
}

} // namespace

std::uint32_t BlockChecksum(std::span<const std::uint8_t> data, const std::uint8_t* sizes) {
    return Checksum({sizes, 4}, Checksum(data, 0));
}

} // namespace cabinet
