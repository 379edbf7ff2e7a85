#pragma once

#include "archive/cabinet/CabCompress.h"
#include "platform/FileIdentity.h"
#include "platform/OpenFolder.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
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
    PackInput(platform::OpenedFile file, const platform::FileIdentity& identity)
        : file_(std::move(file)), identity_(identity) {}

    /// Reads until `buffer` is full or the file ends. `count` is set to the number of bytes read.
    base::SystemError Read(std::span<std::uint8_t> buffer, std::size_t& count) {
        return file_.Read(buffer, count);
    }

    /// Whether the file is still what it was when it was found.
    bool IsUnchanged() const;

  private:
    platform::OpenedFile file_;
    platform::FileIdentity identity_;
};

/// What is to be packed: one file, or a folder with everything below it. No link is followed anywhere.
class PackSource {
  public:
    /// `path` is what stands before all names when they are shown; `single` is the name of the one file, or
    /// empty for the whole folder.
    PackSource(platform::OpenFolder folder, std::string path, platform::EntryName single)
        : folder_(std::move(folder)), path_(std::move(path)), single_(std::move(single)) {}

    /// Opens the folder or file at `path`. Returns null and sets `report` on failure.
    static std::unique_ptr<PackSource> OfFolder(const std::string& path, CabReport& report);
    static std::unique_ptr<PackSource> OfSingleFile(const std::string& path, CabReport& report);

    /// Finds all files, in an order that depends on their names alone. Anything that a cabinet cannot hold is
    /// a failure, which `report` names. Ends with kTooManyFiles as soon as there are more than `most`.
    CabReport List(std::vector<PackEntry>& entries, std::size_t most);

    /// Opens a file that List() found. Null, with `report` set, when it cannot be read or is not the same any
    /// more. May be called on several threads at once.
    std::unique_ptr<PackInput> OpenFile(const PackEntry& entry, CabReport& report) const;

    /// The path to show for a name below the source.
    std::string PathOf(const std::string& name) const { return path_ + name; }

  private:
    struct Walk;

    bool WalkFolder(const platform::OpenFolder& folder, const std::string& prefix, Walk& walk) const;
    bool Add(const platform::OpenFolder& folder, const std::string& prefix,
             const platform::EntryName& entryName, Walk& walk,
             std::vector<platform::EntryName>& folders) const;
    bool Fail(Walk& walk, CabFailure failure, const std::string& name, base::SystemError error = {}) const;

    platform::OpenFolder folder_;
    std::string path_;
    platform::EntryName single_;
};

} // namespace cabinet
