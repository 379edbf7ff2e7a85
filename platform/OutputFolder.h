#pragma once

#include "base/SystemError.h"
#include "platform/Times.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace platform {

/// Times given to a file that is written, all UTC.
struct FileTimes {
    FileTime creation;
    FileTime lastAccess;
    FileTime lastWrite;
};

/// What a file is given besides its content when it is complete.
struct FileTraits {
    /// None: it keeps the time of writing. Times that cannot be set are no failure.
    std::optional<FileTimes> times;
    /// Whoever may read it may run it, where the system has such a mark.
    bool executable = false;
};

/// A file being written under a temporary name. Destroyed without a successful Commit() it leaves nothing
/// behind.
class OutputFile {
  public:
    virtual ~OutputFile() = default;

    /// Appends all of `data`.
    virtual base::SystemError Write(std::span<const std::uint8_t> data) = 0;

    /// Ends the file and gives it its name. A file or link of that name is replaced; a folder or a read-only
    /// file is not, and makes this fail. Call it once.
    virtual base::SystemError Commit(const FileTraits& traits) = 0;
};

/// An open folder into which files are written and folders made. It stands for the folder itself, not for its
/// path: the path is walked once, and a later change of the path does not lead writes astray.
class OutputFolder {
  public:
    virtual ~OutputFolder() = default;

    /// Writes a whole file. `name` is one path component, taken in its exact letter case. A file or link of
    /// that name is replaced, and only once the new file is complete; after a failure what was there is still
    /// there and nothing else is left behind. A folder of that name is a failure. Without `times` the file
    /// keeps the time of writing; times that cannot be set are no failure.
    virtual base::SystemError WriteFile(std::string_view name, std::span<const std::uint8_t> data,
                                        const std::optional<FileTimes>& times) = 0;

    /// Starts a file of any length; `name` as above. It must not outlive this folder. Returns null and sets
    /// `error` on failure.
    virtual std::unique_ptr<OutputFile> CreateFile(std::string_view name, base::SystemError& error) = 0;

    /// Opens the folder `name` (one path component, exact first, then without regard to case) inside this
    /// one, making it, as `nameWhenMade`, when nothing of that name is there. A link is not followed. Returns
    /// null and sets `error` on failure. Making many folders inside one costs no listing of it for each: what
    /// an open folder holds is listed at most once.
    virtual std::unique_ptr<OutputFolder> OpenOrCreate(std::string_view name, std::string_view nameWhenMade,
                                                       base::SystemError& error) = 0;

    /// Opens a folder several levels below this one in one step, where the system can: names in their exact
    /// letter case with "\\" or "/" between them, no link followed. Null means only that OpenOrCreate has to
    /// be asked level by level.
    virtual std::unique_ptr<OutputFolder> OpenExact(std::string_view /*path*/) { return nullptr; }

    /// How many folders may be held open at the same time without the system running out of handles.
    static std::size_t MostOpen();

    /// Opens an existing folder by path. Returns null and sets `error` on failure.
    static std::unique_ptr<OutputFolder> Open(const std::string& path, base::SystemError& error);
};

} // namespace platform
