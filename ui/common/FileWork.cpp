#include "ui/common/FileWork.h"

#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "base/Letters.h"
#include "platform/TreeSize.h"
#include "ui/common/ProgressWindow.h"
#include "ui/common/WindowTexts.h"

#include <QApplication>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace ui {
namespace {

constexpr std::size_t kReported = 6;
constexpr std::size_t kCountedAtOnce = 64;
constexpr std::chrono::milliseconds kBetweenUpdates{40};

/// How many bytes an entry counts for on the progress bar, beside its own bytes.
constexpr std::uint64_t kEntryWeight = 16384;

FileWork* currentWork = nullptr;

} // namespace

FileWork::FileWork(Kind kind, const std::vector<std::string>& sources, QWidget* parent,
                   std::chrono::milliseconds patience)
    : kind_(kind), sources_(sources), parent_(parent), patience_(patience),
      before_(std::exchange(currentWork, this)) {
    started_.start();
}

FileWork::~FileWork() {
    Finish();
}

FileWork* FileWork::Current() {
    return currentWork;
}

/// Counts what is to be done, once the program's own engine turns out to have it.
bool FileWork::Count() {
    isCounting_ = true;
    for (const std::string& source : std::exchange(sources_, {})) {
        platform::TreeSize size(source);
        while (size.CountSome(kCountedAtOnce)) {
            if (!Tick(source))
                return false;
        }
        entriesInAll_ += size.Files() + size.Folders();
        bytesInAll_ += size.Bytes();
    }
    isCounting_ = false;
    return true;
}

void FileWork::Finish() {
    if (isFinished_)
        return;
    isFinished_ = true;
    currentWork = before_;
    delete window_;
    if (failureCount_ > 0)
        app::Messages().Show({FailureText(), Report(), app::kMessageError, app::LoadText(IDS_ERROR_TITLE)});
}

bool FileWork::HasTaken(ShellAnswer answer) {
    wasStopped_ = wasStopped_ || answer == ShellAnswer::kStopped;
    return answer == ShellAnswer::kDone;
}

bool FileWork::Proceed(const base::WorkStep& step) {
    if (!sources_.empty() && !Count())
        return false;
    entries_ += step.entries;
    bytes_ += step.bytes;
    return Tick(step.path);
}

void FileWork::Failed(const std::string& path, base::SystemError error) {
    FailedBecause(path, error.Description());
}

void FileWork::FailedBecause(const std::string& path, const std::string& reason) {
    if (++failureCount_ <= kReported)
        failures_.push_back(path + "\n" + reason);
}

bool FileWork::Tick(std::string_view path) {
    if (!window_ && !started_.hasExpired(patience_.count()))
        return !wasStopped_;
    if (window_ && !shown_.hasExpired(kBetweenUpdates.count()))
        return !wasStopped_;
    if (!window_) {
        const std::uint32_t title = kind_ == Kind::kCopy ? IDS_COPYING_TITLE : IDS_DELETING_TITLE;
        window_ = new ProgressWindow(QString::fromStdString(app::LoadText(title)),
                                     parent_ ? parent_.data() : QApplication::activeWindow());
        window_->show();
    }
    ShowState(path);
    // Other windows get no input meanwhile: this one is modal.
    QApplication::processEvents();
    shown_.start();
    wasStopped_ = !window_ || window_->IsStopped();
    return !wasStopped_;
}

void FileWork::ShowState(std::string_view path) {
    window_->SetPath(ToWindow(path));
    if (isCounting_) {
        window_->SetFraction(-1);
        window_->SetFigures(QString::fromStdString(app::LoadText(IDS_COUNTING_FILES)));
        return;
    }
    const auto weight = [this](std::uint64_t entries, std::uint64_t bytes) {
        return static_cast<double>(entries * kEntryWeight + (kind_ == Kind::kCopy ? bytes : 0));
    };
    const double inAll = weight(entriesInAll_, bytesInAll_);
    window_->SetFraction(inAll > 0 ? std::min(weight(entries_, bytes_) / inAll, 1.0) : -1);
    window_->SetFigures(QString::fromStdString(FiguresText()));
}

std::string FileWork::FiguresText() const {
    const QLocale locale;
    const auto figure = [&](std::uint64_t entries, std::uint64_t bytes) {
        const QString text = kind_ == Kind::kCopy ? locale.formattedDataSize(static_cast<qint64>(bytes))
                                                  : locale.toString(static_cast<qulonglong>(entries));
        return text.toStdString();
    };
    const std::string text =
        base::ReplaceNoCase(app::LoadText(IDS_X_OF_Y), "%x",
                            figure(std::min(entries_, entriesInAll_), std::min(bytes_, bytesInAll_)));
    return base::ReplaceNoCase(text, "%y", figure(entriesInAll_, bytesInAll_));
}

std::uint32_t FileWork::FailureText() const {
    return kind_ == Kind::kCopy ? IDS_NOT_ALL_COPIED : IDS_NOT_ALL_DELETED;
}

std::string FileWork::Report() const {
    std::string report = app::LoadText(FailureText());
    for (const std::string& failure : failures_)
        report += "\n\n" + failure;
    if (failureCount_ > failures_.size())
        report += "\n\n" + base::ReplaceNoCase(app::LoadText(IDS_AND_MORE), "%n",
                                               std::to_string(failureCount_ - failures_.size()));
    return report;
}

} // namespace ui
