#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// Whether another copy of this program is already running for the same user. The first call marks this
/// process as the running copy until it ends, in whatever way.
bool PreviousInstanceRuns();

/// Whether the user is an administrator of the computer.
bool IsNTAdmin();

/// The version of the operating system.
struct VersionRecord {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t platformId = 0; ///< 2 = the NT family, 0 = another system
};

VersionRecord GetVersionRecord();

/// The folder that holds the program file, without a last backslash, in this program's form of a path.
std::string ProgramFolder();

/// A string of the program's own string table: 998 the product's display name, 1000 the address of the
/// support page; empty for any other id.
std::string ProgramString(std::uint32_t id);

} // namespace platform
