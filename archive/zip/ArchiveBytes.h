#pragma once

#include "archive/codec/ByteBuffer.h"
#include "platform/FileReader.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace zip {

/// An open archive that is read ahead, so that many small records and entries that lie close together cost
/// one read of the file. Requests that are far apart are read on their own.
class ArchiveBytes {
  public:
    /// The longest view; longer than any header with its texts.
    static constexpr std::size_t kLargestView = 256 * 1024;

    /// `file` outlives the window.
    explicit ArchiveBytes(platform::FileReader& file) : file_(file), size_(file.Size()) {}

    std::uint64_t Size() const { return size_; }

    /// Returns `length` bytes (at most kLargestView) from `offset` on, or fewer where the file ends. They
    /// stay valid until the next call.
    std::span<const std::uint8_t> View(std::uint64_t offset, std::size_t length);

    /// Copies bytes from `offset` on into `buffer` and returns their number.
    std::size_t Read(std::uint64_t offset, std::span<std::uint8_t> buffer);

  private:
    void Fill(std::uint64_t offset, std::size_t length);

    platform::FileReader& file_;
    std::uint64_t size_;
    codec::ByteBuffer bytes_;
    std::uint64_t start_ = 0;
    std::size_t filled_ = 0;
};

} // namespace zip
