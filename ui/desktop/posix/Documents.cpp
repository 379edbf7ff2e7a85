#include "platform/Files.h"
#include "platform/HostPath.h"
#include "ui/desktop/SystemShell.h"

#include <QDesktopServices>
#include <QMimeDatabase>
#include <QUrl>

namespace ui {
namespace {

constexpr int kOpened = 42;
constexpr int kNotFound = 2;
constexpr int kNoProgram = 31;

QMimeType TypeOf(const std::string& extension) {
    return QMimeDatabase().mimeTypeForFile(QStringLiteral("x.") + QString::fromStdString(extension),
                                           QMimeDatabase::MatchExtension);
}

} // namespace

ShellAnswer AskShell(ShellWork, const std::string&, const std::string&) {
    return ShellAnswer::kNotTaken; // the free desktops share no service for it
}

int ShellOpen(const std::string& file, const std::string&, const std::string&) {
    if (file.starts_with("https://") || file.starts_with("http://"))
        return QDesktopServices::openUrl(QUrl(QString::fromStdString(file))) ? kOpened : kNoProgram;
    const std::string host = platform::HostPathOf(file);
    if (host.empty() || !platform::GetFileAttributes(file))
        return kNotFound;
    const QUrl url = QUrl::fromLocalFile(QString::fromStdString(host));
    return QDesktopServices::openUrl(url) ? kOpened : kNoProgram;
}

std::optional<std::string> ShellPickFolder(const std::string&, const std::string&, QWidget*) {
    return std::nullopt; // it would not know this program's drives
}

QIcon ShellIcon(const std::string& extension) {
    const QMimeType type = TypeOf(extension);
    if (extension.empty() || type.isDefault())
        return {};
    return QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName()));
}

std::string ShellTypeName(const std::string& extension) {
    const QMimeType type = TypeOf(extension);
    QString comment = type.isDefault() ? QString() : type.comment();
    if (!comment.isEmpty())
        comment.replace(0, 1, comment.at(0).toUpper());
    return comment.toStdString();
}

} // namespace ui
