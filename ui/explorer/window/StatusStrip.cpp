#include "ui/explorer/window/StatusStrip.h"

#include "app/Twips.h"
#include "ui/common/PathLabel.h"
#include "ui/common/WindowTexts.h"
#include "ui/explorer/window/DriveSpaceFigures.h"
#include "ui/explorer/window/PaneLayout.h"

#include <QProgressBar>
#include <QStyle>

namespace ui {

namespace {

constexpr int kBarWidth = 110;
constexpr int kBarHeight = 10;
constexpr int kGap = 6;
constexpr int kPadding = 5; ///< above and below the labels
constexpr int kStart = 8;

/// The label of the percentage reaches into the place of the bar, because its position leaves out the gap in
/// front of the bar (see PaneLayout.cpp). This part of its width stays free of text.
constexpr int kPercentSlack = 22;

int WidthOf(const QLabel* label, int slack) {
    return label->sizeHint().width() + slack;
}

QLabel* Named(QLabel* label, const char* name) {
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

StatusStrip::StatusStrip(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("picBar"));
    locationCaption_ = Named(new QLabel(this), "lbcurrent");
    location_ = Named(new PathLabel(this), "lblocation");
    spaceCaption_ = Named(new QLabel(this), "lblsize");
    percent_ = Named(new QLabel(this), "lblPercent");
    bar_ = new QProgressBar(this);
    bar_->setObjectName(QStringLiteral("ProgressBar"));
    bar_->setTextVisible(false);
    bar_->setFixedSize(kBarWidth, kBarHeight);
    spaceCaption_->hide();
    percent_->hide();
    bar_->hide();
}

void StatusStrip::SetCaptions(const QString& location, const QString& space) {
    locationCaption_->setText(location);
    spaceCaption_->setText(space);
    bar_->setAccessibleName(space);
}

void StatusStrip::SetLocation(const QString& location) {
    location_->setText(location);
    location_->setAccessibleName(location);
}

QString StatusStrip::Location() const {
    return location_->text();
}

void StatusStrip::SetSpace(const QString& caption, const DriveSpaceFigures& figures) {
    spaceCaption_->setText(caption);
    bar_->setAccessibleName(caption);
    const auto text = DriveSpaceText(figures);
    if (!text)
        return;
    percent_->setText(ToWindow(*text));
    bar_->setRange(0, static_cast<int>(figures.totalMegabytes));
    bar_->setValue(static_cast<int>(figures.freeMegabytes));
    bar_->show();
}

void StatusStrip::ShowSpace() {
    spaceCaption_->show();
    percent_->show();
}

int StatusStrip::WantedHeight() const {
    return locationCaption_->sizeHint().height() + 2 * kPadding;
}

void StatusStrip::Measure(PaneMeasures& measures) const {
    measures.stripHeight = app::TwipsFromPixels(WantedHeight());
    measures.progressWidth = app::TwipsFromPixels(kBarWidth);
    measures.sizeLabelWidth = app::TwipsFromPixels(WidthOf(spaceCaption_, kGap));
    measures.percentLabelWidth = app::TwipsFromPixels(WidthOf(percent_, kPercentSlack));
}

void StatusStrip::Place(QWidget* control, int left, int width) {
    const int height = qMin(this->height(), control->maximumHeight());
    const QRect place(left, (this->height() - height) / 2, width, height);
    control->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
}

void StatusStrip::Arrange(const PaneLayout& layout) {
    // By the window's direction and not, as labels do by themselves, by that of each text.
    const Qt::Alignment start = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignAbsolute;
    for (QLabel* label : {locationCaption_, location_, spaceCaption_, percent_})
        label->setAlignment(start | Qt::AlignVCenter);
    const int spaceLeft = app::PixelsFromTwips(layout.sizeLabelLeft);
    const int captionWidth = WidthOf(locationCaption_, kGap);
    const int locationLeft = kStart + captionWidth;
    Place(locationCaption_, kStart, captionWidth);
    Place(location_, locationLeft, qMax(0, spaceLeft - kGap * 2 - locationLeft));
    Place(spaceCaption_, spaceLeft, WidthOf(spaceCaption_, kGap));
    Place(percent_, app::PixelsFromTwips(layout.percentLabelLeft), WidthOf(percent_, kPercentSlack));
    Place(bar_, app::PixelsFromTwips(layout.progressLeft), kBarWidth);
}

} // namespace ui
