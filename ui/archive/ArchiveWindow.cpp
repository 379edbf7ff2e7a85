#include "ui/archive/ArchiveWindow.h"

#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "app/TextIds.h"
#include "base/Numbers.h"
#include "ui/archive/ArchiveListView.h"
#include "ui/archive/ProgressStrip.h"
#include "ui/common/BusyCursor.h"
#include "ui/common/PathLabel.h"
#include "ui/common/WindowTexts.h"
#include "ui/common/Yield.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <exception>
#include <unordered_map>

namespace ui {
namespace {

constexpr int kSettleMilliseconds = 500;

} // namespace

ArchiveWindow::ArchiveWindow(const ArchiveWays& ways, QWidget* parent) : QDialog(parent), ways_(ways) {
    Build();
    BuildMenu();
    ApplyLanguageTexts();
    connect(cmdExtract, &QPushButton::clicked, this, [this] { Run(&ArchiveWindow::ExtractToPickedFolder); });
    connect(cmdExtractSame, &QPushButton::clicked, this,
            [this] { Run(&ArchiveWindow::ExtractToSameFolder); });
    connect(cmdOpen, &QPushButton::clicked, this, [this] { Run(&ArchiveWindow::OpenSelected); });
    connect(ListView, &QAbstractItemView::doubleClicked, cmdOpen, &QPushButton::click);
    connect(cmdExit, &QPushButton::clicked, this, &ArchiveWindow::Exit);
    connect(chkAll, &QCheckBox::toggled, this, &ArchiveWindow::SelectAll);
}

const ArchiveListModel& ArchiveWindow::Model() const {
    return ListView->Rows();
}

void ArchiveWindow::SelectAll(bool isChecked) {
    if (isChecked)
        ListView->selectAll();
    else
        ListView->clearSelection();
}

void ArchiveWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (ways_.listsWhenShown && !isListed_)
        // Once the window has been painted.
        QTimer::singleShot(0, this, &ArchiveWindow::Activate);
    isListed_ = true;
}

void ArchiveWindow::Activate() {
    ListArchives(SplitArchiveList(ArchiveList));
    if (selectsFirstRow_)
        QTimer::singleShot(kSettleMilliseconds, this, &ArchiveWindow::SelectFirstRow);
}

void ArchiveWindow::SelectFirstRow() {
    // Whoever was quicker and has selected something keeps that.
    if (selectsFirstRow_ && Model().rowCount() > 0 && !ListView->selectionModel()->hasSelection())
        ListView->setCurrentIndex(Model().index(0, 0));
    selectsFirstRow_ = false;
}

void ArchiveWindow::ListArchives(const std::vector<std::string>& paths) {
    const BusyCursor busy;
    isRunning_ = true;
    ArchiveListing listing;
    std::unordered_map<std::string, std::int32_t> known;
    bool goesOn = true;
    for (std::size_t i = 0; i < paths.size() && goesOn && !exitAsked_; ++i) {
        const auto next = static_cast<std::int32_t>(listing.archives.size());
        const auto [place, isNew] = known.emplace(paths[i], next);
        if (isNew)
            listing.archives.push_back({paths[i]});
        goesOn = List(place->second, listing);
        Yield();
    }
    ListView->Rows().SetListing(std::move(listing));
    ListView->SetEmptyText(WindowText(IDS_NO_ENTRIES));
    selectsFirstRow_ = goesOn && ways_.listsWhenShown;
    isRunning_ = false;
    if (exitAsked_)
        Exit();
}

void ArchiveWindow::Run(Command command) {
    if (isRunning_)
        return;
    SelectFirstRow();
    isRunning_ = true;
    stopAsked_ = exitAsked_ = false;
    bool closes = false;
    try {
        closes = (this->*command)();
    } catch (const std::exception& error) {
        app::ShowError(error.what());
    }
    isRunning_ = false;
    if (closes)
        done(Accepted);
    else if (exitAsked_)
        Exit();
}

void ArchiveWindow::Stop() {
    stopAsked_ = true;
    lblDest2->setText(WindowText(IDS_STOPPING_AFTER_FILE));
}

void ArchiveWindow::Exit() {
    if (isRunning_) {
        exitAsked_ = true;
        Stop();
        return;
    }
    app::Application().ExtractionDone = false;
    QDialog::reject();
}

void ArchiveWindow::reject() {
    if (isRunning_)
        Stop();
    else
        QDialog::reject();
}

void ArchiveWindow::closeEvent(QCloseEvent* event) {
    const bool mustWait = isRunning_;
    Exit();
    event->setAccepted(!mustWait);
}

ArchiveWindow::Work::Work(ArchiveWindow& window, std::uint32_t hint) : window_(window) {
    window_.SetWorking(true);
    window_.lblDest2->setText(WindowText(hint));
    window_.ShowProgress(0);
}

ArchiveWindow::Work::~Work() {
    window_.SetWorking(false);
    window_.lblDest2->setText(window_.stopAsked_ ? WindowText(IDS_STOPPED) : QString());
}

void ArchiveWindow::SetWorking(bool isWorking) {
    // Disabling the control that has the focus would hand it to Exit, one key press away from ending
    // everything.
    if (isWorking)
        ListView->setFocus();
    ListView->SetLocked(isWorking);
    for (QWidget* control :
         {static_cast<QWidget*>(cmdExtract), static_cast<QWidget*>(cmdExtractSame),
          static_cast<QWidget*>(cmdOpen), static_cast<QWidget*>(chkAll), static_cast<QWidget*>(chkDelete)})
        control->setEnabled(!isWorking);
}

void ArchiveWindow::ShowProgress(double fraction) {
    if (ProgressBar1 != nullptr && !progressIsHeld_) {
        ProgressBar1->setValue(static_cast<int>(fraction * ProgressBar1->maximum()));
    } else if (PicProBar != nullptr) {
        PicProBar->SetFraction(fraction);
        const QString percentage = QString::number(base::RoundHalfToEven(fraction * 100)) + QLatin1Char('%');
        if (percentage != lblProBar->text())
            lblProBar->setText(percentage);
    }
    Yield();
}

void ArchiveWindow::StartEntries(double done, double all) {
    entriesDone_ = done;
    entriesInAll_ = all;
    ofEntry_ = 0;
}

bool ArchiveWindow::Proceed(const base::WorkStep& step) {
    entriesDone_ += static_cast<double>(step.entries);
    const double ofEntry =
        static_cast<double>(step.bytes) / static_cast<double>(std::max<std::uint64_t>(step.size, 1));
    ofEntry_ = step.entries > 0 ? 0 : std::min(ofEntry_ + ofEntry, 1.0);
    ShowProgress((entriesDone_ + ofEntry_) / entriesInAll_);
    return !stopAsked_ || entriesDone_ >= entriesInAll_;
}

void ArchiveWindow::ShowDestination(const std::string& text) {
    lblDest->show();
    lblDestFile->setText(ToWindow(text));
}

bool ArchiveWindow::KeepsGoing() const {
    Yield();
    return !stopAsked_;
}

bool ArchiveWindow::AllChecked() const {
    return chkAll->isChecked();
}

std::vector<std::string> SplitArchiveList(const std::string& list) {
    constexpr std::string_view kSeparator = "\r\n";
    std::vector<std::string> paths;
    std::size_t from = 0;
    for (std::size_t to; (to = list.find(kSeparator, from)) != std::string::npos;
         from = to + kSeparator.size())
        paths.push_back(list.substr(from, to - from));
    return paths;
}

} // namespace ui
