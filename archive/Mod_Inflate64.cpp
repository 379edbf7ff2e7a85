#include "archive/Mod_Inflate64.h"

#include "InflateDecoder.h"
#include "app/core/Messages.h"

#include <algorithm>
#include <utility>

namespace archive {

namespace {

constexpr std::uint32_t kDamagedDataText = 541;
constexpr std::uint32_t kWarningTitle = 300;

/// The most that one input byte can yield, rounded up. The densest Deflate match takes two bits (a length
/// code and a distance code of one bit each) for 258 bytes; Deflate64's longest takes 18 for 65538.
constexpr std::size_t kMostPerByte = 258 * 8 / 2;
constexpr std::size_t kMostPerByte64 = 65538 * 8 / 18 + 1;

/// Granted whatever the input. Bits that a cut-off stream lacks read as 0 and may go on to decode to
/// something, to the recorded size if there is no end to it; beyond this and what real bits can yield, that
/// is not followed.
constexpr std::size_t kAlwaysGranted = std::size_t{1} << 20;

/// Taken from the start when the recorded size is no larger.
constexpr std::size_t kFirstRoom = std::size_t{4} << 20;

/// An output buffer whose memory follows what is decoded, up to a limit.
class GrowingOutput : public InflateOutput {
  public:
    explicit GrowingOutput(std::size_t limit) : limit_(limit) {}

    std::span<std::uint8_t> Grow(std::size_t used, std::size_t size) override {
        const std::size_t room = std::max({size, kFirstRoom, used * 2});
        buffer_.Resize(std::min(room, limit_));
        return buffer_.Span();
    }

    ByteBuffer Take(std::size_t used) {
        buffer_.Resize(used);
        return std::move(buffer_);
    }

  private:
    std::size_t limit_;
    ByteBuffer buffer_;
};

} // namespace

std::int16_t Inflate(ByteBuffer& data, std::int32_t lastIndex, bool deflate64) {
    static const InflateKernel& kernel = *InflateKernels().back();
    const std::size_t recorded = lastIndex < 0 ? 0 : static_cast<std::size_t>(lastIndex) + 1;
    const std::size_t yield = data.Size() * (deflate64 ? kMostPerByte64 : kMostPerByte);
    const std::size_t limit = std::min(recorded, std::max(yield, kAlwaysGranted));

    GrowingOutput output(limit);
    const InflateResult result = InflateDecoder(data.Span(), output, limit, deflate64, kernel).Decode();
    if (result.badTable)
        app::ShowText(kDamagedDataText, kWarningTitle, app::kMessageWarning);
    else
        data = output.Take(result.produced);
    return result.status;
}

} // namespace archive
