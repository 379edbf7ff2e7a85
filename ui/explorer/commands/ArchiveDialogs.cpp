#include "ui/explorer/commands/ArchiveDialogs.h"

#include "ui/archive/CabWindow.h"
#include "ui/archive/RarWindow.h"
#include "ui/archive/ZipWindow.h"

#include <QWidget>

namespace ui {
namespace {

/// When a window closes right behind the folder picker, a window manager may leave the keyboard with nobody.
void ComeForward(QWidget* parent) {
    if (parent != nullptr)
        parent->window()->activateWindow();
}

} // namespace

void ArchiveDialogs::ShowZip(const std::string& archives, QWidget* parent) {
    frmWinExtract window(parent);
    window.ArchiveList = archives;
    window.ShowArchives();
    ComeForward(parent);
}

void ArchiveDialogs::ShowCab(const std::string& archives, QWidget* parent) {
    frmextract window(parent);
    window.ArchiveList = archives;
    window.exec();
    ComeForward(parent);
}

void ArchiveDialogs::ShowRar(const std::string& archives, QWidget* parent) {
    frmRarExtract window(parent);
    window.ArchiveList = archives;
    window.exec();
    ComeForward(parent);
    // Once the command that waits for this window has ended.
    if (window.EndsProgram() && parent != nullptr)
        QMetaObject::invokeMethod(parent->window(), &QWidget::close, Qt::QueuedConnection);
}

} // namespace ui
