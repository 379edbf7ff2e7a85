#include "ui/desktop/ShellInfo.h"

#include "base/Letters.h"
#include "ui/desktop/SystemShell.h"

#include <QApplication>
#include <QMimeDatabase>
#include <QStyle>

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ui {
namespace {

IconSource iconSource = nullptr;

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
    return base::ToLower(path.substr(dot + 1));
}

// Keys of the icons that do not go by extension; no extension holds such a character.
constexpr char kComputerKey[] = "\\:C";
constexpr char kDriveKey[] = "\\:";
constexpr char kFolderKey[] = "\\";

/// C: is the computer itself, any other root a drive.
std::string FolderKey(std::string_view path) {
    if (path.size() < 2 || path.size() > 3 || path[1] != ':')
        return kFolderKey;
    return path[0] == 'C' || path[0] == 'c' ? kComputerKey : kDriveKey;
}

QIcon Drawn(const char* name, QStyle::StandardPixmap standIn) {
    return iconSource ? iconSource(name) : QApplication::style()->standardIcon(standIn);
}

/// The program's icons for extensions that the whole program shows alike.
const char* OwnIconName(std::string_view extension) {
    constexpr std::array<std::pair<std::string_view, const char*>, 4> kOwn{
        {{"zip", "archive-zip"}, {"cab", "archive-cab"}, {"rar", "archive-rar"}, {"enc", "encrypted"}}};
    const auto found =
        std::find_if(kOwn.begin(), kOwn.end(), [&](const auto& own) { return own.first == extension; });
    return found == kOwn.end() ? nullptr : found->second;
}

/// The program's icon for a kind of file: by the generic name that the MIME database has for it.
const char* KindIconName(const QMimeType& type) {
    constexpr std::array<std::pair<const char*, const char*>, 8> kKinds{
        {{"image-", "image"},
         {"audio-", "audio"},
         {"video-", "video"},
         {"text-x-generic", "text"},
         {"text-x-script", "code"},
         {"text-", "text"},
         {"x-office-", "document"},
         {"application-x-executable", "executable"}}};
    const QString generic = type.genericIconName();
    for (const auto& [start, name] : kKinds)
        if (generic.startsWith(QLatin1String(start)))
            return name;
    return "file";
}

QMimeType TypeOf(const std::string& extension) {
    return QMimeDatabase().mimeTypeForFile(QStringLiteral("x.") + QString::fromStdString(extension),
                                           QMimeDatabase::MatchExtension);
}

QIcon IconOfExtension(const std::string& extension) {
    if (const char* own = OwnIconName(extension))
        return Drawn(own, QStyle::SP_FileIcon);
    if (const QIcon icon = ShellIcon(extension); !icon.isNull())
        return icon;
    const QMimeType type = TypeOf(extension);
    if (extension.empty() || type.isDefault())
        return Drawn("file", QStyle::SP_FileIcon);
    return Drawn(KindIconName(type), QStyle::SP_FileIcon);
}

} // namespace

QIcon FileIcon(const std::string& path, bool isFolder) {
    std::string key = isFolder ? FolderKey(path) : ExtensionOf(path);
    const auto known = FileIcons().find(key);
    if (known != FileIcons().end())
        return known->second;
    QIcon icon;
    if (key == kComputerKey)
        icon = Drawn("computer", QStyle::SP_ComputerIcon);
    else if (key == kDriveKey)
        icon = Drawn("drive-removable", QStyle::SP_DriveHDIcon);
    else if (key == kFolderKey)
        icon = Drawn("folder", QStyle::SP_DirIcon);
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
        name = ShellTypeName(key);
        if (name.empty())
            name = base::ToUpper(key) + " File";
    }
    return names.emplace(std::move(key), std::move(name)).first->second;
}

void SetIconSource(IconSource source) {
    iconSource = source;
    FileIcons().clear();
}

} // namespace ui
