#include "CodecBench.h"
#include "Compare.h"
#include "archive/codec/Crc32.h"

#include <cstdint>
#include <libdeflate.h>
#include <random>

namespace bench {

void CrcBench() {
    Bytes bytes(std::size_t{64} << 20);
    std::mt19937 random(32);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    std::uint32_t ours = 0;
    std::uint32_t theirs = 0;
    codec::Cls_CRC32 crc;
    Compare("crc32", bytes.size(), {"ours", [&] { ours = crc.CalcCRC32File(bytes); }},
            {"libdeflate", [&] { theirs = libdeflate_crc32(0, bytes.data(), bytes.size()); }},
            Clock::kProcessor);
    Require(ours == theirs, "crc32");
}

} // namespace bench
