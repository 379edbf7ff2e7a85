#include "ui/common/ProgressWindow.h"

#include "app/TextIds.h"
#include "app/Texts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {
namespace {

constexpr int kWidth = 440;
constexpr int kMargin = 16;
constexpr int kGap = 10;
constexpr int kBarSteps = 1000;

QString Text(std::uint32_t id) {
    return QString::fromStdString(app::LoadText(id));
}

} // namespace

ProgressWindow::ProgressWindow(const QString& title, QWidget* parent)
    : QDialog(parent), path_(new QLabel(this)), bar_(new QProgressBar(this)), figures_(new QLabel(this)),
      stop_(new QPushButton(Text(IDS_STOP), this)) {
    setObjectName(QStringLiteral("fileProgress"));
    setWindowTitle(title);
    setWindowModality(Qt::ApplicationModal);
    path_->setObjectName(QStringLiteral("path"));
    path_->setTextFormat(Qt::PlainText);
    path_->setLayoutDirection(Qt::LeftToRight);
    bar_->setObjectName(QStringLiteral("bar"));
    bar_->setAccessibleName(title);
    bar_->setTextVisible(false);
    figures_->setObjectName(QStringLiteral("figures"));
    figures_->setTextFormat(Qt::PlainText);
    stop_->setObjectName(QStringLiteral("stop"));
    stop_->setAutoDefault(false);
    connect(stop_, &QPushButton::clicked, this, &ProgressWindow::reject);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(figures_, 1);
    bottom->addWidget(stop_);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    rows->setSpacing(kGap);
    rows->addWidget(path_);
    rows->addWidget(bar_);
    rows->addLayout(bottom);
    setFixedWidth(kWidth);
}

void ProgressWindow::SetPath(const QString& path) {
    path_->setText(path_->fontMetrics().elidedText(path, Qt::ElideMiddle, kWidth - 2 * kMargin));
}

void ProgressWindow::SetFraction(double fraction) {
    bar_->setRange(0, fraction < 0 ? 0 : kBarSteps);
    if (fraction >= 0)
        bar_->setValue(static_cast<int>(fraction * kBarSteps));
}

void ProgressWindow::SetFigures(const QString& figures) {
    if (!isStopped_)
        figures_->setText(figures);
}

void ProgressWindow::reject() {
    isStopped_ = true;
    stop_->setEnabled(false);
    figures_->setText(Text(IDS_STOPPING));
}

} // namespace ui
