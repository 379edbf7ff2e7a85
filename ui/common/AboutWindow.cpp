#include "ui/common/AboutWindow.h"

#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "ui/common/Fonts.h"
#include "ui/common/WindowTexts.h"
#include "ui/desktop/SystemInformation.h"

#include <QApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr const char* kUnavailable = "System Information Is Unavailable At This Time";
constexpr int kIconSize = 64;
constexpr int kMargin = 20;
constexpr int kGap = 16;
constexpr int kTextWidth = 360;
constexpr int kTitlePoints = 16;

QLabel* MakeLabel(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(kTextWidth);
    return label;
}

} // namespace

frmAbout::frmAbout(QWidget* parent)
    : QDialog(parent), lblTitle_(MakeLabel("lblTitle", this)), lblVersion_(MakeLabel("lblVersion", this)),
      lblDisclaimer_(MakeLabel("lblDisclaimer", this)), cmdOk_(new QPushButton(this)),
      cmdSysInfo_(new QPushButton(this)) {
    setObjectName(QStringLiteral("frmAbout"));
    Build();
    connect(cmdOk_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdSysInfo_, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
}

void frmAbout::Build() {
    auto* icon = new QLabel(this);
    icon->setAccessibleName(ToWindow(app::ProgramTitle()));
    icon->setPixmap(QApplication::windowIcon().pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    lblTitle_->setProperty("keepsFontSize", true);
    QFont large = lblTitle_->font();
    large.setPointSize(kTitlePoints);
    large.setWeight(QFont::DemiBold);
    lblTitle_->setFont(large);
    auto* frame = new QFrame(this);
    frame->setObjectName(QStringLiteral("Frame1"));
    frame->setFrameShape(QFrame::HLine);
    frame->setFrameShadow(QFrame::Sunken);
    cmdOk_->setObjectName(QStringLiteral("cmdOk"));
    cmdOk_->setDefault(true);
    cmdSysInfo_->setObjectName(QStringLiteral("cmdSysInfo"));
    cmdSysInfo_->setAutoDefault(false);

    auto* texts = new QVBoxLayout;
    texts->addWidget(lblTitle_);
    texts->addWidget(lblVersion_);
    texts->addSpacing(kGap);
    texts->addWidget(lblDisclaimer_);
    texts->addStretch(1);
    auto* top = new QHBoxLayout;
    top->setSpacing(kMargin);
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addLayout(texts, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdSysInfo_);
    buttons->addStretch(1);
    buttons->addWidget(cmdOk_);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, kMargin, kMargin, kGap);
    rows->setSpacing(kGap);
    rows->addLayout(top, 1);
    rows->addWidget(frame);
    rows->addLayout(buttons);
}

void frmAbout::ApplyTexts() {
    setWindowTitle(ToWindow(app::WithProductName(app::LoadExtraText(IDS_EXTRA_ABOUT_TITLE))));
    lblVersion_->setText(QStringLiteral("Version " PELLARION_VERSION));
    lblTitle_->setText(ToWindow(app::ProgramTitle()));
    lblDisclaimer_->setText(ExtraWindowText(IDS_EXTRA_LEGAL_NOTICE));
    cmdOk_->setText(ExtraWindowText(IDS_EXTRA_OK));
    cmdSysInfo_->setText(ExtraWindowText(IDS_EXTRA_SYSTEM_INFO));
    ApplyFonts(this);
}

void frmAbout::ShowNow() {
    ApplyTexts();
    adjustSize();
    setFixedSize(size());
    exec();
}

void frmAbout::StartSysInfo() {
    if (!StartSystemInformation())
        app::Messages().Show({0, kUnavailable, app::kMessagePlain, app::ProgramTitle()});
}

} // namespace ui
