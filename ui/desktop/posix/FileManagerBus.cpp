#include "platform/HostPath.h"
#include "ui/desktop/SystemShell.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QUrl>

namespace ui {
namespace {

// The interface that the file managers of the free desktops share.
constexpr char kName[] = "org.freedesktop.FileManager1";
constexpr char kObject[] = "/org/freedesktop/FileManager1";
constexpr int kPatience = 3000; // milliseconds; it may have to be started

bool IsThere(const QDBusConnection& bus) {
    const QString name = QLatin1String(kName);
    return bus.isConnected() && (bus.interface()->isServiceRegistered(name) ||
                                 bus.interface()->activatableServiceNames().value().contains(name));
}

} // namespace

bool ShellShowsProperties(const std::string& path, QWidget*) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!IsThere(bus))
        return false;
    const QUrl address = QUrl::fromLocalFile(QString::fromStdString(platform::HostPathOf(path)));
    QDBusMessage call =
        QDBusMessage::createMethodCall(QLatin1String(kName), QLatin1String(kObject), QLatin1String(kName),
                                       QStringLiteral("ShowItemProperties"));
    call << QStringList(address.toString(QUrl::FullyEncoded)) << QString();
    return bus.call(call, QDBus::Block, kPatience).type() == QDBusMessage::ReplyMessage;
}

} // namespace ui
