#include "archive/codec/Crc32.h"

#include "archive/codec/Crc32Kernels.h"
#include "support/GuardedMemory.h"
#include "support/RandomBytes.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>
#include <zlib.h>

using codec::Cls_CRC32;

TEST(Crc32, RegisterAndResult) {
    Cls_CRC32 crc;
    crc.ResetCRC32();
    EXPECT_EQ(crc.CRC32(), 0u);
    for (const char byte : {'a', 'b', 'c'})
        crc.CalcCRC32Byte(static_cast<std::uint8_t>(byte));
    EXPECT_EQ(crc.CRC32(), 0x352441C2u);
    EXPECT_EQ(crc.CRC32(), 0x352441C2u); // reading changes nothing

    crc.SetCRC32(~0x352441C2u);
    EXPECT_EQ(crc.CRC32(), 0x352441C2u);

    const std::vector<std::uint8_t> abc = {'a', 'b', 'c'};
    const std::vector<std::uint8_t> zero = {0};
    EXPECT_EQ(crc.CalcCRC32File(abc), 0x352441C2u);
    EXPECT_EQ(crc.CRC32(), ~0x352441C2u); // the register holds the inverted result
    EXPECT_EQ(crc.CalcCRC32File(zero), 0xD202EF8Du);
    EXPECT_EQ(crc.CalcCRC32File({}), 0u);
}

TEST(Crc32, TableEntriesAndTheirBounds) {
    const Cls_CRC32 crc;
    EXPECT_EQ(crc.GetcrcTable(0), 0u);
    EXPECT_EQ(crc.GetcrcTable(128), 0xEDB88320u);
    EXPECT_EQ(crc.GetcrcTable(255), 0x2D02EF8Du);
    EXPECT_THROW(crc.GetcrcTable(-1), std::out_of_range);
    EXPECT_THROW(crc.GetcrcTable(256), std::out_of_range);
}

TEST(Crc32, EveryKernelOnEverySizeAndAlignment) {
    support::Random random(32);
    std::vector<std::size_t> sizes;
    for (std::size_t size = 0; size < 1200; size++)
        sizes.push_back(size);
    sizes.insert(sizes.end(), {4095, 4096, 4097, 65535, 65536, 100001});
    for (const codec::Crc32Kernel* kernel : codec::Crc32Kernels())
        for (const std::size_t size : sizes) {
            const support::GuardedMemory memory(
                support::RandomContent(random, support::Content::kNoise, size + support::Below(random, 16)));
            const auto bytes = memory.Bytes().last(size); // ends at the guard page, starts anywhere
            const auto before = static_cast<std::uint32_t>(random());
            ASSERT_EQ(
                ~kernel->update(~before, bytes.data(), size),
                ::crc32(before, bytes.data() == nullptr ? Z_NULL : bytes.data(), static_cast<uInt>(size)))
                << kernel->name << ", " << size << " bytes";
        }
}
