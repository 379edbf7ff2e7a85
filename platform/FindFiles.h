#pragma once

#include "base/SystemError.h"
#include "platform/Times.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace platform {

/// One entry met while a folder is enumerated.
struct FindData {
    std::string name;             ///< as UTF-8; "?" stands for what the ANSI code page cannot hold
    std::uint32_t attributes = 0; ///< kAttribute... bits (Files.h)
    std::uint32_t sizeHigh = 0;
    std::uint32_t sizeLow = 0;
    FileTime lastWrite; ///< UTC
};

/// The entry at `path` itself; nothing when there is none, or only a link that leads nowhere.
std::optional<FindData> FindEntry(const std::string& path);

/// Enumerates the entries of a folder, hidden and system entries and "." and ".." included, in the order in
/// which the file system returns them. A link has the properties of what it points at, or its own when it is
/// broken; both kinds carry kAttributeReparsePoint.
class FindFiles {
  public:
    virtual ~FindFiles() = default;

    /// Puts the next entry into `data`; false when there are no more.
    virtual bool Next(FindData& data) = 0;

    /// Starts an enumeration of `folder` (with or without its last backslash). Returns null and sets `error`
    /// when it cannot be searched.
    static std::unique_ptr<FindFiles> Start(const std::string& folder, base::SystemError& error);
};

} // namespace platform
