#include "platform/SharedLibrary.h"

#include "platform/CodePage.h"
#include "platform/HostPath.h"
#include "platform/windows/Wide.h"
#include "platform/windows/Windows.h"

namespace platform {
namespace {

class HostLibrary final : public SharedLibrary {
  public:
    explicit HostLibrary(HMODULE module) : module_(module) {}

    ~HostLibrary() override { ::FreeLibrary(module_); }

    HostLibrary(const HostLibrary&) = delete;
    HostLibrary& operator=(const HostLibrary&) = delete;

  private:
    void (*Address(const char* name) const)() override {
        return reinterpret_cast<void (*)()>(::GetProcAddress(module_, name));
    }

    HMODULE module_;
};

} // namespace

std::unique_ptr<SharedLibrary> SharedLibrary::Load(const std::string& file) {
    // Never from the current folder, which anybody may have chosen.
    const HMODULE module =
        ::LoadLibraryExW(WideOf(file).c_str(), nullptr,
                         file.find_first_of("\\/") == file.npos ? LOAD_LIBRARY_SEARCH_SYSTEM32
                                                                : LOAD_WITH_ALTERED_SEARCH_PATH);
    return module ? std::make_unique<HostLibrary>(module) : nullptr;
}

std::string LibraryPathOf(const std::string& path) {
    return Utf8ToAnsi(HostPathOf(path));
}

std::string SharedLibraryName(const std::string& base) {
    return base + ".dll";
}

} // namespace platform
