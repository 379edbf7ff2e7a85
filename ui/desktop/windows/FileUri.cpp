#include "ui/desktop/FileUri.h"

namespace ui {

QByteArray UriOfHostPath(const std::string& hostPath) {
    return QUrl::fromLocalFile(QString::fromStdString(hostPath)).toEncoded();
}

std::string HostPathOfUri(const QUrl& uri) {
    return uri.toLocalFile().toStdString();
}

} // namespace ui
