#pragma once

#include "base/SystemError.h"
#include "platform/FileIdentity.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The name of a file or folder exactly as the system keeps it. Not every such name is text.
using EntryName = std::filesystem::path::string_type;

/// The name as text, to be shown; "?" or a replacement character stands for what is no text.
std::string TextOf(const EntryName& name);

/// What is meant by a name that belongs to a link: what the link leads to, or the link itself.
enum class Links { kFollowed, kThemselves };

enum class EntryKind { kFile, kFolder, kLink, kOther };

/// What the system knows of an entry of a folder.
struct EntryStatus {
    EntryKind kind = EntryKind::kOther;
    FileIdentity identity;
    std::uint32_t attributes = 0; ///< kAttribute... bits (Files.h)
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

    /// Opens the folder that holds the entry at `path`, and puts the entry's name there into `name`. The root
    /// of a drive is in no folder, which fails with kErrorPathNotFound.
    static OpenFolder Holding(const std::string& path, EntryName& name, base::SystemError& error);

    /// Reads the names of all entries, ordered by their units, without "." and "..".
    base::SystemError Names(std::vector<EntryName>& names) const;

    /// What stands under a name; nothing, with `error` set, when the system cannot tell or there is nothing.
    std::optional<EntryStatus> StatusOf(const EntryName& name, Links links, base::SystemError& error) const;

    /// Whether another medium is mounted there. A link to a medium is a link.
    bool IsMountPoint(const EntryName& name) const;

    OpenFolder OpenSubfolder(const EntryName& name, Links links, base::SystemError& error) const;

    /// Removes a file, an empty folder or a link itself, read-only ones included. `status` is what StatusOf()
    /// said of it, links not followed.
    base::SystemError Remove(const EntryName& name, const EntryStatus& status) const;

  private:
    std::unique_ptr<Host> host_;
};

} // namespace platform
