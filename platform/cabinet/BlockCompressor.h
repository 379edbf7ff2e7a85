#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace platform::cabinet {

/// Makes MSZIP data blocks, one at a time and each from nothing but its own bytes and those before it, so
/// that any number of compressors make the same blocks.
class BlockCompressor {
  public:
    BlockCompressor();
    ~BlockCompressor();
    BlockCompressor(const BlockCompressor&) = delete;
    BlockCompressor& operator=(const BlockCompressor&) = delete;

    /// Most bytes that Compress() writes.
    static std::size_t LargestResult();

    /// Writes the block of `raw` (1 to 32,768 bytes) with its header to `out`, which has room for
    /// LargestResult(), and answers its size. `history` is the raw block before it in the folder, or empty.
    std::size_t Compress(std::span<const std::uint8_t> raw, std::span<const std::uint8_t> history,
                         std::uint8_t* out);

  private:
    struct Stream;

    std::unique_ptr<Stream> stream_;
};

} // namespace platform::cabinet
