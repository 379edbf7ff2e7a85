#include "platform/SharedLibrary.h"

#include "platform/HostPath.h"

#include <dlfcn.h>

namespace platform {
namespace {

class HostLibrary final : public SharedLibrary {
  public:
    explicit HostLibrary(void* handle) : handle_(handle) {}

    ~HostLibrary() override { ::dlclose(handle_); }

    HostLibrary(const HostLibrary&) = delete;
    HostLibrary& operator=(const HostLibrary&) = delete;

  private:
    void (*Address(const char* name) const)() override {
        return reinterpret_cast<void (*)()>(::dlsym(handle_, name));
    }

    void* handle_;
};

} // namespace

std::unique_ptr<SharedLibrary> SharedLibrary::Load(const std::string& file) {
    // No name at all would be the program itself.
    void* handle = file.empty() ? nullptr : ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    return handle ? std::make_unique<HostLibrary>(handle) : nullptr;
}

std::string LibraryPathOf(const std::string& path) {
    return HostPathOf(path);
}

std::string SharedLibraryName(const std::string& base) {
    return "lib" + base + ".so";
}

} // namespace platform
