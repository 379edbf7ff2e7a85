#pragma once

#include <string>

namespace app {

/// What the whole program knows, set during start-up and by the explorer; one instance for the process.
struct ApplicationState {
    std::string LanguageId;  ///< four hexadecimal digits such as "0409"
    std::string CharsetCode; ///< font character-set number, decimal
    std::string OwnerName;   ///< the drive owner's name, put for "%username" in texts
    bool SkinAllowed = false;
    std::string SkinFilePath; ///< empty: no skin
    /// Folder shown in the file list, with a last backslash; empty at the tree's root.
    std::string CurrentPath;
    std::string CurrentNodeKey;  ///< key of its tree node
    bool ExtractionDone = false; ///< set by an archive dialog that has extracted, read by the extract command
};

ApplicationState& Application();

} // namespace app
