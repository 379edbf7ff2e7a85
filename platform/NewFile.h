#pragma once

#include "base/SystemError.h"
#include "platform/EntryName.h"
#include "platform/Times.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace platform {

class OpenedFile;

/// Times given to a file that is written, all UTC.
struct FileTimes {
    FileTime creation;
    FileTime lastAccess;
    FileTime lastWrite;
};

/// What a file is given besides its content when it is complete.
struct FileTraits {
    /// Without times the file keeps the time of writing. Times that cannot be set are no failure.
    std::optional<FileTimes> times;
    /// The file can be started as a program by everybody who may read it, where the system has such a
    /// permission.
    bool executable = false;
};

/// How copying a file's bytes ended.
struct CopyResult {
    base::SystemError error;
    bool wasStopped = false;
};

/// What a file that is started under a temporary name is for.
enum class NewFileUse {
    kOutput,
    /// Nobody but this user can open it until KeepTraits() gives it other permissions.
    kCopy,
    /// It is locked while it is open, so that what a killed program left behind can be told from what is
    /// still being written. Starting one deletes what was left behind in the folder.
    kStaged,
};

/// Which files a new file may take the place of. A folder is never replaced.
enum class Replacing { kWritable, kReadOnlyToo };

/// Whether bytes and name are brought onto the medium before the call returns.
enum class Durability { kLater, kOnMedium };

/// Whether a copy is read-only when its source is.
enum class ReadOnlyMark { kKept, kDropped };

/// A new file in an open folder, under a temporary name or at once under its own. One that is neither given
/// its name with TakeName() nor kept with Keep() is deleted with this object.
class NewFile {
  public:
    struct Host;

    NewFile();
    explicit NewFile(std::unique_ptr<Host> host);
    ~NewFile();
    NewFile(NewFile&& other) noexcept;
    NewFile& operator=(NewFile&& other) noexcept;

    /// Appends all of `data`.
    base::SystemError Write(std::span<const std::uint8_t> data);

    base::SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data);

    /// Reads until `buffer` is full or the file ends, and returns how many bytes came.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) const;

    std::uint64_t Size() const;

    /// Puts all bytes of `from` into the empty file. `goOn` is told of every few megabytes done; false stops
    /// the copy.
    CopyResult Fill(const OpenedFile& from, const std::function<bool(std::uint64_t bytes)>& goOn);

    /// Gives it the owner and the permissions of the file that it is to replace, if there is one and the
    /// system has such.
    void KeepOwnership(const EntryName& replaced);

    /// Gives it the times and permissions of `from`. A medium that keeps neither is no failure.
    void KeepTraits(const OpenedFile& from, ReadOnlyMark readOnly);

    /// Gives it times and permission. A medium that keeps neither is no failure.
    void SetTraits(const FileTraits& traits);

    /// Brings its bytes onto the medium.
    base::SystemError Sync();

    /// Lets the system forget bytes that are on the medium, so that they are read from there, where the
    /// system allows that.
    void DropCache();

    /// Gives it its name, in place of a file or a link that has it. What may not be replaced makes this fail
    /// with kErrorAccessDenied. After this, only the destructor may be called.
    base::SystemError TakeName(const EntryName& name, Replacing replacing, Durability durability);

    /// Ends a file that has its own name already. After this, only the destructor may be called.
    base::SystemError Keep(Durability durability);

  private:
    std::unique_ptr<Host> host_;
};

} // namespace platform
