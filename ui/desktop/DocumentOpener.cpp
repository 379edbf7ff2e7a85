#include "ui/desktop/DocumentOpener.h"

#include "ui/desktop/SystemShell.h"

#include <utility>

namespace ui {
namespace {

class DesktopOpener : public DocumentOpener {
  public:
    int Open(const std::string& file, const std::string& parameters, const std::string& verb) override {
        return ShellOpen(file, parameters, verb);
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

} // namespace ui
