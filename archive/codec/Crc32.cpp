#include "archive/codec/Crc32.h"

#include "archive/codec/Crc32Kernels.h"

#include <stdexcept>

namespace codec {

namespace {

const Crc32Kernel& Kernel() {
    static const Crc32Kernel& kernel = *Crc32Kernels().back();
    return kernel;
}

} // namespace

void Cls_CRC32::ResetCRC32() {
    register_ = 0xFFFFFFFFu;
}

void Cls_CRC32::CalcCRC32Byte(std::uint8_t byte) {
    register_ = Crc32Step(register_, byte);
}

void Cls_CRC32::CalcCRC32Block(std::span<const std::uint8_t> data) {
    register_ = Kernel().update(register_, data.data(), data.size());
}

std::uint32_t Cls_CRC32::CRC32() const {
    return ~register_;
}

void Cls_CRC32::SetCRC32(std::uint32_t value) {
    register_ = value;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): an object's member like the others
std::uint32_t Cls_CRC32::GetcrcTable(int index) const {
    if (index < 0 || index > 255)
        throw std::out_of_range("CRC table index");
    return kCrc32Table[static_cast<std::size_t>(index)];
}

std::uint32_t Cls_CRC32::CalcCRC32File(std::span<const std::uint8_t> data) {
    ResetCRC32();
    CalcCRC32Block(data);
    register_ = ~register_;
    return register_;
}

} // namespace codec
