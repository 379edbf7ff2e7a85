#include "archive/zip/ArchiveBytes.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace zip {

namespace {

// A request that starts at most so far behind the window continues reading forwards.
constexpr std::uint64_t kNear = 64 * 1024;
constexpr std::size_t kSingleRead = 16 * 1024;

} // namespace

std::span<const std::uint8_t> ArchiveBytes::View(std::uint64_t offset, std::size_t length) {
    assert(length <= kLargestView);
    if (offset < start_ || std::min(offset + length, size_) > start_ + filled_)
        Fill(offset, length);
    if (offset < start_ || offset >= start_ + filled_)
        return {};
    const auto skip = static_cast<std::size_t>(offset - start_);
    return {bytes_.Data() + skip, std::min(length, filled_ - skip)};
}

std::size_t ArchiveBytes::Read(std::uint64_t offset, std::span<std::uint8_t> buffer) {
    if (buffer.size() > kLargestView / 2)
        return file_.ReadAt(offset, buffer);
    const auto view = View(offset, buffer.size());
    if (!view.empty())
        std::memcpy(buffer.data(), view.data(), view.size());
    return view.size();
}

void ArchiveBytes::Fill(std::uint64_t offset, std::size_t length) {
    const bool forwards = offset >= start_ && offset <= start_ + filled_ + kNear;
    std::uint64_t wanted = std::max(length, forwards ? kLargestView : kSingleRead);
    wanted = offset < size_ ? std::min(wanted, size_ - offset) : 0;
    if (bytes_.Size() == 0)
        bytes_.Resize(kLargestView);
    start_ = offset;
    filled_ = wanted == 0 ? 0 : file_.ReadAt(offset, bytes_.Span().first(static_cast<std::size_t>(wanted)));
}

} // namespace zip
