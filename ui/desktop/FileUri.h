#pragma once

#include <QByteArray>
#include <QUrl>

#include <string>

namespace ui {

/// The address of a file as desktops exchange it (RFC 8089), every byte of a POSIX name as it is.
QByteArray UriOfHostPath(const std::string& hostPath);

/// The host's path of such an address.
std::string HostPathOfUri(const QUrl& uri);

} // namespace ui
