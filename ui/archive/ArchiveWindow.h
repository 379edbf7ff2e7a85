#pragma once

#include "base/Outcome.h"
#include "base/WorkObserver.h"

#include <QDialog>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class QCheckBox;
class QFrame;
class QLabel;
class QProgressBar;
class QPushButton;

namespace ui {

class PathLabel;
class ArchiveListModel;
class ArchiveListView;
class ProgressStrip;
struct ArchiveListing;
struct ArchiveRow;

/// Where the windows of the formats differ by rule, not by what they call.
struct ArchiveWays {
    std::uint32_t caption = 0;         ///< text of the window's caption
    bool listsWhenShown = false;       ///< all of ArchiveList at once, and the first row selected then
    bool pickedNothingFails = false;   ///< IDS_EXTRACTION_FAILED when no folder is picked
    bool failsBesideInSilence = false; ///< a failure beside the archive says nothing and closes the window
    bool refusesPerRow = false;        ///< IDS_NOT_ALL_EXTRACTED for each selected row instead of once
    bool deletesBySelection = false;   ///< whatever "Select all" says
    bool openFillsStrip = false;       ///< Open ends with a full strip, whatever happened
    bool hasProgressBar = false;       ///< ProgressBar1 instead of the strip with its percentage
};

/// The window of an archive format: the list of entries, the destination and progress lines, and the commands
/// Extract (to a picked folder, or beside the archive), Open and "delete the archive after extracting". A
/// format supplies its rows, and how they are extracted and read back.
///
/// The window stays responsive while it works. Escape stops the work after the present entry and leaves the
/// window open; Exit and the window's close button stop it in the same way and then close the window.
class ArchiveWindow : public QDialog, protected base::WorkObserver {
    Q_OBJECT

  public:
    /// Full paths of the archives to show, each followed by CR LF; set before the window is shown.
    std::string ArchiveList;

    /// Escape: stops the work, or closes the window when there is none.
    void reject() override;

  protected:
    /// What one command extracts. Rows are numbered as they stand in the list.
    struct Job {
        std::vector<bool> wanted; ///< by row
        std::string folder;       ///< with a last backslash; empty: each archive's own folder
        std::vector<bool> done;   ///< by row: what has been extracted, set by ExtractRows
        bool isOpening = false;   ///< into the temporary folder, to be opened from there
    };

    ArchiveWindow(const ArchiveWays& ways, QWidget* parent);

    /// Appends the entries of `listing.archives[archive]` to the rows; false ends the listing.
    virtual bool List(std::int32_t archive, ArchiveListing& listing) = 0;

    /// Extracts the wanted rows, in any order.
    virtual base::Outcome ExtractRows(Job& job) = 0;

    /// Where ExtractRows puts an entry with this job's folder; empty when it refuses to.
    virtual std::string TargetOf(const ArchiveRow& row, const std::string& folder) = 0;

    /// Whether what lies at TargetOf is the entry, byte by byte, for each of these rows: all of one archive.
    virtual bool ReadBack(const std::vector<int>& rows, const std::string& folder) = 0;

    /// The rows to extract when these selected ones are to be opened.
    virtual std::vector<bool> RowsToOpen(std::vector<bool> selected) { return selected; }

    /// Opens what was extracted of a row.
    virtual void OpenDocument(const ArchiveRow& row, const std::string& path);

    /// Whether the archive of a row counts as wholly selected without this row.
    virtual bool NeedsNoSelection(const ArchiveRow&) const { return false; }

    /// Closes archives that are kept open: one of them is about to be deleted.
    virtual void LetGo() {}

    /// A label that belongs to the format's window and is never filled.
    void AddEmptyLabel(const char* name);

    /// Lists these archives anew.
    void ListArchives(const std::vector<std::string>& paths);

    /// Fills the strip to this fraction, sets the percentage beside it and lets window messages run.
    void ShowProgress(double fraction);

    /// `done` of `all` entries are finished; Proceed counts on from there.
    void StartEntries(double done, double all);

    double EntriesDone() const { return entriesDone_; }

    /// Shows a step of an extraction or a comparison and lets window messages run. False when it is to stop;
    /// after the last entry nothing is left to stop.
    bool Proceed(const base::WorkStep& step) override;

    /// Shows a folder, or the entry that is being extracted, in the destination line.
    void ShowDestination(const std::string& text);

    /// The folder of the job, or the folder of the row's archive.
    std::string DestinationOf(const ArchiveRow& row, const std::string& folder) const;

    /// Whether all of the rows are as asked; shows the progress, and stops when it is to.
    bool AreAll(const std::vector<int>& rows, const std::function<bool(const ArchiveRow&)>& is);

    /// Lets window messages run, in the middle of something large; false when it is to stop.
    bool KeepsGoing() const;

    /// Whether the user has asked to stop the present work, or, when there is none, the last one.
    bool StopAsked() const { return stopAsked_; }

    bool AllChecked() const;

    ArchiveListView* Rows() const { return ListView; }

    const ArchiveListModel& Model() const;

    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    using Command = bool (ArchiveWindow::*)();

    /// While one lives the window is at work: what cannot be used meanwhile is disabled, the strip is empty
    /// at first, and text `hint` says what goes on.
    class Work {
      public:
        Work(ArchiveWindow& window, std::uint32_t hint);
        ~Work();
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

      private:
        ArchiveWindow& window_;
    };

    void Build();
    QFrame* BuildCommandFrame();
    void BuildMenu();
    void ApplyLanguageTexts();

    void Activate();
    void SelectFirstRow();
    void SelectAll(bool isChecked);
    void Run(Command command);
    void Stop();
    void Exit();
    void SetWorking(bool isWorking);

    // The commands. Each returns whether the window closes now.
    bool ExtractToPickedFolder();
    bool ExtractToSameFolder();
    bool OpenSelected();

    bool SomethingSelected() const;
    bool Extract(const std::string& folder);
    std::vector<bool> WantedRows() const;
    std::string FolderOfCurrentRow() const;
    void DeleteSources(const Job& job);
    void DeleteSource(const std::string& archive, const std::vector<int>& rows, const std::string& folder);
    void OpenRows(const Job& job);

    const ArchiveWays ways_;

    // Named as their object names, by which the rest of the world knows them.
    ArchiveListView* ListView;
    QLabel* lblDest;
    PathLabel* lblDestFile;
    ProgressStrip* PicProBar = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    QLabel* lblProBar;
    QFrame* fraCommand;
    QLabel* lblDest2;
    QCheckBox* chkAll;
    QCheckBox* chkDelete;
    QPushButton* cmdExtract;
    QPushButton* cmdExtractSame;
    QPushButton* cmdOpen;
    QPushButton* cmdExit;

    double entriesDone_ = 0;
    double entriesInAll_ = 1;
    double ofEntry_ = 0; // how much of the present entry is done, from 0 to 1
    bool isListed_ = false;
    bool selectsFirstRow_ = false; // listed, but the first row is not selected yet
    bool isRunning_ = false;       // listing, or a command has begun; it may still be asking for a folder
    bool progressIsHeld_ = false;
    bool stopAsked_ = false;
    bool exitAsked_ = false;
};

/// The pieces of an archive list: paths, each followed by CR LF. Text after the last CR LF is ignored.
std::vector<std::string> SplitArchiveList(const std::string& list);

} // namespace ui
