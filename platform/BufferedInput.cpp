#include "platform/BufferedInput.h"

#include <algorithm>

namespace platform {

std::size_t BufferedInput::ReadSome(std::span<std::uint8_t> out) {
    std::size_t done = 0;
    while (done < out.size()) {
        if (position_ < start_ || position_ >= start_ + held_) {
            start_ = position_;
            held_ = file_.ReadAt(start_, buffer_);
            if (held_ < buffer_.size() && start_ + held_ < file_.Size())
                faulted_ = true;
            if (held_ == 0)
                break;
        }
        const auto from = static_cast<std::size_t>(position_ - start_);
        const std::size_t count = std::min(held_ - from, out.size() - done);
        std::copy_n(buffer_.begin() + static_cast<std::ptrdiff_t>(from), count,
                    out.begin() + static_cast<std::ptrdiff_t>(done));
        done += count;
        position_ += count;
    }
    return done;
}

base::SystemError BufferedInput::Read(std::span<std::uint8_t> out) {
    if (ReadSome(out) == out.size())
        return {};
    return {faulted_ ? base::kErrorReadFault : base::kErrorInvalidData};
}

} // namespace platform
