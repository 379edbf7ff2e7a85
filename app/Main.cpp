#include "app/core/Startup.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("pellarion"));

    if (app::RunStartup() != app::StartupOutcome::kRun) {
        app::StartupShutdown();
        return 0;
    }
    app::StartupShutdown();
    return 0;
}
