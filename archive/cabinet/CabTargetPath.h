#pragma once

#include <string>

namespace cabinet {

/// Where a file of a cabinet goes.
struct CabTarget {
    std::string root;   ///< as the user chose it, ending in a backslash
    std::string folder; ///< named after the naming source, ending in a backslash; may be empty
    std::string file;   ///< below that, with the folders that it has in the cabinet

    std::string Path() const { return root + folder + file; }
};

/// The target of the file `name` of the cabinet at `cabName`.
///
/// The destination is the cabinet's own folder when it is empty. The file name of the naming source (of
/// `name` when that is empty) without its last extension is the name of a sub-folder, in which the file keeps
/// its own folders. When that file name equals `name`, in any letter case, it becomes the name of the target
/// itself.
CabTarget CabTargetPath(const std::string& cabName, const std::string& destination,
                        const std::string& namingSource, const std::string& name);

/// Whether the target stays below its root on every system that the program runs on.
bool StaysBelowRoot(const CabTarget& target);

} // namespace cabinet
