#include "explorer/ArchiveDialogs.h"

#include "app/core/Messages.h"
#include "dialogs/frmWinExtract.h"
#include "dialogs/frmextract.h"

#include <QWidget>

namespace explorer {
namespace {

constexpr std::uint32_t kWarningTitle = 300;
constexpr std::uint32_t kCannotOpenYet = 611;

/// When a window closes right behind the folder picker, a window manager may leave the keyboard with nobody.
void ComeForward(QWidget* parent) {
    if (parent != nullptr)
        parent->window()->activateWindow();
}

} // namespace

void ArchiveDialogs::ShowZip(const std::string& archives, QWidget* parent) {
    dialogs::frmWinExtract window(parent);
    window.ArchiveList = archives;
    window.ShowArchives();
    ComeForward(parent);
}

void ArchiveDialogs::ShowCab(const std::string& archives, QWidget* parent) {
    dialogs::frmextract window(parent);
    window.ArchiveList = archives;
    window.exec();
    ComeForward(parent);
}

// The window of this format is still to come; until then the user is told.
void ArchiveDialogs::ShowRar(const std::string&, QWidget*) {
    app::ShowText(kCannotOpenYet, kWarningTitle, app::kMessageWarning);
}

} // namespace explorer
