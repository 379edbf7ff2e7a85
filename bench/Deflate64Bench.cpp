#include "CodecBench.h"
#include "Compare.h"
#include "RunCommand.h"
#include "ZipEntry.h"
#include "archive/codec/Crc32.h"
#include "archive/codec/Inflate.h"

#include <algorithm>

namespace bench {

/// Against 7zz testing the same archive, all told. Our side reads the archive, decodes and takes the CRC,
/// too.
void Deflate64Bench(const std::vector<Sample>& samples) {
    for (const Sample& sample : samples) {
        const std::string what = "deflate64-" + sample.name;
        const std::string file = TemporaryFile(sample.name);
        const std::string zip = file + ".zip";
        WriteFile(file, sample.bytes);
        RunCommand({"7zz", "a", "-tzip", "-mm=Deflate64", zip, file, "-mmt=1"});
        const std::size_t size = sample.bytes.size();
        codec::ByteBuffer data;
        std::uint32_t crc = 0;
        Compare(what, size,
                {"ours",
                 [&] {
                     data = ReadFirstEntry(zip);
                     const int status = codec::Inflate(data, static_cast<std::int32_t>(size) - 1, true);
                     crc = codec::Cls_CRC32().CalcCRC32File(data.Span());
                     Require(status == 0, what);
                 }},
                {"7zz",
                 [&] {
                     RunCommand({"7zz", "t", zip, "-mmt=1"});
                 }},
                Clock::kProcessor);
        Require(data.Size() == size && std::equal(sample.bytes.begin(), sample.bytes.end(), data.Data()),
                what);
    }
}

} // namespace bench
