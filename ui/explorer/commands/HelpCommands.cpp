#include "ui/explorer/commands/HelpCommands.h"

#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "base/SystemError.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "ui/common/AboutWindow.h"
#include "ui/common/BusyCursor.h"
#include "ui/desktop/DocumentOpener.h"

#include <QTimer>

#include <memory>

namespace ui {

namespace {

constexpr std::uint32_t kSupportAddress = 1000; // of the program's own strings
constexpr int kLastFailure = 32;

/// How long a started program is given before the pointer stops telling that something is going on.
constexpr int kStartTime = 1000;

void Warn(std::uint32_t id, const std::string& text) {
    app::Messages().Show({id, text, app::kMessageWarning, app::LoadText(IDS_WARNING_TITLE)});
}

} // namespace

void HelpCommands::What() {
    const std::string document =
        platform::ProgramFolder() + "\\what_" + app::Application().LanguageId + ".pdf";
    if (platform::FileExists(document))
        Open(document);
    else
        Warn(IDS_EXTRA_NO_HELP_DOCUMENT, app::LoadExtraText(IDS_EXTRA_NO_HELP_DOCUMENT));
}

void HelpCommands::Online() {
    const std::string address = platform::ProgramString(kSupportAddress);
    if (address.find_first_not_of(' ') == std::string::npos)
        Warn(IDS_EXTRA_NO_SUPPORT_PAGE, app::LoadExtraText(IDS_EXTRA_NO_SUPPORT_PAGE));
    else
        Open(address);
}

void HelpCommands::Open(const std::string& document) {
    auto busy = std::make_shared<BusyCursor>();
    const int result = OpenDocumentLower(document);
    if (result > kLastFailure) {
        // The window owns the wait, so that the pointer is given back before the program ends.
        auto* wait = new QTimer(window_);
        wait->setSingleShot(true);
        QObject::connect(wait, &QTimer::timeout, wait, [busy, wait] { wait->deleteLater(); });
        wait->start(kStartTime);
        return;
    }
    busy.reset();
    app::ShowError(base::SystemError{static_cast<std::uint32_t>(result)}.Description());
}

void HelpCommands::About() {
    frmAbout about(window_);
    about.ShowNow();
}

} // namespace ui
