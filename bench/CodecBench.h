#pragma once

#include "Samples.h"
#include "archive/codec/ByteBuffer.h"

#include <vector>

namespace bench {

codec::ByteBuffer BufferOf(const Bytes& bytes);

void InflateBench(const std::vector<Sample>& samples);
void Deflate64Bench(const std::vector<Sample>& samples);
void CrcBench();
void ReduceBench(const std::vector<Sample>& samples);
void DecryptBench();

} // namespace bench
