#include "ui/common/ReportWindow.h"

#include "app/TextIds.h"
#include "ui/common/Fonts.h"
#include "ui/common/WindowTexts.h"
#include "ui/common/Yield.h"

#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr int kMargin = 16;
constexpr int kGap = 10;
constexpr QSize kDefaultSize{560, 380};

} // namespace

frmMessage::frmMessage(QWidget* parent)
    : QDialog(parent), lbstatus_(new QLabel(this)), Label1_(new QLabel(this)),
      ListView1_(new QTreeWidget(this)), cmdOk_(new QPushButton(this)) {
    setObjectName(QStringLiteral("frmMessage"));
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setWindowTitle(QStringLiteral("Compress Operation Abort"));
    Build();
    connect(cmdOk_, &QPushButton::clicked, this, &QDialog::accept);
}

void frmMessage::Build() {
    lbstatus_->setObjectName(QStringLiteral("lbstatus"));
    lbstatus_->setTextFormat(Qt::PlainText);
    QFont bold = lbstatus_->font();
    bold.setWeight(QFont::DemiBold);
    lbstatus_->setFont(bold);
    Label1_->setObjectName(QStringLiteral("Label1"));
    Label1_->setTextFormat(Qt::PlainText);
    Label1_->setWordWrap(true);
    ListView1_->setObjectName(QStringLiteral("ListView1"));
    ListView1_->setRootIsDecorated(false);
    ListView1_->setUniformRowHeights(true);
    ListView1_->setAlternatingRowColors(true);
    ListView1_->setHeaderLabels({QStringLiteral("#"), WindowText(IDS_COLUMN_PATH)});
    ListView1_->setTextElideMode(Qt::ElideMiddle);
    ListView1_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    ListView1_->header()->setStretchLastSection(true);
    cmdOk_->setObjectName(QStringLiteral("cmdOk"));
    cmdOk_->setText(WindowText(IDS_OK));
    cmdOk_->setDefault(true);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOk_);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    rows->setSpacing(kGap);
    rows->addWidget(lbstatus_);
    rows->addWidget(Label1_);
    rows->addWidget(ListView1_, 1);
    rows->addLayout(buttons);
    resize(kDefaultSize);
}

void frmMessage::SetStatus(const std::string& text) {
    lbstatus_->setText(ToWindow(text));
}

void frmMessage::SetMessage(const std::string& text) {
    Label1_->setText(ToWindow(text));
    ListView1_->setAccessibleName(Label1_->text());
}

void frmMessage::AddPath(const std::string& path) {
    auto* row = new QTreeWidgetItem(ListView1_);
    row->setText(0, QString::number(ListView1_->topLevelItemCount()));
    row->setText(1, ToWindow(path));
    row->setToolTip(1, row->text(1));
}

void frmMessage::ShowNow() {
    ApplyFonts(this);
    const bool isBusy = QGuiApplication::overrideCursor() != nullptr;
    if (isBusy)
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    exec();
    if (isBusy)
        QGuiApplication::restoreOverrideCursor();
}

bool frmMessage::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::WindowActivate) {
        raise();
        Yield();
    }
    return handled;
}

} // namespace ui
