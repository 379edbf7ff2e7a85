#include "app/Texts.h"

#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "base/Letters.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "platform/ResourceLibrary.h"

#include <algorithm>
#include <exception>
#include <memory>

namespace app {

namespace {

/// One of the two text libraries: where it comes from, and its loaded copy.
struct TextLibrary {
    std::string_view sourceName;
    std::string_view copyName;
    std::unique_ptr<platform::ResourceLibrary> loaded;

    std::string SourcePath() const {
        return platform::ProgramFolder() + "\\" + std::string(sourceName) + Application().LanguageId + ".dll";
    }

    std::string CopyPath() const {
        return std::string(kTempFolder) + std::string(copyName) + Application().LanguageId + ".dll";
    }
};

TextLibrary languageLibrary{.sourceName = "langfile", .copyName = "ox_langfile", .loaded = nullptr};
TextLibrary extraTextLibrary{.sourceName = "lic", .copyName = "oxlic_", .loaded = nullptr};

base::SystemError EnsureFolder(std::string_view path) {
    const std::string folder(path);
    return platform::FolderExists(folder) ? base::SystemError{} : platform::CreateFolder(folder);
}

// The library is loaded from a copy on the fixed drive, so that nothing stays open on the removable one.
base::SystemError LoadCopy(TextLibrary& library) {
    if (const auto error = EnsureFolder(kWorkFolder))
        return error;
    if (const auto error = EnsureFolder(kTempFolder))
        return error;
    const std::string copy = library.CopyPath();
    if (platform::FileExists(copy))
        if (const auto error = platform::DeleteFile(copy))
            return error;
    if (const auto error = platform::CopyFile(library.SourcePath(), copy))
        return error;
    base::SystemError error;
    library.loaded = platform::ResourceLibrary::Load(copy, error);
    return error;
}

void Load(TextLibrary& library) {
    if (const auto error = LoadCopy(library))
        ShowErrorUnderProgramTitle(error.Description());
}

void Free(TextLibrary& library) noexcept {
    library.loaded.reset();
    try {
        const std::string copy = library.CopyPath();
        if (platform::FileExists(copy))
            static_cast<void>(platform::DeleteFile(copy));
    } catch (const std::exception&) {
        // A leftover copy is replaced at the next start.
    }
}

std::string TextFrom(const TextLibrary& library, std::uint32_t id) {
    constexpr std::size_t kMostAnsiBytes = 382;
    if (!library.loaded)
        return {};
    try {
        const std::string text = library.loaded->LoadString(id);
        std::string ansi = platform::Utf8ToAnsi(platform::CutToAnsiBytes(text, kMostAnsiBytes));
        ansi.resize(std::min(ansi.find('\0'), ansi.size()));
        return platform::AnsiToUtf8(ansi);
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

void LoadLanguageLibrary() {
    Load(languageLibrary);
}

void LoadExtraTextLibrary() {
    Load(extraTextLibrary);
}

void FreeLanguageLibrary() {
    Free(languageLibrary);
}

void FreeExtraTextLibrary() {
    Free(extraTextLibrary);
}

std::string LoadText(std::uint32_t id) {
    return TextFrom(languageLibrary, id);
}

std::string LoadExtraText(std::uint32_t id) {
    return TextFrom(extraTextLibrary, id);
}

std::string WithUserName(std::string_view text) {
    return base::ReplaceNoCase(text, "%username", Application().OwnerName);
}

std::string WithProductName(std::string_view text) {
    return base::ReplaceNoCase(text, "%s", ProgramTitle());
}

} // namespace app
