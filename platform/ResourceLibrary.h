#pragma once

#include "base/SystemError.h"

#include <cstdint>
#include <memory>
#include <string>

namespace platform {

/// A loaded resource-only library (a PE image with a string table and no code).
class ResourceLibrary {
  public:
    virtual ~ResourceLibrary() = default;

    /// The string with this id as UTF-8, or empty when the library has none or its table is damaged.
    virtual std::string LoadString(std::uint32_t id) const = 0;

    /// Loads the library at `path`. Returns null and sets `error` when the file cannot be read or is no
    /// such library. The file is not held open where the system allows it.
    static std::unique_ptr<ResourceLibrary> Load(const std::string& path, base::SystemError& error);
};

} // namespace platform
