#pragma once

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <string>
#include <vector>

/// Plays a user before modal windows: each time another one of the next step's name is up and at work, that step runs on
/// it, from within the event loop of the window or the yields of the command that shows it.
class ModalUser {
  public:
    struct Step {
        const char* window; ///< its object name
        std::function<void(QWidget&)> act;
    };

    explicit ModalUser(std::vector<Step> steps) : steps_(std::move(steps)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
        timer_.start(0);
    }

    std::size_t Done() const { return next_; }

  private:
    void Look() {
        QWidget* window = QApplication::activeModalWidget();
        if (next_ == steps_.size() || window == nullptr || window == seen_ || !window->isVisible() ||
            window->objectName() != QLatin1String(steps_[next_].window))
            return;
        const auto* path = window->findChild<QLabel*>("path");
        if (path != nullptr && path->text().isEmpty())
            return; // not at work yet
        seen_ = window;
        steps_[next_++].act(*window);
    }

    std::vector<Step> steps_;
    std::size_t next_ = 0;
    QPointer<QWidget> seen_;
    QTimer timer_;
};
