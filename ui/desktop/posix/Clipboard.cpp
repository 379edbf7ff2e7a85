#include "ui/desktop/SystemShell.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace ui {
namespace {

class DesktopClipboard final : public ClipboardStore {
  public:
    bool Put(QMimeData* data) override {
        QClipboard* clipboard = QGuiApplication::clipboard();
        clipboard->setMimeData(data);
        return clipboard->mimeData() != nullptr &&
               clipboard->mimeData()->hasFormat(QLatin1String(kDropFilesMimeType));
    }

    const QMimeData* Data() override { return QGuiApplication::clipboard()->mimeData(); }
};

} // namespace

ClipboardStore& SystemClipboard() {
    static DesktopClipboard clipboard;
    return clipboard;
}

} // namespace ui
