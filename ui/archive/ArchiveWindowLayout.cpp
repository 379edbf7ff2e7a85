// The controls of an archive window: how they are made, named, placed and captioned.

#include "app/ApplicationState.h"
#include "app/TextIds.h"
#include "ui/archive/ArchiveListView.h"
#include "ui/archive/ArchiveWindow.h"
#include "ui/archive/ProgressStrip.h"
#include "ui/common/Fonts.h"
#include "ui/common/Icons.h"
#include "ui/common/PathLabel.h"
#include "ui/common/WindowTexts.h"

#include <QCheckBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {
namespace {

constexpr QSize kDefaultSize{760, 520};
constexpr int kProgressSteps = 10000;

/// Gives a control its name, for tests, style sheets and automation.
template <typename Control>
Control* Named(Control* control, const char* name) {
    control->setObjectName(QLatin1String(name));
    return control;
}

/// The text of a caption without the mark of its access key.
QString Spoken(QString caption) {
    caption.remove(QLatin1Char('&'));
    return caption;
}

void SetSpokenCaption(QAbstractButton* button, std::uint32_t id) {
    button->setText(WindowText(id));
    button->setAccessibleName(Spoken(button->text()));
}

} // namespace

void ArchiveWindow::Build() {
    ListView = Named(new ArchiveListView(this), "ListView");
    lblDest = Named(new QLabel(this), "lblDest");
    // A caption of nothing until there is a destination; its place is kept.
    QSizePolicy keepsPlace = lblDest->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    lblDest->setSizePolicy(keepsPlace);
    lblDest->hide();
    lblDestFile = Named(new PathLabel(this), "lblDestFile");
    QWidget* bar;
    if (ways_.hasProgressBar) {
        bar = ProgressBar1 = Named(new QProgressBar(this), "ProgressBar1");
        ProgressBar1->setRange(0, kProgressSteps);
        ProgressBar1->setTextVisible(false);
        ProgressBar1->setValue(0);
    } else {
        bar = PicProBar = Named(new ProgressStrip(this), "PicProBar");
    }
    lblProBar = Named(new QLabel(this), "lblProBar");
    lblProBar->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    lblProBar->setMinimumWidth(lblProBar->fontMetrics().horizontalAdvance(QStringLiteral("100%")));
    fraCommand = BuildCommandFrame();

    auto* destination = new QHBoxLayout;
    destination->addWidget(lblDest);
    destination->addWidget(lblDestFile, 1);
    auto* progress = new QHBoxLayout;
    progress->addWidget(bar, 1);
    progress->addWidget(lblProBar);
    lblProBar->setHidden(ways_.hasProgressBar);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(ListView, 1);
    rows->addLayout(destination);
    rows->addLayout(progress);
    rows->addWidget(fraCommand);
    resize(kDefaultSize);
    setSizeGripEnabled(true);
    ListView->setFocus();
}

void ArchiveWindow::AddEmptyLabel(const char* name) {
    Named(new QLabel(this), name)->hide();
}

QFrame* ArchiveWindow::BuildCommandFrame() {
    auto* frame = Named(new QFrame(this), "fraCommand");
    chkAll = Named(new QCheckBox(frame), "chkAll");
    chkDelete = Named(new QCheckBox(frame), "chkDelete");
    lblDest2 = Named(new QLabel(frame), "lblDest2");
    lblDest2->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    cmdExtract = Named(new QPushButton(frame), "cmdExtract");
    cmdExtractSame = Named(new QPushButton(frame), "cmdExtractSame");
    cmdOpen = Named(new QPushButton(frame), "cmdOpen");
    cmdExit = Named(new QPushButton(frame), "cmdExit");
    cmdExtract->setIcon(Icon("extract-to"));
    cmdExtractSame->setIcon(Icon("extract-here"));
    cmdOpen->setIcon(Icon("open"));
    // Enter in the list does what a double-click does.
    cmdOpen->setDefault(true);

    auto* choices = new QHBoxLayout;
    choices->addWidget(chkAll);
    choices->addSpacing(choices->spacing() * 2);
    choices->addWidget(chkDelete);
    choices->addWidget(lblDest2, 1);
    auto* commands = new QHBoxLayout;
    commands->addWidget(cmdExtract);
    commands->addWidget(cmdExtractSame);
    commands->addWidget(cmdOpen);
    commands->addStretch(1);
    commands->addWidget(cmdExit);
    auto* rows = new QVBoxLayout(frame);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addLayout(choices);
    rows->addLayout(commands);
    return frame;
}

void ArchiveWindow::BuildMenu() {
    auto* mnuFile = Named(new QMenu(this), "mnuFile");
    const auto add = [&](const char* name, QAbstractButton* button) {
        QAction* action = Named(mnuFile->addAction(QString()), name);
        connect(action, &QAction::triggered, button, &QAbstractButton::click);
    };
    add("mnuExtract", cmdExtract);
    add("mnuOpen", cmdOpen);
    Named(mnuFile->addSeparator(), "mnuSeparator");
    QAction* all = Named(mnuFile->addAction(QString()), "mnuSelectAll");
    connect(all, &QAction::triggered, this, [this] {
        chkAll->setChecked(true);
        // It may have been checked, with rows deselected since.
        SelectAll(true);
    });
    ListView->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(ListView, &QWidget::customContextMenuRequested, mnuFile, [this, mnuFile](const QPoint& place) {
        if (!isRunning_)
            mnuFile->popup(ListView->viewport()->mapToGlobal(place));
    });
}

void ArchiveWindow::ApplyLanguageTexts() {
    setWindowTitle(WindowText(ways_.caption));
    findChild<QMenu*>(QLatin1String("mnuFile"))->setTitle(WindowText(IDS_FILE));
    using Caption = std::pair<const char*, std::uint32_t>;
    for (const auto& [name, id] : {Caption("mnuExtract", IDS_EXTRACT), Caption("mnuOpen", IDS_OPEN),
                                   Caption("mnuSelectAll", IDS_SELECT_ALL)})
        findChild<QAction*>(QLatin1String(name))->setText(WindowText(id));
    SetSpokenCaption(cmdExtract, IDS_EXTRACT_TO_OTHER);
    SetSpokenCaption(cmdExtractSame, IDS_EXTRACT_TO_SAME);
    SetSpokenCaption(cmdOpen, IDS_OPEN);
    SetSpokenCaption(cmdExit, IDS_CLOSE);
    SetSpokenCaption(chkAll, IDS_SELECT_ALL);
    SetSpokenCaption(chkDelete, IDS_DELETE_ARCHIVE);
    lblDest->setText(WindowText(IDS_EXTRACTING_TO));
    ArchiveListModel& rows = ListView->Rows();
    rows.SetHeader(ArchiveColumn::Name, WindowText(IDS_COLUMN_NAME));
    rows.SetHeader(ArchiveColumn::Modified, WindowText(IDS_COLUMN_MODIFIED));
    rows.SetHeader(ArchiveColumn::Size, WindowText(IDS_COLUMN_SIZE));
    rows.SetHeader(ArchiveColumn::Path, WindowText(IDS_COLUMN_PATH));
    ListView->setAccessibleName(WindowText(IDS_COLUMN_NAME));
    lblDestFile->setAccessibleName(lblDest->text());
    for (QWidget* bar : {static_cast<QWidget*>(PicProBar), static_cast<QWidget*>(ProgressBar1)})
        if (bar != nullptr)
            bar->setAccessibleName(Spoken(WindowText(IDS_EXTRACT)));

    ApplyFonts(this);
    const int points = LabelPointSize(app::Application().LanguageId);
    for (QAbstractButton* button : findChildren<QAbstractButton*>()) {
        QFont font = WithCharset(button->font(), app::Application().CharsetCode);
        font.setPointSize(points);
        button->setFont(font);
    }
}

} // namespace ui
