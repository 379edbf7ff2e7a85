#pragma once

#include "base/SystemError.h"
#include "platform/posix/files/HostFile.h"

#include <string>
#include <string_view>
#include <sys/types.h>

namespace platform {

/// A new file under a temporary name, which takes another name when it is complete. Until then nothing
/// changes under that other name. A file that never takes it is deleted with this object.
class TemporaryFile {
  public:
    /// Makes the file in the open folder `folder`, which stays open for the object's life, or with AT_FDCWD
    /// at the path `prefix`, which ends with a slash or with what the name is to begin with. `access` is
    /// O_WRONLY or O_RDWR. Where it cannot be made, File() is not open and errno tells why.
    TemporaryFile(int folder, const std::string& prefix, int access, mode_t mode);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    HostFile& File() { return file_; }

    const HostFile& File() const { return file_; }

    /// Brings its bytes onto the medium.
    base::SystemError Sync() const;

    /// Takes the name `hostName` in the same folder (or as a path) and replaces a file that has it. `flags`
    /// are those of renameat2.
    base::SystemError TakeName(const std::string& hostName, unsigned flags = 0);

  private:
    int folder_;
    std::string name_; ///< empty once there is nothing to take away
    HostFile file_;
};

/// Whether a file of this name was made by a TemporaryFile whose prefix ended with `mark`.
bool IsTemporaryName(std::string_view hostName, std::string_view mark);

/// Brings a folder's entries onto the medium; no failure is reported, since the files themselves are safe.
void SyncFolder(const std::string& hostFolder);

} // namespace platform
