#pragma once

#include "base/SystemError.h"

#include <cstdint>
#include <string>

namespace platform {

/// Progress of a long file operation. The counts are what has been done since the step before.
struct FileStep {
    const std::string& path; ///< what is worked on now, in this program's form
    std::uint64_t entries = 0;
    std::uint64_t bytes = 0;
};

/// Interface that receives the progress of a long file operation.
class FileOperationObserver {
  public:
    virtual ~FileOperationObserver() = default;

    /// Called before each entry and every few megabytes within a file. False stops the operation: every file
    /// is then either complete or as it was before.
    virtual bool Proceed(const FileStep& step) = 0;

    /// What could not be done, and why. The operation goes on with the other entries, unless the medium is
    /// full, gone or write-protected, which would only make them fail as well.
    virtual void Failed(const std::string& path, base::SystemError error) = 0;
};

enum class FileOutcome { kDone, kFailed, kStopped };

/// Copies a file, or a folder with all that it holds, into the folder `toFolder`, keeping times and
/// permissions. A file of the same name is replaced, once the new one is complete; a folder of the same name
/// is filled up. What is copied onto itself stays untouched. A link is copied as what it points at; one that
/// leads back into a folder being copied is a failure.
FileOutcome CopyTree(const std::string& from, const std::string& toFolder, FileOperationObserver& observer);

/// Deletes a file, a link itself, or a folder with all that it holds. Never follows a link, and never empties
/// a medium that is mounted inside the folder.
FileOutcome DeleteTree(const std::string& path, FileOperationObserver& observer);

/// Gives a file or folder another name or place on the same drive. Never replaces anything: a name that is in
/// use, in any letter case, fails with kErrorAlreadyExists, and one that IsFileName refuses with
/// kErrorInvalidName.
base::SystemError RenameEntry(const std::string& from, const std::string& to);

/// Whether `inner` is the folder `folder` or lies below it, links resolved.
bool IsWithin(const std::string& folder, const std::string& inner);

} // namespace platform
