#include "archive/codec/MszipBlock.h"

#include "archive/codec/InflateDecoder.h"

namespace codec {

namespace {

/// An output of fixed size.
class FixedOutput final : public InflateOutput {
  public:
    explicit FixedOutput(std::span<std::uint8_t> room) : room_(room) {}

    std::span<std::uint8_t> Grow(std::size_t /*used*/, std::size_t /*size*/) override { return room_; }

  private:
    std::span<std::uint8_t> room_;
};

} // namespace

bool DecodeMszipBlock(std::span<const std::uint8_t> packed, std::uint8_t* output, std::size_t history,
                      std::size_t size, std::size_t spare) {
    // With the spare bytes, the fast loop can run up to the end of a valid block.
    const std::size_t room = history + size + spare;
    FixedOutput fixed({output - history, room});
    InflateDecoder decoder(packed, fixed, room, false, *InflateKernels().back(), history);
    const InflateResult result = decoder.Decode();
    return result.status == 0 && !result.badTable && result.produced == history + size;
}

} // namespace codec
