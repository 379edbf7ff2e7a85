#include "ui/common/SplashWindow.h"

#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "ui/common/Fonts.h"
#include "ui/common/WindowTexts.h"
#include "ui/common/Yield.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QThread>
#include <QVBoxLayout>
#include <QWindow>

#include <chrono>

namespace ui {

namespace {

constexpr int kIconSize = 64;
constexpr int kMargin = 28;
constexpr int kGap = 20;
constexpr int kTextWidth = 340;
constexpr int kTitlePoints = 18;
constexpr std::chrono::milliseconds kMapPatience{500};

} // namespace

frmprogress::frmprogress()
    : QFrame(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint) {
    setObjectName(QStringLiteral("frmprogress"));
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);

    auto* icon = new QLabel(this);
    icon->setPixmap(QApplication::windowIcon().pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    icon->setFixedSize(kIconSize, kIconSize);

    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("Label1"));
    title_->setTextFormat(Qt::PlainText);
    title_->setProperty("keepsFontSize", true);
    QFont large = title_->font();
    large.setPointSize(kTitlePoints);
    title_->setFont(large);

    caption_ = new QLabel(this);
    caption_->setObjectName(QStringLiteral("lbcaption"));
    caption_->setTextFormat(Qt::PlainText);
    caption_->setWordWrap(true);
    caption_->setMinimumWidth(kTextWidth);
    caption_->setText(QStringLiteral("Please wait while Pellarion is loading the application ....."));

    auto* texts = new QVBoxLayout;
    texts->setSpacing(kGap / 3);
    texts->addStretch();
    texts->addWidget(title_);
    texts->addWidget(caption_);
    texts->addStretch();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    row->setSpacing(kGap);
    row->addWidget(icon);
    row->addLayout(texts, 1);
}

void frmprogress::ApplyTexts() {
    setWindowTitle(WindowText(IDS_WINDOW_TITLE));
    title_->setText(ToWindow(app::ProgramTitle()));
    caption_->setText(ToWindow(app::WithUserName(app::LoadText(IDS_WELCOME))));
    setAccessibleName(windowTitle());
    ApplyFonts(this);
}

void frmprogress::ShowNow() {
    ApplyTexts();
    adjustSize();
    const QRect screenArea = screen()->availableGeometry();
    move(screenArea.center() - rect().center());
    show();
    // A window manager maps the window only after a moment; what is painted before that is lost.
    for (QDeadlineTimer patience(kMapPatience); !windowHandle()->isExposed() && !patience.hasExpired();) {
        YieldNow();
        QThread::msleep(1);
    }
    repaint();
    YieldNow();
}

} // namespace ui
