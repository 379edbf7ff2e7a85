#include "platform/ResourceLibrary.h"

#include "platform/windows/Wide.h"
#include "platform/windows/files/Handle.h"
#include "platform/windows/paths/WidePath.h"

namespace platform {
namespace {

class LoadedLibrary final : public ResourceLibrary {
  public:
    explicit LoadedLibrary(HMODULE module) : module_(module) {}

    ~LoadedLibrary() override { ::FreeLibrary(module_); }

    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    std::string LoadString(std::uint32_t id) const override {
        // With a buffer size of 0 the call returns a pointer to the text inside the library.
        const wchar_t* text = nullptr;
        const int length = ::LoadStringW(module_, id, reinterpret_cast<wchar_t*>(&text), 0);
        return length > 0 ? Utf8OfWide({text, static_cast<std::size_t>(length)}) : "";
    }

  private:
    HMODULE module_;
};

} // namespace

std::unique_ptr<ResourceLibrary> ResourceLibrary::Load(const std::string& path, base::SystemError& error) {
    const std::wstring host = WidePathOf(path);
    error = {base::kErrorPathNotFound};
    if (host.empty())
        return nullptr;
    const HMODULE module =
        ::LoadLibraryExW(host.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    if (module == nullptr) {
        error = LastError();
        return nullptr;
    }
    auto library = std::make_unique<LoadedLibrary>(module);
    const auto hasStrings = [](HMODULE, LPCWSTR, LPWSTR, LONG_PTR found) -> BOOL {
        *reinterpret_cast<bool*>(found) = true;
        return FALSE;
    };
    bool found = false;
    ::EnumResourceNamesW(module, reinterpret_cast<LPCWSTR>(RT_STRING), hasStrings,
                         reinterpret_cast<LONG_PTR>(&found));
    error = found ? base::SystemError{} : base::SystemError{base::kErrorBadExeFormat};
    if (!found)
        return nullptr;
    return library;
}

} // namespace platform
