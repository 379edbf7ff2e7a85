#include "ui/explorer/list/RowSelection.h"

#include "base/Letters.h"
#include "ui/explorer/list/FileListModel.h"
#include "ui/explorer/list/ListView.h"

#include <unordered_set>

namespace ui {

void SelectPaths(ListView& list, const FileListModel& files, const std::vector<std::string>& paths) {
    std::unordered_set<std::string> wanted;
    for (const std::string& path : paths)
        wanted.insert(base::ToUpper(path));
    QItemSelection selection;
    for (int row = 0; row < files.rowCount() && !wanted.empty(); ++row) {
        if (wanted.contains(base::ToUpper(files.FullPath(row))))
            selection.select(files.index(row, 0), files.index(row, FileListModel::kColumnCount - 1));
    }
    QItemSelectionModel* rows = list.selectionModel();
    if (selection.isEmpty()) {
        rows->clearSelection();
        return;
    }
    const QModelIndex first = files.index(selection.first().top(), FileListModel::kName);
    rows->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    rows->select(selection, QItemSelectionModel::ClearAndSelect);
    list.scrollTo(first);
}

} // namespace ui
