#pragma once

#include "base/Outcome.h"
#include "base/WorkObserver.h"

#include <string>

namespace platform {

/// Copies a file, or a folder with all that it holds, into the folder `toFolder`, keeping times and
/// permissions. A file of the same name is replaced, once the new one is complete; a folder of the same name
/// is filled up. What is copied onto itself stays untouched. A link is copied as what it points at; one that
/// leads back into a folder being copied is a failure. The observer is called before and after each entry and
/// every few megabytes within a file. After a failure the copy goes on with the other entries, unless the
/// medium is full, gone or write-protected, which would only make them fail as well.
base::Outcome CopyTree(const std::string& from, const std::string& toFolder, base::WorkObserver& observer);

/// Deletes a file, a link itself, or a folder with all that it holds. Never follows a link, and never empties
/// a medium that is mounted inside the folder. The observer is called before and after each entry; a failure
/// does not end the work.
base::Outcome DeleteTree(const std::string& path, base::WorkObserver& observer);

/// Gives a file or folder another name or place on the same drive. Never replaces anything: a name that is in
/// use, in any letter case, fails with kErrorAlreadyExists, and one that IsFileName refuses with
/// kErrorInvalidName.
base::SystemError RenameEntry(const std::string& from, const std::string& to);

/// Whether `inner` is the folder `folder` or lies below it, links resolved.
bool IsWithin(const std::string& folder, const std::string& inner);

} // namespace platform
