#pragma once

#include "base/SystemError.h"
#include "platform/FileReader.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace platform {

/// A new file under a temporary name, which takes its final name only when its content has been checked. When
/// this object is destroyed before that, or the program ends, nothing is left under the final name.
class StagedFile : public FileReader {
  public:
    virtual base::SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) = 0;

    /// Brings all written bytes onto the medium, so that reading them afterwards reads from the medium, where
    /// the system allows that.
    virtual base::SystemError Flush() = 0;

    /// Gives the file its name and replaces another file of that name.
    virtual base::SystemError Commit() = 0;

    /// Starts the file `name` in `folder`. Deletes files that programs left there when they were killed.
    /// Returns null and sets `error` on failure.
    static std::unique_ptr<StagedFile> Create(const std::string& folder, const std::string& name,
                                              base::SystemError& error);
};

} // namespace platform
