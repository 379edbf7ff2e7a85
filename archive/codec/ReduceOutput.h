#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace codec {

/// Turns the values of a reduced stream into bytes: plain bytes, copies and escaped escape values (ZIP
/// application note, section 5.2). Ignores all values after its room is full.
class ReduceOutput {
  public:
    /// `factor` is 1 to 4.
    ReduceOutput(std::span<std::uint8_t> room, unsigned factor);

    bool Full() const { return at_ == room_.size(); }

    void Put(std::uint8_t value);

    /// The same as Put for each value.
    void Put(std::span<const std::uint8_t> values);

  private:
    enum class State : std::uint8_t { kPlain, kEscaped, kLength, kDistance };

    std::size_t PutFast(std::span<const std::uint8_t> values);
    void Copy(std::size_t distance, std::size_t length);

    std::span<std::uint8_t> room_;
    std::size_t at_ = 0;
    unsigned distanceShift_;
    std::size_t lengthMask_;
    State state_ = State::kPlain;
    std::size_t length_ = 0;
    std::size_t distance_ = 0;
};

} // namespace codec
