#include "archive/codec/ByteBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace codec {

namespace {

constexpr std::size_t kKeptWhenCleared = std::size_t{4} << 20;

/// Smaller blocks are allocated just as quickly from the heap.
constexpr std::size_t kLeastSpare = std::size_t{64} << 10;

/// Larger blocks are freed, so that other uses get the memory.
constexpr std::size_t kMostSpare = std::size_t{256} << 20;

/// The block kept by ReuseScope.
struct Spare {
    int scopes = 0;
    std::uint8_t* bytes = nullptr;
    std::size_t capacity = 0;

    void FreeBlock() {
        std::free(bytes);
        bytes = nullptr;
        capacity = 0;
    }
};

thread_local Spare spare;

} // namespace

void ByteBuffer::Free::operator()(std::uint8_t* bytes) const {
    std::free(bytes);
}

ByteBuffer::ReuseScope::ReuseScope() {
    spare.scopes++;
}

ByteBuffer::ReuseScope::~ReuseScope() {
    if (--spare.scopes == 0)
        spare.FreeBlock();
}

void ByteBuffer::Release() noexcept {
    if (spare.scopes > 0 && capacity_ > spare.capacity && capacity_ >= kLeastSpare &&
        capacity_ <= kMostSpare) {
        spare.FreeBlock();
        spare.bytes = data_.release();
        spare.capacity = capacity_;
    }
    data_.reset();
    size_ = 0;
    capacity_ = 0;
}

void ByteBuffer::Resize(std::size_t size) {
    if (size > capacity_) {
        if (!data_ && size >= kLeastSpare && size <= spare.capacity) {
            data_.reset(std::exchange(spare.bytes, nullptr));
            capacity_ = std::exchange(spare.capacity, 0);
            size_ = size;
            return;
        }
        // Growing by at least a half keeps the cost of many small growths linear. The memory comes from
        // malloc and not from new, because realloc can move a large block without copying it.
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
    if (capacity_ > kKeptWhenCleared)
        Release();
    size_ = 0;
}

void ByteBuffer::DropFront(std::size_t count) {
    count = std::min(count, size_);
    size_ -= count;
    if (size_ != 0)
        std::memmove(data_.get(), data_.get() + count, size_);
}

} // namespace codec
