#include "ui/archive/CabWindow.h"

#include "app/TextIds.h"
#include "archive/output/RepeatedMessages.h"
#include "base/Letters.h"
#include "ui/archive/ArchiveListView.h"
#include "ui/desktop/DocumentOpener.h"

namespace ui {
namespace {

/// A file's name inside its cabinet, folders included.
std::string FullName(const ArchiveRow& row) {
    return row.path + row.name;
}

} // namespace

frmextract::frmextract(QWidget* parent)
    : ArchiveWindow({.caption = IDS_CAB_TITLE,
                     .listsWhenShown = true,
                     .pickedNothingFails = true,
                     .refusesPerRow = true,
                     .deletesBySelection = true,
                     .openFillsStrip = true},
                    parent) {
    setObjectName(QStringLiteral("frmextract"));
    AddEmptyLabel("lblDestFile1");
}

bool frmextract::List(std::int32_t archive, ArchiveListing& listing) {
    cabinet::CabFile cabinet;
    cabinet.CabName = listing.archives[static_cast<std::size_t>(archive)].path;
    std::int32_t entry = 0;
    cabinet.FileFound = [&](const std::string& name, const std::string& folder, std::uint32_t size,
                            const platform::SystemTime& time) {
        ArchiveRow row;
        row.entry = ++entry;
        row.archive = archive;
        row.name = name;
        row.path = folder;
        row.modified = time;
        row.size = size;
        listing.rows.push_back(std::move(row));
    };
    return static_cast<bool>(cabinet.GetInfo(""));
}

cabinet::CabFile& frmextract::Cabinet(const ArchiveRow& row) {
    if (!cabinet_)
        cabinet_ = std::make_unique<cabinet::CabFile>();
    cabinet_->CabName = Model().ArchiveOf(row);
    return *cabinet_;
}

bool frmextract::IsNew(Names& names, const ArchiveRow& row) {
    return names.emplace(row.archive, base::ToUpper(FullName(row))).second;
}

base::Outcome frmextract::ExtractRows(Job& job) {
    output::RepeatedMessages messages;
    Names extracted;
    base::Outcome outcome = base::Outcome::kDone;
    for (std::size_t i = 0; i < job.wanted.size() && outcome == base::Outcome::kDone; ++i) {
        const ArchiveRow& row = Model().Row(static_cast<int>(i));
        if (!job.wanted[i])
            continue;
        StartEntries(static_cast<double>(i), static_cast<double>(job.wanted.size()));
        bool isWritten = true;
        if (IsNew(extracted, row)) {
            cabinet::CabFile& cabinet = Cabinet(row);
            isWritten = false;
            cabinet.AfterExtract = [&](const std::string&) { isWritten = true; };
            cabinet.Observer = this;
            const std::string folder = DestinationOf(row, job.folder);
            ShowDestination(folder);
            if (!cabinet.Extract(FullName(row), folder, cabinet.CabName))
                outcome = StopAsked() ? base::Outcome::kStopped : base::Outcome::kFailed;
            else if (!isWritten)
                messages.Report(IDS_NOT_WRITTEN, IDS_WARNING_TITLE, FullName(row));
        }
        job.done[i] = isWritten;
        if (outcome == base::Outcome::kDone && !Proceed({.path = FullName(row), .entries = 1}))
            outcome = base::Outcome::kStopped;
    }
    messages.Finish();
    if (outcome == base::Outcome::kDone)
        ShowProgress(1);
    return outcome;
}

std::string frmextract::TargetOf(const ArchiveRow& row, const std::string& folder) {
    cabinet::CabFile& cabinet = Cabinet(row);
    return cabinet.TargetOf(FullName(row), DestinationOf(row, folder), cabinet.CabName);
}

bool frmextract::ReadBack(const std::vector<int>& rows, const std::string& folder) {
    Names compared;
    return AreAll(rows, [&](const ArchiveRow& row) {
        if (!IsNew(compared, row))
            return true;
        cabinet::CabFile& cabinet = Cabinet(row);
        cabinet.Observer = this;
        return static_cast<bool>(cabinet.Compare(FullName(row), DestinationOf(row, folder), cabinet.CabName));
    });
}

void frmextract::LetGo() {
    cabinet_.reset();
}

void frmextract::OpenDocument(const ArchiveRow& row, const std::string& path) {
    // A cabinet of one file that bears its name has no folder of its own.
    const std::string& cabinet = Model().ArchiveOf(row);
    const std::string base =
        cabinet.substr(cabinet.rfind('\\') + 1, cabinet.rfind('.') - cabinet.rfind('\\') - 1);
    if (base::EqualsNoCase(base, FullName(row)))
        ui::OpenDocument(path);
    else
        OpenDocumentLower(path);
}

} // namespace ui
