#include "SystemShell.h"
#include "platform/Files.h"
#include "platform/HostPath.h"
#include "platform/desktop/FolderPickerDialog.h"

#include <QDesktopServices>
#include <QMimeDatabase>
#include <QUrl>

namespace platform {
namespace {

constexpr int kOpened = 42;
constexpr int kNotFound = 2;
constexpr int kNoProgram = 31;

QMimeType TypeOf(const std::string& extension) {
    return QMimeDatabase().mimeTypeForFile(QStringLiteral("x.") + QString::fromStdString(extension),
                                           QMimeDatabase::MatchExtension);
}

} // namespace

std::optional<bool> AskShell(ShellWork, const std::string&, const std::string&) {
    return std::nullopt; // the free desktops share no service for it
}

int ShellOpen(const std::string& file, const std::string&, const std::string&) {
    if (file.starts_with("https://") || file.starts_with("http://"))
        return QDesktopServices::openUrl(QUrl(QString::fromStdString(file))) ? kOpened : kNoProgram;
    const std::string host = HostPathOf(file);
    if (host.empty() || !GetFileAttributes(file))
        return kNotFound;
    const QUrl url = QUrl::fromLocalFile(QString::fromStdString(host));
    return QDesktopServices::openUrl(url) ? kOpened : kNoProgram;
}

std::string ShellPickFolder(const std::string& prompt, const std::string& start, QWidget* parent) {
    FolderPickerDialog dialog(prompt, start, parent);
    return dialog.exec() == QDialog::Accepted ? dialog.Folder() : std::string();
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

} // namespace platform
