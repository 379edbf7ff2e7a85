#pragma once

#include "base/SystemError.h"
#include "platform/FileReader.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace platform {

/// A new file under a temporary name, which takes its own name only when its content has been checked.
/// Destroyed before that, or with the whole program, it leaves nothing under its own name.
class StagedFile : public FileReader {
  public:
    virtual base::SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) = 0;

    /// Brings all that was written onto the medium, so that what is read afterwards comes from there where
    /// the system allows it.
    virtual base::SystemError Flush() = 0;

    /// Gives the file its name, in place of another file of that name.
    virtual base::SystemError Commit() = 0;

    /// Starts the file `name` in `folder`, and takes away what programs that were killed have left of theirs
    /// there. Returns null and sets `error` on failure.
    static std::unique_ptr<StagedFile> Create(const std::string& folder, const std::string& name,
                                              base::SystemError& error);
};

} // namespace platform
