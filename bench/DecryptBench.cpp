#include "CodecBench.h"
#include "Compare.h"
#include "RunCommand.h"
#include "ZipEntry.h"
#include "archive/codec/Crc32.h"
#include "archive/codec/TraditionalDecryption.h"

#include <algorithm>
#include <random>

namespace bench {

/// Against 7zz testing a stored, encrypted archive, all told. Our side reads, decrypts and takes the CRC,
/// too.
void DecryptBench() {
    Bytes bytes(std::size_t{64} << 20);
    std::mt19937 random(12);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    const std::string file = TemporaryFile("secret");
    const std::string zip = file + ".zip";
    WriteFile(file, bytes);
    RunCommand({"7zz", "a", "-tzip", "-mm=Copy", "-mem=ZipCrypto", "-ppassword", zip, file, "-mmt=1"});
    codec::ByteBuffer data;
    codec::Cls_Encrypt encrypt;
    std::uint32_t crc = 0;
    Compare("decrypt", bytes.size(),
            {"ours",
             [&] {
                 data = ReadFirstEntry(zip);
                 encrypt.ZipPrepareKey(data.Span(), "password");
                 data.DropFront(12);
                 encrypt.ZipDecryptArray(data.Span());
                 crc = codec::Cls_CRC32().CalcCRC32File(data.Span());
             }},
            {"7zz",
             [&] {
                 RunCommand({"7zz", "t", "-ppassword", zip, "-mmt=1"});
             }},
            Clock::kProcessor);
    Require(crc == codec::Cls_CRC32().CalcCRC32File(bytes), "decrypt");
    Require(data.Size() == bytes.size() && std::equal(bytes.begin(), bytes.end(), data.Data()), "decrypt");
}

} // namespace bench
