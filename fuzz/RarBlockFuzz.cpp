// Reads any bytes as one header of a RAR archive, with the checksum that it should have.

#include "FuzzSupport.h"
#include "archive/rar/RarBlock.h"
#include "base/Utf8.h"

#include <zlib.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace platform;
    if (size <= rar::kHeaderStart)
        return 0;
    const bool isNew = (data[0] & 1) != 0;
    std::vector<std::uint8_t> header(data + 1, data + size);
    const std::size_t sumSize = isNew ? 4 : 2;
    const auto sum = ::crc32_z(0, header.data() + sumSize, header.size() - sumSize);
    for (std::size_t i = 0; i < sumSize; ++i)
        header[i] = static_cast<std::uint8_t>(sum >> 8 * i);
    rar::Block block;
    if (isNew ? rar::ParseBlock5(header, block) : rar::ParseBlock4(header, block)) {
        fuzz::Check(base::IsUtf8(block.entry.name));
        fuzz::Check(block.entry.name.find('/') == std::string::npos);
        fuzz::Check(block.entry.name.find('\0') == std::string::npos);
    }
    return 0;
}
