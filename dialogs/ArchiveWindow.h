#pragma once

#include "archive/ArchiveReader.h"

#include <QDialog>

#include <cstdint>
#include <string>
#include <vector>

class QCheckBox;
class QFrame;
class QLabel;
class QPushButton;

namespace app {
class PathLabel;
}

namespace dialogs {

class ArchiveListModel;
class ArchiveListView;
class ProgressStrip;

/// What the windows of all archive formats share: the list of entries, the destination and progress lines,
/// the commands, and how work is begun, shown, stopped and ended. A format supplies the rows and the three
/// commands.
///
/// The window stays alive while it works. Escape stops the work after the entry in hand and leaves the window
/// open; Exit and the window's close button stop it in the same way and then close the window.
class ArchiveWindow : public QDialog {
    Q_OBJECT

  public:
    /// Full paths of the archives to show, each followed by CR LF; set before the window is shown.
    std::string ArchiveList;

    /// Escape: stops the work, or closes the window when there is none.
    void reject() override;

  protected:
    explicit ArchiveWindow(QWidget* parent);

    /// The three commands. Each runs with a guard against being entered again and answers whether the window
    /// closes now.
    virtual bool ExtractToPickedFolder() = 0;
    virtual bool ExtractToSameFolder() = 0;
    virtual bool OpenSelected() = 0;

    /// Sets captions, headers and fonts. A format adds the window's caption.
    virtual void ApplyLanguageTexts();

    /// While one lives the window is at work: what cannot be used meanwhile is disabled, the strip is empty
    /// at first, and text `hint` says what goes on.
    class Work {
      public:
        explicit Work(ArchiveWindow& window, std::uint32_t hint = kExtractingHint);
        ~Work();
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

      private:
        ArchiveWindow& window_;
    };

    /// Fills the strip to this fraction, sets the percentage beside it and lets window messages run.
    void ShowProgress(double fraction);
    void ShowDestination(const std::string& folder);

    /// Whether the user has asked for the work in hand, or the last one, to stop.
    bool StopAsked() const { return stopAsked_; }

    /// Whether a row is selected; says so to the user when none is.
    bool SomethingSelected() const;
    bool AllChecked() const;
    bool DeleteChecked() const;

    ArchiveListView* List() const { return ListView; }

    void closeEvent(QCloseEvent* event) override;

    static constexpr std::uint32_t kExtractingHint = 602;
    static constexpr std::uint32_t kCheckingHint = 615;

  private:
    using Command = bool (ArchiveWindow::*)();

    void Build();
    QFrame* BuildCommandFrame();
    void Run(Command command);
    void Stop();
    void Exit();
    void SetWorking(bool isWorking);

    // Named as their object names, by which the rest of the world knows them.
    ArchiveListView* ListView;
    QLabel* lblDest;
    app::PathLabel* lblDestFile;
    ProgressStrip* PicProBar;
    QLabel* lblProBar;
    QFrame* fraCommand;
    QLabel* lblDest2;
    QCheckBox* chkAll;
    QCheckBox* chkDelete;
    QPushButton* cmdExtract;
    QPushButton* cmdExtractSame;
    QPushButton* cmdOpen;
    QPushButton* cmdExit;

    bool isRunning_ = false; // a command has begun; it may still be asking for a folder
    bool stopAsked_ = false;
    bool exitAsked_ = false;
};

/// The pieces of an archive list: paths, each followed by CR LF. Text after the last CR LF is ignored.
std::vector<std::string> SplitArchiveList(const std::string& list);

} // namespace dialogs
