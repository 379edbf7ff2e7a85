#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace cabinet {

/// Makes the MSZIP data blocks of a run one after another. A block depends only on its own bytes and those
/// before it in the run, so any number of compressors working side by side make the same blocks.
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

    /// Compresses `raw` into the next block and writes it with its header to `out`, which has room for
    /// LargestResult() bytes. `raw` holds 1 to 32,768 bytes; only the last block may have fewer than that.
    /// Returns the size of the block.
    std::size_t Compress(std::span<const std::uint8_t> raw, std::uint8_t* out);

  private:
    struct Stream;

    void EndBlock();

    std::unique_ptr<Stream> stream_;
};

} // namespace cabinet
