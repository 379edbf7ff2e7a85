#pragma once

#include "base/SystemError.h"
#include "platform/posix/files/TemporaryFile.h"

#include <optional>
#include <string>

namespace platform {

/// A file being written beside the one whose place it will take. Until Commit() succeeds the old file stays
/// as it is; a replacement that is not committed leaves nothing behind.
class Replacement {
  public:
    /// Starts a replacement for `hostPath`, or, when that is a link, for the file it leads to. A folder and a
    /// file that nobody may write are refused with kErrorAccessDenied.
    explicit Replacement(const std::string& hostPath);

    /// Why the replacement could not be started.
    base::SystemError Error() const { return error_; }

    /// The new file, open for writing.
    const HostFile& File() const { return staged_->File(); }

    /// Whether there is a file whose place it will take.
    bool Replaces() const { return replaces_; }

    /// Puts the new file in the place of the old one and gives it the old one's mode. With `isLasting`, its
    /// bytes are brought onto the medium first.
    base::SystemError Commit(bool isLasting = true);

  private:
    std::string target_;
    std::optional<TemporaryFile> staged_;
    base::SystemError error_;
    bool replaces_ = false;
};

} // namespace platform
