#pragma once

#include "base/SystemError.h"
#include "platform/NewFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace platform {

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

/// An open folder into which files are written and folders made. It stands for the folder itself and not for
/// its path: the path is walked once, and a later change of the path does not change where files are written.
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

    /// Opens the folder `name` (one path component, found exactly first, then without regard to case) inside
    /// this one. When there is nothing of that name, makes it with the name `nameWhenMade`. A link is not
    /// followed. Returns null and sets `error` on failure. An open folder is listed at most once, however
    /// many folders are made inside it.
    virtual std::unique_ptr<OutputFolder> OpenOrCreate(std::string_view name, std::string_view nameWhenMade,
                                                       base::SystemError& error) = 0;

    /// Opens a folder several levels below this one in one step, where the system can. The names are in their
    /// exact letter case with "\\" or "/" between them, and no link is followed. Null means only that the
    /// caller must open level by level with OpenOrCreate.
    virtual std::unique_ptr<OutputFolder> OpenExact(std::string_view /*path*/) { return nullptr; }

    /// How many folders may be open at the same time without the system running out of handles.
    static std::size_t MostOpen();

    /// Opens an existing folder by path. Returns null and sets `error` on failure.
    static std::unique_ptr<OutputFolder> Open(const std::string& path, base::SystemError& error);
};

} // namespace platform
