#include "ui/desktop/FontPreload.h"

#include "platform/SharedLibrary.h"

#include <locale.h>
#include <system_error>

namespace ui {
namespace {

// The library that the toolkit asks for fonts, and its reading of all configuration files, once for all.
constexpr const char* kFontLibrary = "libfontconfig.so.1";
constexpr const char* kReadConfiguration = "FcInit";

void ReadFontConfiguration() {
    // Of its own, since the application object changes the process's locale meanwhile.
    const locale_t neutral = ::newlocale(LC_ALL_MASK, "C", nullptr);
    if (neutral == nullptr)
        return;
    const locale_t before = ::uselocale(neutral);
    if (const auto library = platform::SharedLibrary::Load(kFontLibrary)) {
        if (auto* read = library->Find<int()>(kReadConfiguration))
            read();
    }
    ::uselocale(before);
    ::freelocale(neutral);
}

} // namespace

FontPreload::FontPreload() {
    try {
        reader_ = std::thread(ReadFontConfiguration);
    } catch (const std::system_error&) {
        // Without it the configuration is read where the first font is wanted.
    }
}

FontPreload::~FontPreload() {
    if (reader_.joinable())
        reader_.join();
}

} // namespace ui
