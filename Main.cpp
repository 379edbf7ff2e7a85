#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "app/Startup.h"
#include "ui/archive/OpenedEntries.h"
#include "ui/common/Appearance.h"
#include "ui/common/Icons.h"
#include "ui/common/MessageBoxes.h"
#include "ui/common/SplashWindow.h"
#include "ui/desktop/FontPreload.h"
#include "ui/explorer/window/MainWindow.h"

#include <QApplication>

#include <exception>
#include <optional>

namespace {

/// Start-up and the life of the windows. Returns when the main window has been unloaded.
int Run(QApplication& application) {
    if (app::RunStartup() != app::StartupOutcome::kRun) {
        app::StartupShutdown();
        return 0;
    }
    // Otherwise the direction stays that of the command line's -reverse, or left to right.
    if (ui::DirectionOf(app::Application().LanguageId) == Qt::RightToLeft)
        QApplication::setLayoutDirection(Qt::RightToLeft);
    ui::EmptyOpenFolder(); // of a run that was cut short
    {
        app::PrepareSkin();
        ui::frmprogress splash;
        splash.ShowNow();
    }
    ui::frmtarget window;
    QObject::connect(&window, &ui::frmtarget::Unloaded, &application, &QApplication::quit);
    window.Load();
    window.show();
    const int result = QApplication::exec();
    ui::EmptyOpenFolder();
    return result;
}

} // namespace

int main(int argc, char** argv) {
    std::optional<ui::FontPreload> fonts(std::in_place);
    QApplication application(argc, argv);
    fonts.reset();
    QApplication::setApplicationName(QStringLiteral("pellarion"));
    QApplication::setQuitOnLastWindowClosed(
        false); // a message may come and go before the main window is shown
    ui::SetUpAppearance();
    QApplication::setWindowIcon(ui::Icon("pellarion"));
    ui::MessageBoxes messages;
    app::SetMessages(&messages);
    int result = 0;
    try {
        result = Run(application);
    } catch (const std::exception&) {
        app::StartupShutdown();
    }
    app::SetMessages(nullptr);
    return result;
}
