#pragma once

#include <memory>
#include <string>

namespace platform {

/// A shared library of the operating system's format, loaded while the program runs.
class SharedLibrary {
  public:
    virtual ~SharedLibrary() = default;

    /// The function of that name; null when the library has none. Good for the library's life.
    template <typename Function>
    Function* Find(const char* name) const {
        return reinterpret_cast<Function*>(Address(name));
    }

    /// Loads a library by its host path, or, without a folder in front, from where the system keeps
    /// libraries. Null when it is not there or cannot be loaded.
    static std::unique_ptr<SharedLibrary> Load(const std::string& file);

  private:
    using AnyFunction = void();

    virtual AnyFunction* Address(const char* name) const = 0;
};

/// Converts one of this program's paths to the form that the RAR library takes: the host's path, in the
/// system's code page.
std::string LibraryPathOf(const std::string& path);

/// The name that a library of this base name has on this system.
std::string SharedLibraryName(const std::string& base);

} // namespace platform
