#pragma once

#include "base/SystemError.h"
#include "platform/EntryName.h"
#include "platform/FileIdentity.h"
#include "platform/NewFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What is meant by a name that belongs to a link: what the link leads to, or the link itself.
enum class Links { kFollowed, kThemselves };

enum class EntryKind { kFile, kFolder, kLink, kOther };

/// What the system knows of an entry of a folder.
struct EntryStatus {
    EntryKind kind = EntryKind::kOther;
    FileIdentity identity;
    std::uint32_t attributes = 0; ///< kAttribute... bits (Files.h)
    bool executable = false;      ///< its owner may run it

    /// Whether both are the same file or folder, whatever has become of its content.
    bool IsSame(const EntryStatus& other) const {
        return identity.volume == other.identity.volume && identity.file == other.identity.file;
    }
};

/// A file that is open for reading, from its start.
class OpenedFile {
  public:
    struct Host;

    OpenedFile();
    explicit OpenedFile(std::unique_ptr<Host> host);
    ~OpenedFile();
    OpenedFile(OpenedFile&& other) noexcept;
    OpenedFile& operator=(OpenedFile&& other) noexcept;

    /// Reads until `buffer` is full or the file ends; `count` returns how much came.
    base::SystemError Read(std::span<std::uint8_t> buffer, std::size_t& count);

    /// What the file is now; nothing when the system cannot tell.
    std::optional<EntryStatus> Status() const;

    const Host& OfSystem() const { return *host_; }

  private:
    std::unique_ptr<Host> host_;
};

/// A folder that is held open. What is done through it reaches what is in this very folder, even when
/// somebody renames the folder meanwhile or puts a link in its place. All names are names of entries, not
/// paths. A function that has an `error` sets it on failure and clears it on success.
class OpenFolder {
  public:
    struct Host;

    OpenFolder();
    explicit OpenFolder(std::unique_ptr<Host> host);
    ~OpenFolder();
    OpenFolder(OpenFolder&& other) noexcept;
    OpenFolder& operator=(OpenFolder&& other) noexcept;

    /// Opens the folder at `path` (in this program's form). Where links are not to be followed, a link in the
    /// place of the folder fails with kErrorBadPathName; links before the last component are followed.
    static OpenFolder At(const std::string& path, Links links, base::SystemError& error);

    /// Opens the folder that holds the entry at `path`, and puts the entry's name there into `name`. The root
    /// of a drive is in no folder, which fails with kErrorPathNotFound.
    static OpenFolder Holding(const std::string& path, EntryName& name, base::SystemError& error);

    /// The same for what a link at `path` leads to, where there is one and it leads to something.
    static OpenFolder HoldingTarget(const std::string& path, EntryName& name, base::SystemError& error);

    /// Whether the path that it was opened by, with At() or Holding(), still leads to it. False when its
    /// medium has been taken away.
    bool IsInPlace() const;

    /// What the folder itself is; nothing when the system cannot tell.
    std::optional<EntryStatus> Status() const;

    /// Reads the names of all entries, ordered by their units, without "." and "..".
    base::SystemError Names(std::vector<EntryName>& names) const;

    /// What stands under a name; nothing, with `error` set, when the system cannot tell or there is nothing.
    std::optional<EntryStatus> StatusOf(const EntryName& name, Links links, base::SystemError& error) const;

    /// Whether another medium is mounted there. A link to a medium is a link.
    bool IsMountPoint(const EntryName& name) const;

    OpenFolder OpenSubfolder(const EntryName& name, Links links, base::SystemError& error) const;

    /// Opens a file for reading, links followed; what is no file fails with kErrorAccessDenied.
    OpenedFile OpenFile(const EntryName& name, base::SystemError& error) const;

    /// The same for a file some folders below; `path` is text, with backslashes between the names. A link in
    /// the place of the file is refused; links in the place of the folders before it are not.
    OpenedFile OpenFileBelow(std::string_view path, base::SystemError& error) const;

    /// Makes a folder that only this user may enter until KeepTraits() gives it other permissions.
    base::SystemError MakeFolder(const EntryName& name) const;

    /// Gives the folder `name` the times and permissions of `from`. A medium that keeps neither is no
    /// failure.
    void KeepTraits(const EntryName& name, const OpenFolder& from) const;

    /// Removes a file, an empty folder or a link itself, read-only ones included. `status` is what StatusOf()
    /// said of it, links not followed.
    base::SystemError Remove(const EntryName& name, const EntryStatus& status) const;

    /// Starts a file under a temporary name. The folder must stay open for the file's life.
    NewFile StartFile(NewFileUse use, base::SystemError& error) const;

    /// Makes a file that has its own name at once. A name that is in use fails with kErrorFileExists. The
    /// folder must stay open for the file's life.
    NewFile CreateFile(const EntryName& name, base::SystemError& error) const;

  private:
    std::unique_ptr<Host> host_;
};

} // namespace platform
