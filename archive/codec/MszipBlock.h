#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace codec {

/// Decodes one MSZIP data block as platform::MszipBlockDecoder asks for it, with this engine's Deflate
/// decoder.
bool DecodeMszipBlock(std::span<const std::uint8_t> packed, std::uint8_t* output, std::size_t history,
                      std::size_t size, std::size_t spare);

} // namespace codec
