#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace archive {

/// A growable array of bytes that does not fill what it allocates: the content of new bytes is not defined until
/// they are written. Movable, not copyable.
class ByteBuffer {
  public:
    ByteBuffer() = default;
    explicit ByteBuffer(std::size_t size) { Resize(size); }

    std::uint8_t* Data() { return data_.get(); }
    const std::uint8_t* Data() const { return data_.get(); }
    std::size_t Size() const { return size_; }
    bool Empty() const { return size_ == 0; }
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

  private:
    struct Free {
        void operator()(std::uint8_t* bytes) const;
    };
    std::unique_ptr<std::uint8_t, Free> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace archive
