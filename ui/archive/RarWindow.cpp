#include "ui/archive/RarWindow.h"

#include "app/TextIds.h"
#include "platform/Files.h"
#include "ui/archive/ArchiveListView.h"
#include "ui/archive/DateText.h"
#include "ui/archive/ExtractedFiles.h"

#include <algorithm>

namespace ui {
namespace {

QString SizeText(std::uint64_t size) {
    if (size == 0)
        return QStringLiteral("Directory Entry");
    return size >= 2 && size < 1024 ? QStringLiteral("1 KB") : QString();
}

} // namespace

/// Turns what a listing finds into rows.
class frmRarExtract::Listing : public rar::RarListObserver {
  public:
    Listing(std::int32_t archive, ArchiveListing& listing) : archive_(archive), listing_(listing) {}

    std::string TimeText(const platform::SystemTime& local) override {
        return DateAndTimeText(local).toStdString();
    }

    void RarFileFound(const rar::RarFile& file) override {
        ArchiveRow row;
        row.entry = file.entry;
        row.archive = archive_;
        row.name = file.name;
        row.modified = rar::RarArchiveTime();
        row.size = file.size;
        row.sizeText = SizeText(file.size);
        row.isFolder = file.size == 0;
        listing_.rows.push_back(std::move(row));
        listing_.archives[static_cast<std::size_t>(archive_)].modifiedText =
            QString::fromStdString(rar::RarArchiveTimeText());
    }

  private:
    std::int32_t archive_;
    ArchiveListing& listing_;
};

/// Follows the passes over one archive after another: each entry is a step in each pass.
class frmRarExtract::Progress : public rar::RarExtractionObserver {
  public:
    Progress(frmRarExtract& window, std::size_t entries, int passes) : window_(window) {
        window_.StartEntries(0, static_cast<double>(entries) * passes);
    }

    void Begin(std::int32_t archive) { archive_ = archive; }

    void EntryBegins(const std::string& text) override { window_.ShowDestination(text); }

    bool Proceed(const base::WorkStep& step) override { return window_.Proceed(step); }

    void EntryWritten(std::int32_t entry) override { window_.written_.emplace(archive_, entry); }

  private:
    frmRarExtract& window_;
    std::int32_t archive_ = 0;
};

frmRarExtract::frmRarExtract(QWidget* parent)
    : ArchiveWindow({.caption = IDS_RAR_TITLE,
                     .listsWhenShown = true,
                     .pickedNothingFails = true,
                     .refusesPerRow = true,
                     .hasProgressBar = true},
                    parent) {
    setObjectName(QStringLiteral("frmRarExtract"));
    AddEmptyLabel("lblRarArch");
}

bool frmRarExtract::List(std::int32_t archive, ArchiveListing& listing) {
    Listing observer(archive, listing);
    const std::string path = listing.archives[static_cast<std::size_t>(archive)].path;
    endsProgram_ = rar::ListRarArchive(path, "", observer) == base::Outcome::kFailed;
    if (endsProgram_)
        close();
    return !endsProgram_;
}

/// Folders, and empty files too.
bool frmRarExtract::NeedsNoSelection(const ArchiveRow& row) const {
    return row.size == 0;
}

/// The wanted rows but those that nobody selected and in whose place a file lies: it is not to be replaced.
std::vector<bool> frmRarExtract::RowsToWrite(const Job& job) {
    std::vector<bool> rows = job.wanted;
    const std::vector<bool> selected = Rows()->SelectedRows();
    for (std::size_t i = 0; i < rows.size() && !AllChecked(); ++i)
        if (rows[i] && !selected[i] &&
            platform::FileExists(TargetOf(Model().Row(static_cast<int>(i)), job.folder)))
            rows[i] = false;
    return rows;
}

base::Outcome frmRarExtract::ExtractRows(Job& job) {
    const std::vector<bool> rows = RowsToWrite(job);
    if (!job.isOpening && !AllChecked()) {
        Rows()->Rows().SetFlags(rows);
        Rows()->ShowFlags();
    }
    std::vector<std::vector<bool>> entries(Model().Archives().size()); // by archive, then by entry
    std::vector<std::int32_t> order;                                   // of the archives in the list
    std::size_t count = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!rows[i])
            continue;
        const ArchiveRow& row = Model().Row(static_cast<int>(i));
        std::vector<bool>& wanted = entries[static_cast<std::size_t>(row.archive)];
        const auto entry = static_cast<std::size_t>(row.entry);
        if (wanted.empty())
            order.push_back(row.archive);
        wanted.resize(std::max(wanted.size(), entry + 1));
        count += !wanted[entry];
        wanted[entry] = true;
    }
    written_.clear();
    Progress progress(*this, count, 2);
    base::Outcome outcome = base::Outcome::kDone;
    for (const std::int32_t archive : order) {
        const std::vector<bool>& wanted = entries[static_cast<std::size_t>(archive)];
        const std::string& path = Model().Archives()[static_cast<std::size_t>(archive)].path;
        progress.Begin(archive);
        const std::string folder = job.folder.empty() ? path.substr(0, path.rfind('\\') + 1) : job.folder;
        const base::Outcome result =
            rar::ExtractRarArchive(folder, path, "", progress, [&](std::int32_t entry, const std::string&) {
                return static_cast<std::size_t>(entry) < wanted.size() &&
                       wanted[static_cast<std::size_t>(entry)];
            });
        if (result == base::Outcome::kStopped) {
            outcome = base::Outcome::kStopped;
            break;
        }
        ShowDestination(folder);
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const ArchiveRow& row = Model().Row(static_cast<int>(i));
        job.done[i] = rows[i] && written_.contains({row.archive, row.entry});
    }
    return outcome;
}

std::string frmRarExtract::TargetOf(const ArchiveRow& row, const std::string& folder) {
    return ExtractedPath(DestinationOf(row, folder), row.name);
}

bool frmRarExtract::ReadBack(const std::vector<int>& rows, const std::string& folder) {
    const ArchiveRow& first = Model().Row(rows.front());
    const bool isWritten = std::all_of(rows.begin(), rows.end(), [&](int i) {
        return written_.contains({first.archive, Model().Row(i).entry});
    });
    Progress progress(*this, rows.size(), 1);
    return isWritten &&
           rar::CompareRarArchive(DestinationOf(first, folder), Model().ArchiveOf(first), "", progress);
}

} // namespace ui
