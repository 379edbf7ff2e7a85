#include "ArchiveWindow.h"

#include "ArchiveListView.h"
#include "ProgressStrip.h"
#include "app/core/ApplicationState.h"
#include "app/core/Messages.h"
#include "app/core/Numbers.h"
#include "app/core/Texts.h"
#include "app/windows/PathLabel.h"
#include "app/windows/WindowTexts.h"
#include "app/windows/Yield.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <exception>

namespace dialogs {
namespace {

constexpr std::uint32_t kWarningTitle = 300;
constexpr std::uint32_t kNothingSelected = 524;
constexpr std::uint32_t kStopping = 603;
constexpr std::uint32_t kStopped = 613;

} // namespace

ArchiveWindow::ArchiveWindow(QWidget* parent) : QDialog(parent) {
    Build();
    connect(cmdExtract, &QPushButton::clicked, this, [this] { Run(&ArchiveWindow::ExtractToPickedFolder); });
    connect(cmdExtractSame, &QPushButton::clicked, this,
            [this] { Run(&ArchiveWindow::ExtractToSameFolder); });
    connect(cmdOpen, &QPushButton::clicked, this, [this] { Run(&ArchiveWindow::OpenSelected); });
    connect(ListView, &QAbstractItemView::doubleClicked, this, [this] { Run(&ArchiveWindow::OpenSelected); });
    connect(cmdExit, &QPushButton::clicked, this, &ArchiveWindow::Exit);
    connect(chkAll, &QCheckBox::toggled, this, [this](bool isChecked) {
        if (isChecked)
            ListView->selectAll();
        else
            ListView->clearSelection();
    });
}

void ArchiveWindow::Run(Command command) {
    if (isRunning_)
        return;
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
    lblDest2->setText(app::WindowText(kStopping));
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
    window_.lblDest2->setText(app::WindowText(hint));
    window_.ShowProgress(0);
}

ArchiveWindow::Work::~Work() {
    window_.SetWorking(false);
    window_.lblDest2->setText(window_.stopAsked_ ? app::WindowText(kStopped) : QString());
}

void ArchiveWindow::SetWorking(bool isWorking) {
    // Disabling the control that has the focus would hand it to Exit, one key press away from ending
    // everything.
    if (isWorking)
        ListView->setFocus();
    for (QWidget* control :
         {static_cast<QWidget*>(cmdExtract), static_cast<QWidget*>(cmdExtractSame),
          static_cast<QWidget*>(cmdOpen), static_cast<QWidget*>(chkAll), static_cast<QWidget*>(chkDelete)})
        control->setEnabled(!isWorking);
    ListView->SetLocked(isWorking);
}

void ArchiveWindow::ShowProgress(double fraction) {
    PicProBar->SetFraction(fraction);
    const QString percentage = QString::number(app::RoundHalfToEven(fraction * 100)) + QLatin1Char('%');
    if (percentage != lblProBar->text())
        lblProBar->setText(percentage);
    app::Yield();
}

void ArchiveWindow::ShowDestination(const std::string& folder) {
    lblDest->show();
    lblDestFile->setText(app::ToWindow(folder));
}

bool ArchiveWindow::SomethingSelected() const {
    if (ListView->selectionModel()->hasSelection())
        return true;
    app::ShowText(kNothingSelected, kWarningTitle, app::kMessageWarning);
    return false;
}

bool ArchiveWindow::AllChecked() const {
    return chkAll->isChecked();
}

bool ArchiveWindow::DeleteChecked() const {
    return chkDelete->isChecked();
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

} // namespace dialogs
