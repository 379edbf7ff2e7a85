#include "ui/common/Icons.h"

#include "ui/common/DrawnIcon.h"

#include <QHash>
#include <QString>
#include <QtGlobal>

// Outside of any namespace, as the macro asks. A static library's resources are not there by themselves.
static void InitIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace ui {

namespace {

QIcon MakeIcon(const QString& name, const QString& selected) {
    const QIcon icon(new DrawnIcon(name, selected));
    if (icon.isNull())
        qWarning("there is no icon named %s", qUtf8Printable(name));
    return icon;
}

} // namespace

QIcon Icon(const char* name, const char* selected) {
    // Never destroyed: pixmaps must not outlive the application object, and statics do.
    static QHash<QString, QIcon>& icons = *new QHash<QString, QIcon>;
    if (icons.isEmpty())
        InitIconResources();
    const QString normal = QString::fromLatin1(name);
    const QString other = QString::fromLatin1(selected);
    const QString key = normal + QLatin1Char('/') + other;
    auto found = icons.find(key);
    if (found == icons.end())
        found = icons.insert(key, MakeIcon(normal, other));
    return *found;
}

} // namespace ui
