#include "ui/explorer/commands/ExtractCommand.h"

#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "app/TextIds.h"
#include "archive/rar/RarOperations.h"
#include "base/Letters.h"
#include "ui/common/BusyCursor.h"

#include <QScopedValueRollback>

namespace ui {
namespace {

constexpr std::string_view kZip = ".zip";

} // namespace

void ExtractCommand::Run() {
    if (isRunning_)
        return;
    const QScopedValueRollback<bool> running(isRunning_, true);
    Extract();
}

void ExtractCommand::Extract() {
    const std::vector<std::string> paths = files_.SelectedPaths();
    const Route route = ChooseRoute(paths);
    std::optional<Selection> selection = Selection();
    if (route != Route::kNone) {
        selection = Collect(paths, route);
        if (!selection)
            return;
        // Left from an earlier command it would name the wrong result.
        app::Application().ExtractionDone = false;
        Show(route, selection->archives);
    }
    const BusyCursor busy;
    files_.ShowCurrentFolder();
    files_.ClearSelection();
    if (route == Route::kZip)
        SelectResult(*selection);
    else if (route != Route::kNone)
        SelectExtracted(paths, route);
}

ExtractCommand::Route ExtractCommand::RouteOf(std::string_view path) {
    if (base::EndsWithNoCase(path, ".cab"))
        return Route::kCab;
    if (base::EndsWithNoCase(path, kZip))
        return Route::kZip;
    if (base::EndsWithNoCase(path, ".rar"))
        return Route::kRar;
    return Route::kNone;
}

ExtractCommand::Route ExtractCommand::ChooseRoute(const std::vector<std::string>& paths) {
    for (const std::string& path : paths)
        if (const Route route = RouteOf(path); route != Route::kNone)
            return route;
    return Route::kNone;
}

/// Nothing, once the user has been told, when a selected file is not of the route's kind.
std::optional<ExtractCommand::Selection> ExtractCommand::Collect(const std::vector<std::string>& paths,
                                                                 Route route) {
    // Not while a window of an archive is open: the pointer would be the same there.
    const BusyCursor busy;
    Selection selection;
    for (const std::string& path : paths) {
        if (RouteOf(path) != route) {
            app::ShowText(IDS_NOT_ONE_KIND, IDS_WARNING_TITLE, app::kMessageWarning);
            return std::nullopt;
        }
        selection.archives += path + "\r\n";
        if (route == Route::kZip)
            Inspect(path, selection);
    }
    return selection;
}

void ExtractCommand::Inspect(const std::string& path, Selection& selection) {
    front_.Get_Contents(path);
    selection.hasSeveral = front_.FileCount() >= 2;
    selection.resultName = selection.hasSeveral ? path.substr(0, path.rfind('.')) : front_.FileName(1);
}

void ExtractCommand::Show(Route route, const std::string& archives) {
    QWidget* parent = files_.DialogParent();
    if (route == Route::kZip)
        dialogs_.ShowZip(archives, parent);
    else if (route == Route::kCab)
        dialogs_.ShowCab(archives, parent);
    else
        dialogs_.ShowRar(archives, parent);
}

void ExtractCommand::SelectResult(const Selection& selection) {
    const std::string archiveName = selection.resultName + std::string(kZip);
    if (!app::Application().ExtractionDone)
        files_.SelectRow(archiveName);
    else if (!files_.SelectRow(selection.resultName) && selection.hasSeveral)
        files_.SelectRow(archiveName);
}

/// What cabinets and RAR archives gave, as far as it lies beside them; else the archives.
void ExtractCommand::SelectExtracted(const std::vector<std::string>& archives, Route route) {
    std::vector<std::string> results;
    if (app::Application().ExtractionDone && route == Route::kRar)
        results = RarResults(archives.back());
    else if (app::Application().ExtractionDone)
        for (const std::string& archive : archives)
            // A cabinet's files go into a folder of its name.
            results.push_back(archive.substr(0, archive.rfind('.')));
    if (results.empty() || !files_.SelectPaths(results))
        files_.SelectPaths(archives);
}

/// Where the entries of the archive listed last lie beside it: an entry in a folder is in the folder's row.
std::vector<std::string> ExtractCommand::RarResults(const std::string& archive) {
    const std::string folder = archive.substr(0, archive.rfind('\\') + 1);
    const std::string_view names = rar::RarEntryNames();
    std::vector<std::string> results;
    for (std::size_t from = 0, end; (end = names.find("\r\n", from)) != names.npos; from = end + 2) {
        const std::string_view name = names.substr(from, end - from);
        results.push_back(folder + std::string(name.substr(0, name.find('\\'))));
    }
    return results;
}

} // namespace ui
