#pragma once

#include "base/SystemError.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

namespace cabinet {

/// Some consecutive blocks of one folder on their way from raw to packed.
class PackedRun {
  public:
    static constexpr std::size_t kMostBlocks = 16;

    PackedRun();

    /// Room for raw bytes that is still free.
    std::span<std::uint8_t> Room();

    /// Says that the first `count` bytes of the room are filled.
    void Fill(std::size_t count) { size_ += count; }

    std::size_t Size() const { return size_; }

    bool IsFull() const;

    /// Empties the run. Its history becomes the last block of `previous`, the run before it in the same
    /// folder.
    void Begin(const PackedRun* previous);

    std::size_t BlockCount() const;

    std::span<const std::uint8_t> Packed() const { return {packed_.data(), packedSize_}; }

  private:
    friend class BlockPipeline;

    std::vector<std::uint8_t> raw_; // one block of history, then the run's own
    std::size_t history_ = 0;
    std::size_t size_ = 0;
    std::vector<std::uint8_t> packed_;
    std::size_t packedSize_ = 0;
    bool isPacked_ = false;
};

/// Packs runs on all processors and passes them on in the order in which they were submitted.
class BlockPipeline {
  public:
    /// Receives a packed run. An error that it returns ends the packing.
    using Output = std::function<base::SystemError(const PackedRun& run)>;

    explicit BlockPipeline(Output output);
    ~BlockPipeline();
    BlockPipeline(const BlockPipeline&) = delete;
    BlockPipeline& operator=(const BlockPipeline&) = delete;

    /// Returns an empty run to fill. When all are in use, waits for the oldest and passes it on first.
    /// Returns null and sets `error` when the output has failed. `isContinued` says that the run continues
    /// the folder of the run before.
    PackedRun* Next(bool isContinued, base::SystemError& error);

    /// Gives the run that Next() returned last to the worker threads.
    void Submit();

    /// Waits for all submitted runs and passes them on.
    base::SystemError Finish();

  private:
    void Work();
    static void Pack(PackedRun& run, class BlockCompressor& compressor);
    base::SystemError HandOnOldest();

    Output output_;
    std::vector<PackedRun> runs_; // a ring
    std::size_t first_ = 0;       // the oldest that was not handed on; positions count on, modulo the ring
    std::size_t submitted_ = 0;
    std::size_t taken_ = 0; // by workers
    bool stop_ = false;
    std::mutex mutex_;
    std::condition_variable mayWork_;
    std::condition_variable isPacked_;
    std::vector<std::unique_ptr<BlockCompressor>> compressors_;
    std::vector<std::thread> workers_;
};

} // namespace cabinet
