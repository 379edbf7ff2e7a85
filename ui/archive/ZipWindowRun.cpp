// The run of the ZIP window through a list of archives.

#include "app/Messages.h"
#include "ui/archive/ZipWindow.h"

#include <QEventLoop>
#include <QTimer>

#include <exception>
#include <memory>

namespace ui {
namespace {

constexpr int kLastWaitMilliseconds = 500;

/// Lets the window behind repaint and come forward. It takes no input yet: its handler still runs.
void WaitAfterLast() {
    QEventLoop loop;
    QTimer::singleShot(kLastWaitMilliseconds, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

void frmWinExtract::ShowArchives() {
    const std::vector<std::string> archives = SplitArchiveList(ArchiveList);
    try {
        std::unique_ptr<frmWinExtract> fresh;
        frmWinExtract* window = this;
        for (std::size_t k = 0; k < archives.size(); ++k) {
            if (k > 0) {
                auto next = std::make_unique<frmWinExtract>(parentWidget());
                // Where the user put the one before.
                next->setGeometry(window->geometry());
                fresh = std::move(next);
                window = fresh.get();
            }
            window->CurrentArchive = archives[k];
            window->ListArchive();
            window->ShowNumber(k + 1, archives.size());
            window->exec();
        }
    } catch (const std::exception& error) {
        app::ShowError(error.what());
    }
    WaitAfterLast();
}

} // namespace ui
