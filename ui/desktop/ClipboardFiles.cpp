#include "ui/desktop/ClipboardFiles.h"

#include "platform/DropFiles.h"
#include "platform/HostPath.h"
#include "ui/desktop/FileUri.h"
#include "ui/desktop/SystemShell.h"

#include <QMimeData>

#include <utility>

namespace ui {
namespace {

// What the file managers of the desktops exchange.
constexpr char kUriList[] = "text/uri-list";
constexpr char kGnomeList[] = "x-special/gnome-copied-files";
constexpr char kKdeCut[] = "application/x-kde-cutselection";

ClipboardStore* storeInUse = nullptr; ///< null: the system's

ClipboardStore& Store() {
    return storeInUse == nullptr ? SystemClipboard() : *storeInUse;
}

QByteArray Joined(const std::vector<std::string>& paths, const QByteArray& before, const QByteArray& after) {
    QByteArray text;
    for (const std::string& path : paths)
        text += before + UriOfHostPath(platform::HostPathOf(path)) + after;
    return text;
}

std::vector<std::string> PathsOf(const QByteArray& uris) {
    std::vector<std::string> paths;
    for (const QByteArray& line : uris.split('\n')) {
        const QUrl url = QUrl::fromEncoded(line.trimmed());
        if (!url.isLocalFile())
            continue;
        std::string path = platform::PathFromHost(HostPathOfUri(url));
        if (!path.empty())
            paths.push_back(std::move(path));
    }
    return paths;
}

bool Has(const QMimeData& data, const char* format) {
    return data.hasFormat(QLatin1String(format));
}

} // namespace

ClipboardStore* SetClipboardStore(ClipboardStore* store) {
    return std::exchange(storeInUse, store);
}

bool ClipboardCopyFiles(const std::vector<std::string>& paths) {
    auto* data = new QMimeData;
    data->setData(QLatin1String(kDropFilesMimeType),
                  QByteArray::fromStdString(platform::BuildDropFiles(paths)));
    data->setData(QLatin1String(kUriList), Joined(paths, "", "\r\n"));
    data->setData(QLatin1String(kGnomeList), "copy" + Joined(paths, "\n", ""));
    data->setData(QLatin1String(kKdeCut), "0");
    return Store().Put(data);
}

std::vector<std::string> ClipboardGetFiles() {
    const QMimeData* data = Store().Data();
    if (data == nullptr)
        return {};
    if (Has(*data, kDropFilesMimeType)) {
        const QByteArray block = data->data(QLatin1String(kDropFilesMimeType));
        return platform::ParseDropFiles({reinterpret_cast<const std::uint8_t*>(block.constData()),
                                         static_cast<std::size_t>(block.size())});
    }
    if (Has(*data, kUriList))
        return PathsOf(data->data(QLatin1String(kUriList)));
    // Its first line says what the other program meant to do with the files; here they are always copied.
    return PathsOf(data->data(QLatin1String(kGnomeList)));
}

bool ClipboardHoldsFiles() {
    const QMimeData* data = Store().Data();
    return data != nullptr &&
           (Has(*data, kDropFilesMimeType) || Has(*data, kUriList) || Has(*data, kGnomeList));
}

} // namespace ui
