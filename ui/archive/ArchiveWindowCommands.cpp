// The commands of an archive window: what they extract, open and delete.

#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "platform/Files.h"
#include "ui/archive/ArchiveListView.h"
#include "ui/archive/ArchiveWindow.h"
#include "ui/archive/OpenedEntries.h"
#include "ui/common/BusyCursor.h"
#include "ui/common/FolderPicker.h"
#include "ui/common/ShellDelete.h"
#include "ui/desktop/DocumentOpener.h"

#include <QCheckBox>
#include <QScopedValueRollback>

#include <algorithm>
#include <optional>

namespace ui {
namespace {

void Warn(std::uint32_t id) {
    app::ShowText(id, IDS_WARNING_TITLE, app::kMessageWarning);
}

/// Says that a partly extracted archive stays; false when the user wants to hear it no more.
bool Refuse(bool isFirst) {
    const app::Message message{IDS_NOT_ALL_EXTRACTED, app::WithUserName(app::LoadText(IDS_NOT_ALL_EXTRACTED)),
                               app::kMessageWarning, app::LoadText(IDS_WARNING_TITLE)};
    if (!isFirst)
        return !app::Messages().ShowOfferingRest(message);
    app::Messages().Show(message);
    return true;
}

} // namespace

bool ArchiveWindow::SomethingSelected() const {
    if (ListView->selectionModel()->hasSelection())
        return true;
    Warn(IDS_NOTHING_SELECTED);
    return false;
}

std::string ArchiveWindow::DestinationOf(const ArchiveRow& row, const std::string& folder) const {
    if (!folder.empty())
        return folder;
    const std::string& archive = Model().ArchiveOf(row);
    return archive.substr(0, archive.rfind('\\') + 1);
}

std::string ArchiveWindow::FolderOfCurrentRow() const {
    const QModelIndex current = ListView->currentIndex();
    return DestinationOf(Model().Row(current.isValid() ? current.row() : 0), {});
}

bool ArchiveWindow::ExtractToPickedFolder() {
    if (!SomethingSelected())
        return false;
    std::string folder =
        BrowseForFolder(app::WithUserName(app::LoadText(IDS_CHOOSE_FOLDER)), FolderOfCurrentRow(), this);
    if (folder.find_first_not_of(' ') == std::string::npos) {
        if (ways_.pickedNothingFails)
            Warn(IDS_EXTRACTION_FAILED);
        return false;
    }
    if (folder.back() != '\\')
        folder += '\\';
    return Extract(folder);
}

bool ArchiveWindow::ExtractToSameFolder() {
    return SomethingSelected() && Extract({});
}

/// The rows to extract. An archive that is to be deleted, and counts as wholly selected, is extracted whole.
std::vector<bool> ArchiveWindow::WantedRows() const {
    std::vector<bool> wanted = ListView->SelectedRows();
    if (AllChecked()) {
        wanted.assign(wanted.size(), true);
    } else if (chkDelete->isChecked()) {
        const auto archives = Model().Archives().size();
        std::vector<bool> isPartly(archives);
        std::vector<bool> isTouched(archives);
        const auto forEachRow = [&](const auto& act) {
            for (std::size_t i = 0; i < wanted.size(); ++i) {
                const ArchiveRow& row = Model().Row(static_cast<int>(i));
                act(i, row, static_cast<std::size_t>(row.archive));
            }
        };
        forEachRow([&](std::size_t i, const ArchiveRow& row, std::size_t archive) {
            if (wanted[i])
                isTouched[archive] = true;
            else if (!NeedsNoSelection(row))
                isPartly[archive] = true;
        });
        forEachRow([&](std::size_t i, const ArchiveRow&, std::size_t archive) {
            if (isTouched[archive] && !isPartly[archive])
                wanted[i] = true;
        });
    }
    return wanted;
}

bool ArchiveWindow::Extract(const std::string& folder) {
    Job job{WantedRows(), folder, {}, false};
    job.done.resize(job.wanted.size());
    base::Outcome outcome;
    {
        const Work work(*this, IDS_EXTRACTING);
        std::optional<BusyCursor> busy;
        if (!folder.empty())
            busy.emplace();
        ShowDestination(folder.empty() ? FolderOfCurrentRow() : folder);
        outcome = ExtractRows(job);
    }
    if (outcome == base::Outcome::kStopped)
        return false;
    if (outcome == base::Outcome::kFailed) {
        const bool isSilent = ways_.failsBesideInSilence && folder.empty();
        if (!isSilent)
            Warn(IDS_EXTRACTION_FAILED);
        return isSilent;
    }
    app::Application().ExtractionDone = true;
    if (chkDelete->isChecked())
        DeleteSources(job);
    return true;
}

void ArchiveWindow::DeleteSources(const Job& job) {
    const std::vector<bool> counted = ways_.deletesBySelection ? ListView->SelectedRows() : job.wanted;
    std::vector<std::vector<int>> rowsOf(Model().Archives().size());
    std::vector<bool> isPartly(rowsOf.size());
    for (int i = 0; i < Model().rowCount(); ++i) {
        const auto archive = static_cast<std::size_t>(Model().Row(i).archive);
        rowsOf[archive].push_back(i);
        if (!counted[static_cast<std::size_t>(i)])
            isPartly[archive] = true;
    }
    bool isFirstRefusal = true;
    bool saysMore = true;
    for (std::size_t i = 0; i < counted.size() && !StopAsked(); ++i) {
        const auto archive = static_cast<std::size_t>(Model().Row(static_cast<int>(i)).archive);
        if (!counted[i])
            continue;
        if (!isPartly[archive]) {
            // Judged at its first row; the others find nothing left to do.
            if (!rowsOf[archive].empty())
                DeleteSource(Model().Archives()[archive].path, rowsOf[archive], job.folder);
            rowsOf[archive].clear();
        } else if (saysMore) {
            saysMore = Refuse(isFirstRefusal) && ways_.refusesPerRow;
            isFirstRefusal = false;
        }
    }
}

/// Deletes an archive once all of its rows, as they lie in the target, have been read back.
void ArchiveWindow::DeleteSource(const std::string& archive, const std::vector<int>& rows,
                                 const std::string& folder) {
    bool isSafe;
    {
        const Work work(*this, IDS_CHECKING);
        const BusyCursor busy;
        isSafe = ReadBack(rows, folder);
        ShowProgress(1);
    }
    if (StopAsked())
        return;
    if (!isSafe) {
        Warn(IDS_NOT_READ_BACK);
    } else if (platform::FileExists(archive)) {
        LetGo();
        ShellDelete(archive);
    }
}

bool ArchiveWindow::AreAll(const std::vector<int>& rows, const std::function<bool(const ArchiveRow&)>& is) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        StartEntries(static_cast<double>(i), static_cast<double>(rows.size()));
        if (!Proceed({}) || !is(Model().Row(rows[i])))
            return false;
    }
    return true;
}

bool ArchiveWindow::OpenSelected() {
    app::Application().ExtractionDone = false;
    if (SomethingSelected()) {
        const QScopedValueRollback<bool> held(progressIsHeld_, !ways_.openFillsStrip);
        const Work work(*this, IDS_EXTRACTING);
        const BusyCursor busy;
        OpenFolder folder;
        Job job{RowsToOpen(ListView->SelectedRows()), OpenFolder::Path(), {}, true};
        job.done.resize(job.wanted.size());
        for (std::size_t i = 0; i < job.wanted.size(); ++i)
            if (job.wanted[i])
                folder.Expect(TargetOf(Model().Row(static_cast<int>(i)), job.folder));
        folder.Begin();
        ExtractRows(job);
        folder.End();
        OpenRows(job);
    }
    if (ways_.openFillsStrip && !StopAsked())
        ShowProgress(1);
    return false;
}

void ArchiveWindow::OpenRows(const Job& job) {
    const std::vector<bool> selected = ListView->SelectedRows();
    for (std::size_t i = 0; i < selected.size() && !StopAsked(); ++i) {
        // What was not extracted may lie there from an earlier time.
        if (!selected[i] || !job.done[i])
            continue;
        const ArchiveRow& row = Model().Row(static_cast<int>(i));
        if (const std::string path = TargetOf(row, job.folder); !path.empty())
            OpenDocument(row, path);
        ShowProgress(1);
    }
}

void ArchiveWindow::OpenDocument(const ArchiveRow&, const std::string& path) {
    ui::OpenDocument(path);
}

} // namespace ui
