#include "archive/codec/Inflate.h"

#include "app/Messages.h"
#include "app/TextIds.h"
#include "archive/codec/InflateDecoder.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace codec {

namespace {

/// Most bytes that one input byte can yield, rounded up. The densest match of Deflate takes two bits (a
/// length code and a distance code of one bit each) for 258 bytes; the longest of Deflate64 takes 18 bits for
/// 65538 bytes.
constexpr std::size_t kMostPerByte = 258 * 8 / 2;
constexpr std::size_t kMostPerByte64 = 65538 * 8 / 18 + 1;

/// Output that is allowed for any input. The missing bits of a cut-off stream read as 0, and decoding them
/// may go on up to the recorded size. Such output is not followed beyond this number and what real bits can
/// yield.
constexpr std::size_t kAlwaysGranted = std::size_t{1} << 20;

/// Bytes that decoding in pieces holds in memory at a time; few enough to stay in a processor's cache.
constexpr std::size_t kPieceRoom = std::size_t{1} << 20;
static_assert(kPieceRoom > 4 * kFarthestMatch, "moving what must stay is the smaller part of the work");

/// Memory that is allocated at the start; less when the recorded size is smaller.
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

/// A window over the output: what matches cannot reach any more goes to a sink.
class PieceOutput : public InflateOutput {
  public:
    explicit PieceOutput(const PieceSink& sink) : sink_(sink) {}

    std::span<std::uint8_t> Grow(std::size_t, std::size_t size) override {
        buffer_.Resize(std::max(size, kPieceRoom));
        return buffer_.Span();
    }

    std::size_t TakeFront(std::size_t used) override {
        if (used <= kFarthestMatch)
            return 0;
        HandOn(used);
        const std::size_t taken = used - kFarthestMatch;
        std::memmove(buffer_.Data(), buffer_.Data() + taken, kFarthestMatch);
        handedOn_ = kFarthestMatch;
        return taken;
    }

    /// Hands on what is left of `produced` bytes in all.
    void Finish(std::size_t produced) { HandOn(handedOn_ + produced - total_); }

  private:
    void HandOn(std::size_t used) {
        if (used > handedOn_)
            sink_(std::span(buffer_.Span()).subspan(handedOn_, used - handedOn_));
        total_ += used - handedOn_;
        handedOn_ = used;
    }

    const PieceSink& sink_;
    ByteBuffer buffer_;
    std::size_t handedOn_ = 0; // of the bytes in the buffer
    std::size_t total_ = 0;
};

/// The most that a stream of `stored` bytes may decode to.
std::size_t LimitOf(std::size_t stored, std::int32_t lastIndex, bool deflate64) {
    const std::size_t recorded = lastIndex < 0 ? 0 : static_cast<std::size_t>(lastIndex) + 1;
    const std::size_t yield = stored * (deflate64 ? kMostPerByte64 : kMostPerByte);
    return std::min(recorded, std::max(yield, kAlwaysGranted));
}

InflateResult Run(std::span<const std::uint8_t> data, InflateOutput& output, std::size_t limit,
                  bool deflate64) {
    static const InflateKernel& kernel = *InflateKernels().back();
    const InflateResult result = InflateDecoder(data, output, limit, deflate64, kernel).Decode();
    if (result.badTable)
        app::ShowText(IDS_DAMAGED_DATA, IDS_WARNING_TITLE, app::kMessageWarning);
    return result;
}

} // namespace

std::int16_t Inflate(ByteBuffer& data, std::int32_t lastIndex, bool deflate64) {
    const std::size_t limit = LimitOf(data.Size(), lastIndex, deflate64);
    GrowingOutput output(limit);
    const InflateResult result = Run(data.Span(), output, limit, deflate64);
    if (!result.badTable)
        data = output.Take(result.produced);
    return result.status;
}

bool InflateInPieces(std::span<const std::uint8_t> data, std::int32_t lastIndex, bool deflate64,
                     const PieceSink& sink) {
    PieceOutput output(sink);
    const InflateResult result = Run(data, output, LimitOf(data.size(), lastIndex, deflate64), deflate64);
    if (result.badTable)
        return false;
    output.Finish(result.produced);
    return true;
}

} // namespace codec
