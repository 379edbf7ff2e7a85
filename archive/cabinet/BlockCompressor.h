#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace cabinet {

/// Makes the MSZIP data blocks of a run, one after another, from nothing but their own bytes and those before
/// them, so that any number of compressors make the same blocks.
class BlockCompressor {
  public:
    BlockCompressor();
    ~BlockCompressor();
    BlockCompressor(const BlockCompressor&) = delete;
    BlockCompressor& operator=(const BlockCompressor&) = delete;

    /// Most bytes that Compress() writes.
    static std::size_t LargestResult();

    /// Starts a run. `history` is the raw block before it in the folder, or empty.
    void Begin(std::span<const std::uint8_t> history);

    /// Writes the next block, of `raw` (1 to 32,768 bytes, fewer than that only in the last), with its header
    /// to `out`, which has room for LargestResult(), and answers its size.
    std::size_t Compress(std::span<const std::uint8_t> raw, std::uint8_t* out);

  private:
    struct Stream;

    void EndBlock();

    std::unique_ptr<Stream> stream_;
};

} // namespace cabinet
