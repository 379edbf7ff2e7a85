#pragma once

#include "platform/FileOperations.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {

/// What copying and deleting a tree have in common on every host: who watches it, and what has come of it so
/// far.
class TreeWork {
  public:
    explicit TreeWork(FileOperationObserver& observer) : observer_(observer) {}

    /// Tells that so much has been done, and answers whether to go on.
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

    FileOutcome Outcome() const {
        if (isStopped_)
            return FileOutcome::kStopped;
        return failures_ > 0 ? FileOutcome::kFailed : FileOutcome::kDone;
    }

    /// Whether after such a failure the rest would only fail too.
    static bool IsHopeless(base::SystemError error) {
        return error.code == base::kErrorDiskFull || error.code == base::kErrorWriteProtect ||
               error.code == base::kErrorNotReady;
    }

  private:
    FileOperationObserver& observer_;
    std::size_t failures_ = 0;
    bool isStopped_ = false;
};

} // namespace platform
