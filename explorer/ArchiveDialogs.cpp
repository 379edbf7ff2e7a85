#include "explorer/ArchiveDialogs.h"

#include "app/core/Messages.h"
#include "dialogs/frmWinExtract.h"

#include <QWidget>

namespace explorer {
namespace {

constexpr std::uint32_t kWarningTitle = 300;
constexpr std::uint32_t kCannotOpenYet = 611;

} // namespace

void ArchiveDialogs::ShowZip(const std::string& archives, QWidget* parent) {
    dialogs::frmWinExtract window(parent);
    window.ArchiveList = archives;
    window.ShowArchives();
    // When it closes right behind the folder picker, a window manager may leave the keyboard with nobody.
    if (parent != nullptr)
        parent->window()->activateWindow();
}

// The windows of the two other formats are still to come; until then the user is told.

void ArchiveDialogs::ShowCab(const std::string&, QWidget*) {
    app::ShowText(kCannotOpenYet, kWarningTitle, app::kMessageWarning);
}

void ArchiveDialogs::ShowRar(const std::string&, QWidget*) {
    app::ShowText(kCannotOpenYet, kWarningTitle, app::kMessageWarning);
}

} // namespace explorer
