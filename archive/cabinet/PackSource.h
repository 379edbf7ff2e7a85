#pragma once

#include "archive/cabinet/CabCompress.h"
#include "platform/FileIdentity.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace cabinet {

/// A file that is to be packed, as it was found.
struct PackEntry {
    std::string name; ///< below the source, folders ending in backslashes; UTF-8
    platform::FileIdentity identity;
    std::uint32_t attributes = 0; ///< kAttribute... bits (Files.h)
    bool executable = false;
    friend bool operator==(const PackEntry&, const PackEntry&) = default;
};

/// A file of the source, open for reading from its start.
class PackInput {
  public:
    virtual ~PackInput() = default;

    /// Reads until `buffer` is full or the file ends. `count` is set to the number of bytes read.
    virtual base::SystemError Read(std::span<std::uint8_t> buffer, std::size_t& count) = 0;

    /// Whether the file is still what it was when it was found.
    virtual bool IsUnchanged() const = 0;
};

/// What is to be packed: one file, or a folder with everything below it. No link is followed anywhere. Those of
/// the file system are opened here; a fuzz target has one in memory.
class PackSource {
  public:
    virtual ~PackSource() = default;

    /// Opens the folder or file at `path`. Returns null and sets `report` on failure.
    static std::unique_ptr<PackSource> OfFolder(const std::string& path, CabReport& report);
    static std::unique_ptr<PackSource> OfSingleFile(const std::string& path, CabReport& report);

    /// Finds all files, in an order that depends on their names alone. Anything that a cabinet cannot hold is
    /// a failure, which `report` names. Ends with kTooManyFiles as soon as there are more than `most`.
    virtual CabReport List(std::vector<PackEntry>& entries, std::size_t most) = 0;

    /// Opens a file that List() found. Null, with `report` set, when it cannot be read or is not the same any
    /// more. May be called on several threads at once.
    virtual std::unique_ptr<PackInput> OpenFile(const PackEntry& entry, CabReport& report) const = 0;

    /// The path to show for a name below the source.
    virtual std::string PathOf(const std::string& name) const = 0;
};

} // namespace cabinet
