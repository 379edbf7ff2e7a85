#pragma once

#include "base/WorkObserver.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>

namespace cabinet {

/// Counts the work of a call and reports it to the observer, not too often. Work may be counted on
/// any thread; only Tell() calls the observer, on the thread of the call.
class ProgressMeter {
  public:
    /// `observer` may be null.
    explicit ProgressMeter(base::WorkObserver* observer) : observer_(observer) {}

    void SetTotal(std::uint64_t total) { total_ = total; }

    /// The file that is worked on now.
    void SetFile(const std::string& name);

    void Add(std::uint64_t bytes) { done_ += bytes; }

    /// Calls the observer when it is time to. Returns false once the observer has stopped the work.
    bool Tell();

    bool IsStopped() const { return stopped_; }

  private:
    base::WorkObserver* observer_;
    std::uint64_t total_ = 0;
    std::atomic<std::uint64_t> done_ = 0; // since the observer was called
    std::atomic<bool> stopped_ = false;
    std::mutex mutex_;
    std::string file_;
    std::chrono::steady_clock::time_point last_{};
};

} // namespace cabinet
