#pragma once

#include "archive/codec/FollowerTable.h"
#include "archive/codec/ReduceLanes.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace codec {

/// Decodes one reduced stream (ZIP application note, section 5.2).
class ReduceDecoder {
  public:
    /// `factor` is 1 to 4. `input` must outlive the decoder. The length of a lane changes nothing but speed.
    ReduceDecoder(std::span<const std::uint8_t> input, int factor,
                  std::size_t laneBytes = ReduceLanes::kUsualLane);

    /// Fills `room` from its first to its last byte. When it is full, decoding stops, even in the middle of a
    /// copy. Missing input bits read as 0.
    void Decode(std::span<std::uint8_t> room);

  private:
    std::span<const std::uint8_t> input_;
    unsigned factor_;
    std::size_t laneBytes_;
    FollowerTable followers_;
};

} // namespace codec
