#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace codec {

/// Decodes one MSZIP data block without its two signature bytes: a Deflate stream (RFC 1951) that may reach
/// back into what stands before `output`. `output` points behind `history` bytes of decoded data; the block
/// fills exactly `size` bytes, and up to `spare` more may be written over. Returns false when it cannot be
/// decoded, whatever the reason.
bool DecodeMszipBlock(std::span<const std::uint8_t> packed, std::uint8_t* output, std::size_t history,
                      std::size_t size, std::size_t spare);

} // namespace codec
