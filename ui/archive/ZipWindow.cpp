#include "ui/archive/ZipWindow.h"

#include "app/TextIds.h"
#include "platform/Files.h"
#include "ui/archive/ArchiveListView.h"
#include "ui/archive/ExtractedFiles.h"
#include "ui/common/WindowTexts.h"

#include <algorithm>

namespace ui {
namespace {

constexpr char kEncryptedPrefix = '+';
constexpr char kPlainPrefix = ' ';

} // namespace

frmWinExtract::frmWinExtract(QWidget* parent)
    : ArchiveWindow({.caption = IDS_ZIP_TITLE, .failsBesideInSilence = true, .openFillsStrip = true},
                    parent) {
    setObjectName(QStringLiteral("frmWinExtract"));
}

void frmWinExtract::ShowNumber(std::size_t number, std::size_t count) {
    QString caption = WindowText(IDS_NUMBERED_ZIP_TITLE);
    caption.replace(QLatin1String("%x"), QString::number(number));
    caption.replace(QLatin1String("%y"), QString::number(count));
    setWindowTitle(caption);
}

void frmWinExtract::ListArchive() {
    ListArchives({CurrentArchive});
}

bool frmWinExtract::List(std::int32_t archive, ArchiveListing& listing) {
    front_.Get_Contents(CurrentArchive);
    const std::int32_t count = front_.FileCount();
    const QString folderSize = QStringLiteral("Directory Entry");
    listing.rows.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (std::int32_t entry = 1; entry <= count; ++entry) {
        ArchiveRow row;
        row.entry = entry;
        row.archive = archive;
        row.prefix = front_.Encrypted(entry) ? kEncryptedPrefix : kPlainPrefix;
        row.name = front_.FileName(entry);
        row.modified = front_.FileDateTime(entry);
        // Recorded without a sign; the reader's own count has one.
        row.size = static_cast<std::uint32_t>(front_.UnCompressed_Size(entry));
        row.isFolder = front_.IsDir(entry);
        if (row.isFolder)
            row.sizeText = folderSize;
        listing.rows.push_back(std::move(row));
    }
    return true;
}

base::Outcome frmWinExtract::ExtractRows(Job& job) {
    const auto entryOf = [this](std::size_t row) { return Model().Row(static_cast<int>(row)).entry; };
    zip::EntrySelection flags(job.wanted.size() + 1);
    for (std::size_t row = 0; row < job.wanted.size(); ++row)
        flags[static_cast<std::size_t>(entryOf(row))] = job.wanted[row];
    StartEntries(0, static_cast<double>(job.wanted.size()));
    const std::int16_t status = front_.UnPack(flags, DestinationOf(Model().Row(0), job.folder), this);
    for (std::size_t row = 0; row < job.wanted.size(); ++row)
        job.done[row] = job.wanted[row] && entryOf(row) <= EntriesDone();
    if (status == zip::kStatusDone)
        return base::Outcome::kDone;
    return StopAsked() ? base::Outcome::kStopped : base::Outcome::kFailed;
}

std::string frmWinExtract::TargetOf(const ArchiveRow& row, const std::string& folder) {
    return ExtractedPath(DestinationOf(row, folder), row.name);
}

bool frmWinExtract::ReadBack(const std::vector<int>& rows, const std::string& folder) {
    return AreAll(rows, [&](const ArchiveRow& row) {
        const std::string path = TargetOf(row, folder);
        if (path.empty() || row.isFolder)
            return !path.empty() && platform::FolderExists(path);
        return HasContent(path, row.size, static_cast<std::uint32_t>(front_.CRC32(row.entry)),
                          [this] { return KeepsGoing(); });
    });
}

std::vector<bool> frmWinExtract::RowsToOpen(std::vector<bool> selected) {
    // The first row stands for the whole archive: a document at its head may need the files that follow.
    if (AllChecked() || selected.front())
        selected.assign(selected.size(), true);
    return selected;
}

} // namespace ui
