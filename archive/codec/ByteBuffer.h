#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace codec {

/// A growable array of bytes that does not fill what it allocates: the content of new bytes is not defined
/// until they are written. Movable, not copyable.
class ByteBuffer {
  public:
    ByteBuffer() = default;

    explicit ByteBuffer(std::size_t size) { Resize(size); }

    ByteBuffer(ByteBuffer&& from) noexcept { Swap(from); }

    ByteBuffer& operator=(ByteBuffer&& from) noexcept {
        ByteBuffer(std::move(from)).Swap(*this);
        return *this;
    }

    ~ByteBuffer() { Release(); }

    std::uint8_t* Data() { return data_.get(); }

    const std::uint8_t* Data() const { return data_.get(); }

    std::size_t Size() const { return size_; }

    std::span<std::uint8_t> Span() { return {data_.get(), size_}; }

    std::span<const std::uint8_t> Span() const { return {data_.get(), size_}; }

    std::uint8_t& operator[](std::size_t index) { return data_.get()[index]; }

    std::uint8_t operator[](std::size_t index) const { return data_.get()[index]; }

    /// Sets the size, keeping the bytes below both sizes. Throws std::bad_alloc when memory is short.
    void Resize(std::size_t size);

    /// Empties the buffer; its memory is kept for the next use unless it is larger than a few megabytes.
    void Clear();

    /// Removes the first `count` bytes.
    void DropFront(std::size_t count);

    /// While an object of this class lives, the largest block of memory that the thread's buffers free is
    /// kept for the next buffer that needs as much. So entry after entry is unpacked into memory that is
    /// already there. The outermost object frees the block.
    class ReuseScope {
      public:
        ReuseScope();
        ~ReuseScope();
        ReuseScope(const ReuseScope&) = delete;
        ReuseScope& operator=(const ReuseScope&) = delete;
    };

  private:
    void Swap(ByteBuffer& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }

    void Release() noexcept;

    struct Free {
        void operator()(std::uint8_t* bytes) const;
    };

    std::unique_ptr<std::uint8_t, Free> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace codec
