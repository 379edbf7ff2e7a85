#include "archive/Cls_CRC32.h"

#include "Crc32Kernels.h"

#include <stdexcept>

namespace archive {

void Cls_CRC32::ResetCRC32() {
    register_ = 0xFFFFFFFFu;
}

void Cls_CRC32::CalcCRC32Byte(std::uint8_t byte) {
    register_ = Crc32Step(register_, byte);
}

std::uint32_t Cls_CRC32::CRC32() const {
    return ~register_;
}

void Cls_CRC32::SetCRC32(std::uint32_t value) {
    register_ = value;
}

std::uint32_t Cls_CRC32::GetcrcTable(int index) const {
    if (index < 0 || index > 255)
        throw std::out_of_range("CRC table index");
    return kCrc32Table[static_cast<std::size_t>(index)];
}

std::uint32_t Cls_CRC32::CalcCRC32File(std::span<const std::uint8_t> data) {
    static const Crc32Kernel& kernel = *Crc32Kernels().back();
    register_ = ~kernel.update(0xFFFFFFFFu, data.data(), data.size());
    return register_;
}

} // namespace archive
