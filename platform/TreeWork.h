#pragma once

#include "platform/FileOperations.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {

/// The part that copying and deleting a tree have in common on every system: the observer, and the result so
/// far.
class TreeWork {
  public:
    explicit TreeWork(base::WorkObserver& observer) : observer_(observer) {}

    /// Reports progress to the observer. Returns whether to go on.
    bool Proceed(const std::string& path, std::uint64_t entries = 0, std::uint64_t bytes = 0) {
        isStopped_ = !observer_.Proceed({path, entries, bytes}) || isStopped_;
        return !isStopped_;
    }

    void Fail(const std::string& path, base::SystemError error) {
        ++failures_;
        observer_.Failed(path, error);
    }

    bool IsStopped() const { return isStopped_; }

    std::size_t Failures() const { return failures_; }

    base::Outcome Outcome() const {
        if (isStopped_)
            return base::Outcome::kStopped;
        return failures_ > 0 ? base::Outcome::kFailed : base::Outcome::kDone;
    }

    /// Whether the rest would only fail in the same way after this failure.
    static bool IsHopeless(base::SystemError error) {
        return error.code == base::kErrorDiskFull || error.code == base::kErrorWriteProtect ||
               error.code == base::kErrorNotReady;
    }

  private:
    base::WorkObserver& observer_;
    std::size_t failures_ = 0;
    bool isStopped_ = false;
};

} // namespace platform
