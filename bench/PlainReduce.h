#pragma once

#include "Samples.h"

namespace bench {

/// The reducing methods, decoded byte by byte as their description reads: the measure for the real decoder.
Bytes PlainUnreduce(const Bytes& input, unsigned factor, std::size_t size);

} // namespace bench
