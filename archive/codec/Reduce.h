#pragma once

#include "archive/codec/ByteBuffer.h"

#include <cstdint>

namespace codec {

/// Decodes the reducing methods 2 to 5 of the ZIP application note (factors 1 to 4).
///
/// `data` holds the stored bytes and receives exactly `lastIndex` + 1 decoded bytes (the recorded size), or
/// fewer when the input cannot yield that many. Missing input bits read as 0. A copy from before the start of
/// the output copies zero bytes. Always returns 0: a wrong result shows in the caller's CRC check.
std::int16_t Unreduce(ByteBuffer& data, int method, std::int32_t lastIndex);

} // namespace codec
