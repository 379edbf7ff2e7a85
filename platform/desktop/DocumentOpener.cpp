#include "platform/desktop/DocumentOpener.h"

#include "platform/Files.h"
#include "platform/HostPath.h"

#include <QDesktopServices>
#include <QUrl>

#include <utility>

namespace platform {
namespace {

constexpr int kOpened = 42;
constexpr int kNotFound = 2;
constexpr int kNoProgram = 31;

class DesktopOpener : public DocumentOpener {
  public:
    int Open(const std::string& file, const std::string&, const std::string&) override {
        if (file.starts_with("https://") || file.starts_with("http://"))
            return QDesktopServices::openUrl(QUrl(QString::fromStdString(file))) ? kOpened : kNoProgram;
        const std::string host = HostPathOf(file);
        if (host.empty() || !GetFileAttributes(file))
            return kNotFound;
        const QUrl url = QUrl::fromLocalFile(QString::fromStdString(host));
        return QDesktopServices::openUrl(url) ? kOpened : kNoProgram;
    }
};

DesktopOpener desktopOpener;
DocumentOpener* openerInUse = &desktopOpener;

} // namespace

DocumentOpener* SetDocumentOpener(DocumentOpener* opener) {
    return std::exchange(openerInUse, opener ? opener : &desktopOpener);
}

int OpenDocument(const std::string& file, const std::string& parameters) {
    return openerInUse->Open(file, parameters, "Open");
}

int OpenDocumentLower(const std::string& file, const std::string& parameters) {
    return openerInUse->Open(file, parameters, "open");
}

} // namespace platform
