#pragma once

#include "platform/windows/files/Handle.h"

#include <string>
#include <string_view>

namespace platform {

/// How OpenBelow opens what is called by a name.
struct OpenMode {
    DWORD access;
    DWORD disposition;       ///< FILE_OPEN, FILE_CREATE or FILE_OPEN_IF
    DWORD options;           ///< FILE_DIRECTORY_FILE, FILE_NON_DIRECTORY_FILE, FILE_OPEN_REPARSE_POINT
    DWORD share = kShareAll; ///< what others may do with it meanwhile
};

/// Opens or makes the entry `name` of an open folder, or, with backslashes between the names, an entry some
/// folders below it, wherever that folder has been moved. Other programs may go on using the entry. A name
/// that is in use fails with kErrorFileExists.
Handle OpenBelow(const Handle& folder, std::wstring_view name, const OpenMode& mode,
                 base::SystemError& error);

/// Gives an open file the name `name` in an open folder, in place of a file or link of that name. The file
/// must have been opened with the right to delete it.
base::SystemError MoveBelow(const Handle& file, const Handle& folder, std::wstring_view name);

} // namespace platform
