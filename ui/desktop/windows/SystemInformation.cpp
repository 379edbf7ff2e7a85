#include "ui/desktop/SystemInformation.h"

#include <QFileInfo>
#include <QProcess>
#include <QSettings>

namespace ui {
namespace {

QString Value(const char* key, const char* name) {
    const QSettings settings(QLatin1String("HKEY_LOCAL_MACHINE\\") + QLatin1String(key),
                             QSettings::NativeFormat);
    return settings.value(QLatin1String(name)).toString();
}

} // namespace

bool StartSystemInformation() {
    const QString program = Value("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH");
    if (!program.isEmpty())
        return QProcess::startDetached(program, {});
    const QString folder = Value("SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO");
    const QString file = folder + QLatin1String("\\MSINFO32.EXE");
    return !folder.isEmpty() && QFileInfo::exists(file) && QProcess::startDetached(file, {});
}

} // namespace ui
