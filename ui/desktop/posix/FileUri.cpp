#include "ui/desktop/FileUri.h"

namespace ui {

QByteArray UriOfHostPath(const std::string& hostPath) {
    return "file://" + QByteArray::fromStdString(hostPath).toPercentEncoding("/");
}

std::string HostPathOfUri(const QUrl& uri) {
    return QByteArray::fromPercentEncoding(uri.path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

} // namespace ui
