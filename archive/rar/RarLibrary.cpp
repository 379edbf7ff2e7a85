#include "archive/rar/RarLibrary.h"

#include "archive/rar/RarAdaptor.h"
#include "archive/rar/RarBinding.h"
#include "platform/HostPath.h"
#include "platform/Process.h"
#include "platform/SharedLibrary.h"

#include <cstdlib>
#include <optional>
#include <utility>

namespace rar {

namespace {

/// `setting` is the value of PELLARION_RAR_LIBRARY, where it is set.
std::unique_ptr<RarLibrary> Choose(const std::optional<std::string>& setting) {
    const std::string name = platform::SharedLibraryName("unrar");
    std::unique_ptr<RarLibrary> library;
    if (!setting)
        library = BindRarLibrary(platform::HostPathOf(platform::ProgramFolder() + '\\' + name));
    if (!library && !(setting && setting->empty()))
        library = BindRarLibrary(setting.value_or(name));
    return library ? std::move(library) : std::make_unique<RarAdaptor>();
}

} // namespace

RarLibrary& TheRarLibrary() {
    static std::optional<std::string> chosenBy;
    static std::unique_ptr<RarLibrary> library;
    const char* value = std::getenv("PELLARION_RAR_LIBRARY");
    std::optional<std::string> setting;
    if (value)
        setting = value;
    if (!library || setting != chosenBy) {
        library = Choose(setting);
        chosenBy = std::move(setting);
    }
    return *library;
}

} // namespace rar
