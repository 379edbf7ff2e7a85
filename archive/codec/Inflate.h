#pragma once

#include "archive/codec/ByteBuffer.h"

#include <cstdint>
#include <functional>
#include <span>

namespace codec {

/// Decodes a Deflate (RFC 1951) or Deflate64 stream held whole in memory.
///
/// `data` holds the compressed bytes and receives the decoded ones (none when nothing was decoded).
/// `lastIndex` is the recorded uncompressed size - 1; the output never grows past it, and memory follows what
/// the input can yield, not what the record claims. Stricter and wider than RFC 1951: incomplete and
/// over-subscribed codes are refused, distance codes 30 and 31 are decoded in both modes, length codes 286
/// and 287 copy nothing, matches reach back to the start of the output, bits missing at the end of the input
/// read as 0.
///
/// Answers 0 when done; -1 for an invalid block type, and for a stored block, literal or match that does not
/// fit or reaches before the start: what came before it is kept, of itself nothing is copied; -2 when a
/// stored block's length check failed (decoding goes on). A stored block whose length fields are the last
/// bytes of the input answers -1, too, though it is empty and nothing is lost. After a table error message
/// IDS_DAMAGED_DATA is shown, the status so far is returned and `data` still holds the compressed bytes.
///
/// A stream that runs off its input goes on with bits of 0 until it ends by itself, or is full: at the
/// recorded size, or at the most that so many input bytes can yield, but not below one megabyte.
std::int16_t Inflate(ByteBuffer& data, std::int32_t lastIndex, bool deflate64);

/// Takes decoded bytes, piece by piece, in order.
using PieceSink = std::function<void(std::span<const std::uint8_t>)>;

/// Decodes as Inflate does, for large entries: the decoded bytes are handed to `sink` in pieces of about a
/// megabyte instead of being kept. False after a table error: message IDS_DAMAGED_DATA was shown, and what
/// the sink got is not to be used.
bool InflateInPieces(std::span<const std::uint8_t> data, std::int32_t lastIndex, bool deflate64,
                     const PieceSink& sink);

} // namespace codec
