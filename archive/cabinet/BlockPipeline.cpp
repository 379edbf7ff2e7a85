#include "archive/cabinet/BlockPipeline.h"

#include "archive/cabinet/BlockCompressor.h"
#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/ThreadCount.h"

#include <algorithm>
#include <cassert>
#include <system_error>

namespace cabinet {

PackedRun::PackedRun()
    : raw_((1 + kMostBlocks) * kBlockSize), packed_(kMostBlocks * BlockCompressor::LargestResult()) {}

std::span<std::uint8_t> PackedRun::Room() {
    return std::span(raw_).subspan(kBlockSize + size_);
}

bool PackedRun::IsFull() const {
    return size_ == kMostBlocks * kBlockSize;
}

void PackedRun::Begin(const PackedRun* previous) {
    history_ = 0;
    if (previous) {
        history_ = kBlockSize; // only the last block of a folder is not whole
        std::copy_n(previous->raw_.end() - static_cast<std::ptrdiff_t>(kBlockSize), kBlockSize, raw_.begin());
    }
    size_ = 0;
    packedSize_ = 0;
    isPacked_ = false;
}

std::size_t PackedRun::BlockCount() const {
    return (size_ + kBlockSize - 1) / kBlockSize;
}

BlockPipeline::BlockPipeline(Output output) : output_(std::move(output)) {
    const std::size_t threads = ThreadCount();
    runs_ = std::vector<PackedRun>(2 * threads + 1);
    for (std::size_t i = 0; i < threads; ++i)
        compressors_.push_back(std::make_unique<BlockCompressor>());
    try {
        for (std::size_t i = 0; i < threads; ++i)
            workers_.emplace_back(&BlockPipeline::Work, this);
    } catch (const std::system_error&) {
        // There may be fewer threads than wanted, or none; Submit() does the work then.
    }
}

BlockPipeline::~BlockPipeline() {
    {
        const std::lock_guard lock(mutex_);
        stop_ = true;
    }
    mayWork_.notify_all();
    for (std::thread& worker : workers_)
        worker.join();
}

PackedRun* BlockPipeline::Next(bool isContinued, base::SystemError& error) {
    // One place of the ring stays free for the run that is being filled. So the run before it still exists
    // when its history is copied, even if it has been passed on already.
    error = {};
    while (submitted_ - first_ >= runs_.size() - 1 && !error)
        error = HandOnOldest();
    if (error)
        return nullptr;
    PackedRun& run = runs_[submitted_ % runs_.size()];
    run.Begin(isContinued && submitted_ > 0 ? &runs_[(submitted_ - 1) % runs_.size()] : nullptr);
    return &run;
}

void BlockPipeline::Submit() {
    assert(submitted_ - first_ < runs_.size() - 1); // Next() has made room
    if (workers_.empty()) {
        PackedRun& run = runs_[submitted_ % runs_.size()];
        Pack(run, *compressors_[0]);
        run.isPacked_ = true;
    }
    {
        const std::lock_guard lock(mutex_);
        ++submitted_;
    }
    mayWork_.notify_one();
}

base::SystemError BlockPipeline::Finish() {
    base::SystemError error;
    while (first_ < submitted_ && !error)
        error = HandOnOldest();
    return error;
}

base::SystemError BlockPipeline::HandOnOldest() {
    PackedRun& run = runs_[first_ % runs_.size()];
    {
        std::unique_lock lock(mutex_);
        isPacked_.wait(lock, [&] { return run.isPacked_; });
    }
    const base::SystemError error = output_(run);
    ++first_;
    return error;
}

void BlockPipeline::Pack(PackedRun& run, BlockCompressor& compressor) {
    std::size_t packed = 0;
    compressor.Begin({run.raw_.data() + kBlockSize - run.history_, run.history_});
    for (std::size_t at = 0; at < run.size_; at += kBlockSize) {
        const std::uint8_t* raw = run.raw_.data() + kBlockSize + at;
        packed +=
            compressor.Compress({raw, std::min(kBlockSize, run.size_ - at)}, run.packed_.data() + packed);
    }
    run.packedSize_ = packed;
}

void BlockPipeline::Work() {
    std::unique_lock lock(mutex_);
    std::unique_ptr<BlockCompressor> compressor = std::move(compressors_.back());
    compressors_.pop_back();
    for (;;) {
        mayWork_.wait(lock, [&] { return stop_ || taken_ < submitted_; });
        if (stop_)
            return;
        PackedRun& run = runs_[taken_++ % runs_.size()];
        lock.unlock();
        Pack(run, *compressor);
        lock.lock();
        run.isPacked_ = true;
        isPacked_.notify_one();
    }
}

} // namespace cabinet
