#include "archive/Cls_Encrypt.h"
#include "support/RandomBytes.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <string_view>
#include <vector>
#include <zlib.h>

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Encrypts as the ZIP application note says (section 6.1), with zlib's CRC table in place of the program's.
class PlainEncryption {
  public:
    explicit PlainEncryption(std::string_view password) {
        for (const char byte : password)
            Update(static_cast<std::uint8_t>(byte));
    }

    Bytes Encrypt(Bytes bytes) {
        for (std::uint8_t& byte : bytes) {
            const std::uint32_t t = (keys_[2] | 2) & 0xFFFF;
            const std::uint8_t plain = byte;
            byte = static_cast<std::uint8_t>(plain ^ ((t * (t ^ 1)) >> 8));
            Update(plain);
        }
        return bytes;
    }

  private:
    static std::uint32_t Step(std::uint32_t crc, std::uint32_t byte) {
        return static_cast<std::uint32_t>(get_crc_table()[(crc ^ byte) & 0xFF]) ^ (crc >> 8);
    }

    void Update(std::uint8_t byte) {
        keys_[0] = Step(keys_[0], byte);
        keys_[1] = (keys_[1] + (keys_[0] & 0xFF)) * 0x08088405u + 1;
        keys_[2] = Step(keys_[2], keys_[1] >> 24);
    }

    std::array<std::uint32_t, 3> keys_ = {0x12345678, 0x23456789, 0x34567890};
};

} // namespace

TEST(Encrypt, HeaderAndDataComeBack) {
    support::Random random(12);
    archive::Cls_Encrypt encrypt; // one object for every entry, as the reader uses it
    for (const std::string_view password :
         {"", "a", "correct horse", "\x7F~ 0123456789012345678901234567890123456789"})
        for (const std::size_t size : {0u, 1u, 2u, 3u, 31u, 5000u}) {
            const Bytes header = support::RandomContent(random, support::Content::kNoise, 12);
            const Bytes plain = support::RandomContent(random, support::Content::kText, size);
            PlainEncryption encryption(password);
            Bytes storedHeader = encryption.Encrypt(header);
            Bytes stored = encryption.Encrypt(plain);
            Bytes rest = stored;
            storedHeader.insert(storedHeader.end(), stored.begin(), stored.end());
            encrypt.ZipPrepareKey(storedHeader, password);
            EXPECT_TRUE(std::equal(header.begin(), header.end(), storedHeader.begin()));
            EXPECT_TRUE(
                std::equal(stored.begin(), stored.end(), storedHeader.begin() + 12)); // left for later
            // In two pieces: the keys go on where they were.
            const std::span<std::uint8_t> data(rest);
            encrypt.ZipDecryptArray(data.first(size / 3));
            encrypt.ZipDecryptArray(data.subspan(size / 3));
            EXPECT_TRUE(rest == plain);
        }
}
