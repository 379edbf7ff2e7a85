#include "platform/desktop/ShellInfo.h"

#include "platform/Letters.h"

#include <QApplication>
#include <QMimeDatabase>
#include <QStyle>

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

namespace platform {
namespace {

IconSource fallbackIcons = nullptr;

// Keyed by the extension in lower case, without its dot.
std::unordered_map<std::string, QIcon>& FileIcons() {
    static std::unordered_map<std::string, QIcon> icons;
    return icons;
}

// Text after the last dot of the last component, in lower case; empty when there is none.
std::string ExtensionOf(std::string_view path) {
    const std::size_t dot = path.find_last_of(".\\/");
    if (dot == std::string_view::npos || path[dot] != '.')
        return {};
    return ToLower(path.substr(dot + 1));
}

bool IsDriveRoot(std::string_view path) {
    return path.size() <= 3 && path.size() >= 2 && path[1] == ':';
}

bool IsArchive(std::string_view extension) {
    constexpr std::array<std::string_view, 3> kArchives{"zip", "cab", "rar"};
    return std::find(kArchives.begin(), kArchives.end(), extension) != kArchives.end();
}

QIcon Drawn(const char* name, QStyle::StandardPixmap standIn) {
    if (fallbackIcons) {
        const QIcon icon = fallbackIcons(name);
        if (!icon.isNull())
            return icon;
    }
    return QApplication::style()->standardIcon(standIn);
}

QMimeType TypeOf(const std::string& extension) {
    return QMimeDatabase().mimeTypeForFile(QStringLiteral("x.") + QString::fromStdString(extension),
                                           QMimeDatabase::MatchExtension);
}

QIcon IconOfExtension(const std::string& extension) {
    if (!extension.empty()) {
        const QMimeType type = TypeOf(extension);
        if (!type.isDefault()) {
            QIcon icon = QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName()));
            if (!icon.isNull())
                return icon;
        }
    }
    return Drawn(IsArchive(extension) ? "archive" : "file", QStyle::SP_FileIcon);
}

} // namespace

QIcon FileIcon(const std::string& path, bool isFolder) {
    // Neither of the two keys can be an extension.
    std::string key = !isFolder ? ExtensionOf(path) : IsDriveRoot(path) ? ":" : "\\";
    const auto known = FileIcons().find(key);
    if (known != FileIcons().end())
        return known->second;
    QIcon icon;
    if (key == ":")
        icon =
            QIcon::fromTheme(QStringLiteral("drive-removable-media"), Drawn("drive", QStyle::SP_DriveHDIcon));
    else if (key == "\\")
        icon = QIcon::fromTheme(QStringLiteral("folder"), Drawn("folder", QStyle::SP_DirIcon));
    else
        icon = IconOfExtension(key);
    return FileIcons().emplace(std::move(key), std::move(icon)).first->second;
}

std::string FileTypeName(const std::string& extension) {
    static std::unordered_map<std::string, std::string> names;
    std::string key = ExtensionOf(extension);
    const auto known = names.find(key);
    if (known != names.end())
        return known->second;
    std::string name = "File";
    if (!key.empty()) {
        const QMimeType type = TypeOf(key);
        QString comment = type.isDefault() ? QString() : type.comment();
        if (!comment.isEmpty())
            name = comment.replace(0, 1, comment.at(0).toUpper()).toStdString();
        else
            name = ToUpper(key) + " File";
    }
    return names.emplace(std::move(key), std::move(name)).first->second;
}

void SetFallbackIcons(IconSource source) {
    fallbackIcons = source;
    FileIcons().clear();
}

} // namespace platform
