#pragma once

#include "archive/cabinet/CabCompress.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>

namespace cabinet {

/// Counts the work of a call and reports it to the progress function, not too often. Work may be counted on
/// any thread; only Tell() calls the function, on the thread of the call.
class ProgressMeter {
  public:
    explicit ProgressMeter(const CabProgressFunction& function) : function_(function) {}

    void SetTotal(std::uint64_t total) { total_ = total > 0 ? total : 1; }

    /// The file that is worked on now.
    void SetFile(const std::string& name);

    void Add(std::uint64_t bytes) { done_ += bytes; }

    /// Calls the progress function when it is time to. Returns false once that function has returned false.
    bool Tell();

    bool IsStopped() const { return stopped_; }

  private:
    const CabProgressFunction& function_;
    std::uint64_t total_ = 1;
    std::atomic<std::uint64_t> done_ = 0;
    std::atomic<bool> stopped_ = false;
    std::mutex mutex_;
    std::string file_;
    std::chrono::steady_clock::time_point last_{};
};

} // namespace cabinet
