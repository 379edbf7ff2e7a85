#include "archive/codec/TraditionalDecryption.h"

#include "support/PlainEncryption.h"
#include "support/RandomBytes.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string_view>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

} // namespace

TEST(Encrypt, HeaderAndDataComeBack) {
    support::Random random(12);
    codec::Cls_Encrypt encrypt; // one object for every entry, as the reader uses it
    for (const std::string_view password :
         {"", "a", "correct horse", "\x7F~ 0123456789012345678901234567890123456789"})
        for (const std::size_t size : {0u, 1u, 2u, 3u, 31u, 5000u}) {
            const Bytes header = support::RandomContent(random, support::Content::kNoise, 12);
            const Bytes plain = support::RandomContent(random, support::Content::kText, size);
            support::PlainEncryption encryption(password);
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
