#include "archive/ByteBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace archive {

namespace {

constexpr std::size_t kKeptWhenCleared = std::size_t{4} << 20;

} // namespace

void ByteBuffer::Free::operator()(std::uint8_t* bytes) const {
    std::free(bytes);
}

void ByteBuffer::Resize(std::size_t size) {
    if (size > capacity_) {
        // Growing by at least a half keeps repeated small growth linear; malloc, not new, because realloc can
        // move a large block without copying it.
        const std::size_t wanted = data_ ? std::max(size, capacity_ + capacity_ / 2) : size;
        void* bytes = std::realloc(data_.get(), wanted);
        if (!bytes)
            throw std::bad_alloc();
        static_cast<void>(data_.release());
        data_.reset(static_cast<std::uint8_t*>(bytes));
        capacity_ = wanted;
    }
    size_ = size;
}

void ByteBuffer::Clear() {
    size_ = 0;
    if (capacity_ > kKeptWhenCleared) {
        data_.reset();
        capacity_ = 0;
    }
}

void ByteBuffer::DropFront(std::size_t count) {
    count = std::min(count, size_);
    size_ -= count;
    if (size_ != 0)
        std::memmove(data_.get(), data_.get() + count, size_);
}

} // namespace archive
