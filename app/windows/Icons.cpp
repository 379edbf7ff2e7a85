#include "app/windows/Icons.h"

#include <QFile>
#include <QHash>
#include <QString>
#include <QtGlobal>

// Outside of any namespace, as the macro asks. A static library's resources are not there by themselves.
static void InitIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace app {

namespace {

QIcon MakeIcon(const QString& name) {
    constexpr int kSizes[] = {16, 20, 24, 32, 40, 48, 64, 128, 256};
    QIcon icon;
    for (const int size : kSizes) {
        const QString file = QStringLiteral(":/icons/%1-%2.png").arg(name).arg(size);
        if (!QFile::exists(file))
            continue;
        icon.addFile(file, QSize(size, size));
        // As drawn: the tint that a selected row would give it hides it in the row's own colour.
        icon.addFile(file, QSize(size, size), QIcon::Selected);
    }
    if (icon.isNull())
        qWarning("there is no icon named %s", qUtf8Printable(name));
    return icon;
}

} // namespace

QIcon Icon(const char* name) {
    // Never destroyed: pixmaps must not outlive the application object, and statics do.
    static QHash<QString, QIcon>& icons = *new QHash<QString, QIcon>;
    if (icons.isEmpty())
        InitIconResources();
    const QString key = QString::fromLatin1(name);
    auto found = icons.find(key);
    if (found == icons.end())
        found = icons.insert(key, MakeIcon(key));
    return *found;
}

} // namespace app
