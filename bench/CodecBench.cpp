#include "CodecBench.h"

#include <string_view>

/// Prints our decoders' speed beside their peers'. An argument names one group: inflate, deflate64, crc,
/// reduce or decrypt.
int main(int argc, char** argv) {
    const std::string_view only = argc > 1 ? argv[1] : "";
    const codec::ByteBuffer::ReuseScope reuse; // as extraction has it
    const auto wanted = [&](std::string_view group) { return only.empty() || only == group; };
    constexpr std::size_t kSampleSize = std::size_t{24} << 20;
    const std::vector<bench::Sample> samples = bench::MakeSamples(kSampleSize);
    if (wanted("inflate"))
        bench::InflateBench(samples);
    if (wanted("deflate64"))
        bench::Deflate64Bench(samples);
    if (wanted("crc"))
        bench::CrcBench();
    if (wanted("reduce"))
        bench::ReduceBench(samples);
    if (wanted("decrypt"))
        bench::DecryptBench();
}
