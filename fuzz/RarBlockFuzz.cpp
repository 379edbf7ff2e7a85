// Reads any bytes as one header of a RAR archive, with the checksum that it should have.

#include "FuzzSupport.h"
#include "archive/codec/Crc32.h"
#include "archive/rar/RarBlock.h"
#include "base/LittleEndian.h"
#include "base/Utf8.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace platform;
    if (size <= rar::kHeaderStart)
        return 0;
    const bool isNew = (data[0] & 1) != 0;
    std::vector<std::uint8_t> header(data + 1, data + size);
    const std::size_t sumSize = isNew ? 4 : 2;
    const std::uint32_t sum =
        codec::Cls_CRC32().CalcCRC32File(std::span(header).subspan(sumSize, header.size() - sumSize));
    base::StoreLittle(header.data(), sum, sumSize);
    rar::Block block;
    if (isNew ? rar::ParseBlock5(header, block) : rar::ParseBlock4(header, block)) {
        fuzz::Check(base::IsUtf8(block.entry.name));
        fuzz::Check(block.entry.name.find('/') == std::string::npos);
        fuzz::Check(block.entry.name.find('\0') == std::string::npos);
    }
    return 0;
}
