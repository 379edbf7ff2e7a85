#pragma once

#include "HostFile.h"
#include "platform/SystemError.h"

#include <string>

namespace platform {

/// A file being written beside the one whose place it will take. Until Commit() succeeds the old file stays
/// as it is; a replacement that is not committed leaves nothing behind.
class Replacement {
  public:
    /// Starts a replacement for `hostPath`, or, when that is a link, for the file it leads to. A folder and a
    /// file that nobody may write are refused with kErrorAccessDenied.
    explicit Replacement(std::string hostPath);
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// Why the replacement could not be started.
    SystemError Error() const { return error_; }

    /// The new file, open for writing.
    const HostFile& File() const { return file_; }

    /// Brings the new file onto the medium and gives it the old one's place and, where there was one, its
    /// mode.
    SystemError Commit();

  private:
    std::string target_;
    std::string temporary_;
    HostFile file_;
    SystemError error_;
};

/// A name for a temporary file, different at every call in this process and from those of other processes.
std::string TemporaryName();

/// Brings a folder's entries onto the medium; no failure is reported, since the files themselves are safe.
void SyncFolder(const std::string& hostFolder);

} // namespace platform
