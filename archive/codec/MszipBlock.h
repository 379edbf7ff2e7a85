#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace codec {

/// Decodes one MSZIP data block with this engine's Deflate decoder. It has the form of a
/// cabinet::MszipBlockDecoder.
bool DecodeMszipBlock(std::span<const std::uint8_t> packed, std::uint8_t* output, std::size_t history,
                      std::size_t size, std::size_t spare);

} // namespace codec
