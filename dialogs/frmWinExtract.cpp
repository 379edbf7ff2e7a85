#include "dialogs/frmWinExtract.h"

#include "ArchiveListView.h"
#include "ExtractedFiles.h"
#include "app/core/ApplicationState.h"
#include "app/core/Messages.h"
#include "app/core/Texts.h"
#include "app/windows/BusyCursor.h"
#include "app/windows/WindowTexts.h"
#include "platform/Files.h"
#include "platform/desktop/DocumentOpener.h"
#include "platform/desktop/FolderPicker.h"
#include "platform/desktop/ShellDelete.h"

#include <algorithm>

namespace dialogs {
namespace {

constexpr std::uint32_t kWarningTitle = 300;
constexpr std::uint32_t kCaption = 306;
constexpr std::uint32_t kNumberedCaption = 308;
constexpr std::uint32_t kPickFolder = 520;
constexpr std::uint32_t kExtractionFailed = 525;
constexpr std::uint32_t kNotAllExtracted = 561;
constexpr std::uint32_t kNoEntries = 610;
constexpr std::uint32_t kNotReadBack = 612;

constexpr char kEncryptedPrefix[] = "+";
constexpr char kPlainPrefix[] = " ";

void Warn(std::uint32_t id) {
    app::ShowText(id, kWarningTitle, app::kMessageWarning);
}

/// Makes the folder in which extracted entries are opened; its path with a last backslash.
std::string MakeOpenFolder() {
    const std::string work(app::kWorkFolder);
    const std::string open = work + "Temp\\";
    for (const std::string& folder : {work, open})
        if (!platform::FolderExists(folder))
            platform::CreateFolder(folder);
    return open;
}

/// Puts an observer in place for as long as it lives.
class Observing {
  public:
    explicit Observing(archive::ExtractionObserver* observer) : before_(archive::SetObserver(observer)) {}

    ~Observing() { archive::SetObserver(before_); }

    Observing(const Observing&) = delete;
    Observing& operator=(const Observing&) = delete;

  private:
    archive::ExtractionObserver* before_;
};

} // namespace

frmWinExtract::frmWinExtract(QWidget* parent) : ArchiveWindow(parent) {
    setObjectName(QStringLiteral("frmWinExtract"));
    ApplyLanguageTexts();
}

void frmWinExtract::ApplyLanguageTexts() {
    ArchiveWindow::ApplyLanguageTexts();
    setWindowTitle(app::WindowText(kCaption));
    List()->SetEmptyText(app::WindowText(kNoEntries));
}

void frmWinExtract::ShowNumber(std::size_t number, std::size_t count) {
    QString caption = app::WindowText(kNumberedCaption);
    caption.replace(QLatin1String("%x"), QString::number(number));
    caption.replace(QLatin1String("%y"), QString::number(count));
    setWindowTitle(caption);
}

void frmWinExtract::ListArchive() {
    const app::BusyCursor busy;
    front_.Get_Contents(CurrentArchive);
    const std::int32_t count = front_.FileCount();
    const QString folderSize = QStringLiteral("Directory Entry");
    std::vector<ArchiveRow> rows(static_cast<std::size_t>(std::max(count, 0)));
    for (std::int32_t entry = 1; entry <= count; ++entry) {
        ArchiveRow& row = rows[static_cast<std::size_t>(entry - 1)];
        row.entry = entry;
        row.archive = CurrentArchive;
        row.prefix = front_.Encrypted(entry) ? kEncryptedPrefix : kPlainPrefix;
        row.name = front_.FileName(entry);
        row.modified = front_.FileDateTime(entry);
        // Recorded without a sign; the reader's own count has one.
        row.size = static_cast<std::uint32_t>(front_.UnCompressed_Size(entry));
        row.isFolder = front_.IsDir(entry);
        if (row.isFolder)
            row.sizeText = folderSize;
    }
    List()->Rows().SetRows(std::move(rows));
}

archive::EntrySelection frmWinExtract::EntryFlags() const {
    const std::vector<bool> selected = List()->SelectedRows();
    archive::EntrySelection flags(selected.size() + 1);
    for (std::size_t row = 0; row < selected.size(); ++row)
        if (AllChecked() || selected[row])
            flags[static_cast<std::size_t>(List()->Rows().Row(static_cast<int>(row)).entry)] = true;
    return flags;
}

archive::EntrySelection frmWinExtract::FlagsForOpening() const {
    // The first row stands for the whole archive: a document at its head may need the files that follow.
    archive::EntrySelection flags = EntryFlags();
    if (List()->SelectedRows().front())
        flags.assign(flags.size(), true);
    return flags;
}

bool frmWinExtract::EntryDone(std::int32_t entry, std::int32_t count) {
    lastEntryDone_ = entry;
    ShowProgress(static_cast<double>(entry) / count);
    // After the last entry nothing is left to stop.
    return !StopAsked() || entry == count;
}

std::int16_t frmWinExtract::UnPack(const archive::EntrySelection& flags, const std::string& folder) {
    lastEntryDone_ = 0;
    const Observing observing(this);
    return front_.UnPack(flags, folder);
}

bool frmWinExtract::ExtractToPickedFolder() {
    if (!SomethingSelected())
        return false;
    const archive::EntrySelection flags = EntryFlags();
    std::string folder =
        platform::BrowseForFolder(app::WithUserName(app::LoadText(kPickFolder)), ArchiveFolder(), this);
    if (folder.empty())
        return false;
    if (folder.back() != '\\')
        folder += '\\';

    std::int16_t status;
    {
        const Work work(*this);
        const app::BusyCursor busy;
        ShowDestination(folder);
        status = UnPack(flags, folder);
    }
    if (status != archive::kStatusDone) {
        if (!StopAsked())
            Warn(kExtractionFailed);
        return false;
    }
    app::Application().ExtractionDone = true;
    DeleteSource(folder);
    return true;
}

bool frmWinExtract::ExtractToSameFolder() {
    if (!SomethingSelected())
        return false;
    const archive::EntrySelection flags = EntryFlags();
    const std::string folder = ArchiveFolder();
    std::int16_t status;
    {
        const Work work(*this);
        ShowDestination(folder);
        status = UnPack(flags, folder);
    }
    if (status == archive::kStatusDone) {
        app::Application().ExtractionDone = true;
        DeleteSource(folder);
        return true;
    }
    return !StopAsked();
}

std::string frmWinExtract::ArchiveFolder() const {
    const QModelIndex current = List()->currentIndex();
    const std::string& archive =
        current.isValid() ? List()->Rows().Row(current.row()).archive : CurrentArchive;
    return archive.substr(0, archive.rfind('\\') + 1);
}

void frmWinExtract::DeleteSource(const std::string& folder) {
    if (!DeleteChecked())
        return;
    const std::vector<bool> selected = List()->SelectedRows();
    if (!AllChecked() && !std::all_of(selected.begin(), selected.end(), [](bool is) { return is; })) {
        Warn(kNotAllExtracted);
        return;
    }
    bool isSafe;
    {
        const Work work(*this, kCheckingHint);
        const app::BusyCursor busy;
        isSafe = AllEntriesReadBack(front_, folder, [this](std::int32_t entry) {
            ShowProgress(static_cast<double>(entry) / front_.FileCount());
            return !StopAsked();
        });
    }
    if (isSafe && platform::FileExists(CurrentArchive))
        platform::ShellDelete(CurrentArchive);
    else if (!isSafe && !StopAsked())
        Warn(kNotReadBack);
}

bool frmWinExtract::OpenSelected() {
    app::Application().ExtractionDone = false;
    const bool hasSelection = SomethingSelected();
    if (hasSelection) {
        const Work work(*this);
        const app::BusyCursor busy;
        const std::string folder = MakeOpenFolder();
        UnPack(FlagsForOpening(), folder);
        OpenExtracted(folder);
    }
    if (!StopAsked())
        ShowProgress(1);
    return false;
}

void frmWinExtract::OpenExtracted(const std::string& folder) {
    const std::vector<bool> selected = List()->SelectedRows();
    for (std::size_t i = 0; i < selected.size() && !StopAsked(); ++i) {
        // What UnPack did not come to may lie there from an earlier time.
        const ArchiveRow& row = List()->Rows().Row(static_cast<int>(i));
        if (!selected[i] || row.entry > lastEntryDone_)
            continue;
        if (const auto path = ExtractedPath(folder, row.name))
            platform::OpenDocument(*path);
        ShowProgress(1);
    }
}

} // namespace dialogs
