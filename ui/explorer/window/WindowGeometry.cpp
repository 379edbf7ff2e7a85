#include "ui/explorer/window/WindowGeometry.h"

#include "app/Settings.h"
#include "app/Twips.h"

#include <QScreen>
#include <QWidget>

namespace ui {

QSize WindowGeometry::FrameSize() const {
    return window_->frameGeometry().size() - window_->geometry().size();
}

void WindowGeometry::Apply(const app::Settings& settings) {
    if (window_->isMaximized() || window_->isFullScreen())
        return;
    appliedFrame_ = FrameSize();
    const QSize outer = window_->frameGeometry().size();
    appliedTwips_ = {settings.width.value_or(app::TwipsFromPixels(outer.width())),
                     settings.height.value_or(app::TwipsFromPixels(outer.height()))};

    const QRect available = window_->screen()->availableGeometry();
    const QSize wanted(app::PixelsFromTwips(appliedTwips_.width()),
                       app::PixelsFromTwips(appliedTwips_.height()));
    const QSize bounded = wanted.boundedTo(available.size());
    window_->resize(bounded - appliedFrame_);
    applied_ = window_->size();

    const QRect whole = window_->screen()->geometry();
    const int left = whole.left() + app::PixelsFromTwips(app::TwipsFromPixels(whole.width()) / 2 -
                                                         app::TwipsFromPixels(bounded.width()) / 2);
    const int top = whole.top() + app::PixelsFromTwips(app::TwipsFromPixels(whole.height()) / 2 -
                                                       app::TwipsFromPixels(bounded.height()) / 2);
    window_->move(qMax(left, available.left()), qMax(top, available.top()));
}

void WindowGeometry::Save(app::Settings& settings) const {
    const QSize inner = window_->size();
    const QSize outer = inner + appliedFrame_;
    settings.height =
        inner.height() == applied_.height() ? appliedTwips_.height() : app::TwipsFromPixels(outer.height());
    settings.width =
        inner.width() == applied_.width() ? appliedTwips_.width() : app::TwipsFromPixels(outer.width());
}

} // namespace ui
