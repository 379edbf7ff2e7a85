#include "archive/zip/TextArena.h"

#include <algorithm>
#include <cstring>

namespace zip {

namespace {
constexpr std::size_t kBlockSize = 256 * 1024;
} // namespace

std::string_view TextArena::Keep(std::string_view text) {
    if (text.empty())
        return {};
    if (text.size() > left_) {
        left_ = std::max(text.size(), kBlockSize);
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(left_));
        next_ = blocks_.back().get();
    }
    char* const place = next_;
    std::memcpy(place, text.data(), text.size());
    next_ += text.size();
    left_ -= text.size();
    return {place, text.size()};
}

} // namespace zip
