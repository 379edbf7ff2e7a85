#pragma once

#include "archive/codec/ByteBuffer.h"

#include <cstdint>
#include <functional>
#include <span>

namespace codec {

/// Decodes a Deflate (RFC 1951) or Deflate64 stream that is held whole in memory.
///
/// `data` holds the compressed bytes and receives the decoded ones, or none when nothing was decoded.
/// `lastIndex` is the recorded uncompressed size less 1. The output never grows beyond that size, and the
/// memory used depends on what the input can yield, not on what the record claims.
///
/// It is in part stricter and in part more permissive than RFC 1951. Incomplete and over-subscribed codes are
/// refused. Distance codes 30 and 31 are decoded in both modes. Length codes 286 and 287 copy nothing.
/// Matches reach back to the start of the output. Bits that are missing at the end of the input read as 0.
///
/// Returns 0 when done. Returns -1 for an invalid block type, and for a stored block, a literal or a match
/// that does not fit or reaches before the start; what came before it is kept, and nothing of itself is
/// copied. Returns -2 when the length check of a stored block failed; decoding goes on after that. A stored
/// block whose length fields are the last bytes of the input also gives -1, though it is empty and nothing is
/// lost. After an error in a table, message IDS_DAMAGED_DATA is shown, the status so far is returned and
/// `data` still holds the compressed bytes.
///
/// A stream that needs more input than there is continues with bits of 0 until it ends by itself or until the
/// output is full: at the recorded size, or at the most that so many input bytes can yield, but not below one
/// megabyte.
std::int16_t Inflate(ByteBuffer& data, std::int32_t lastIndex, bool deflate64);

/// Takes decoded bytes, piece by piece, in order.
using PieceSink = std::function<void(std::span<const std::uint8_t>)>;

/// Decodes as Inflate does, for large entries: the decoded bytes are passed to `sink` in pieces of about a
/// megabyte and not kept. Returns false after an error in a table; message IDS_DAMAGED_DATA was shown then,
/// and what the sink received must not be used.
bool InflateInPieces(std::span<const std::uint8_t> data, std::int32_t lastIndex, bool deflate64,
                     const PieceSink& sink);

} // namespace codec
