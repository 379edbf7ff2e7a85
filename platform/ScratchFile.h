#pragma once

#include "base/SystemError.h"

#include <cstdint>
#include <memory>
#include <span>

namespace platform {

/// A file without a name, for data that does not fit into memory. It is deleted with this object, and also
/// when the program ends in any other way.
class ScratchFile {
  public:
    virtual ~ScratchFile() = default;

    /// Writes all of `data` at `offset`.
    virtual base::SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) = 0;

    /// Fills all of `buffer` from `offset`.
    virtual base::SystemError ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) = 0;

    /// Makes one on a fixed drive. Returns null when there is no place for it.
    static std::unique_ptr<ScratchFile> Create();
};

} // namespace platform
