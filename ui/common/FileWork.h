#pragma once

#include "platform/FileOperations.h"
#include "ui/desktop/SystemShell.h"

#include <QElapsedTimer>
#include <QPointer>

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

class QWidget;

namespace ui {

class ProgressWindow;

/// How long work on files may last before it shows that it is at work.
inline constexpr std::chrono::milliseconds kBlink{300};

/// The work of one command on files. Shows a progress window with a button to stop once the work takes longer
/// than a moment, and reports at the end what could not be done, and why. While an object of this class
/// lives, calls of ShellCopy and ShellDelete belong to it. Work that the operating system's shell does is
/// shown and reported by the shell.
class FileWork final : public base::WorkObserver {
  public:
    enum class Kind { kCopy, kDelete };

    /// `sources` is all that will be worked on; `parent` is the window below the progress window (null: the
    /// active one).
    FileWork(Kind kind, const std::vector<std::string>& sources, QWidget* parent = nullptr,
             std::chrono::milliseconds patience = kBlink);
    /// Finishes, unless that has been done.
    ~FileWork() override;
    FileWork(const FileWork&) = delete;
    FileWork& operator=(const FileWork&) = delete;

    /// The work that is going on; null without one.
    static FileWork* Current();

    /// Whether the user has stopped it.
    bool WasStopped() const { return wasStopped_; }

    /// The system's shell has taken a part of it with this answer. Returns whether the part was done.
    bool HasTaken(ShellAnswer answer);

    /// Closes the progress window and shows the report.
    void Finish();

    bool Proceed(const base::WorkStep& step) override;
    void Failed(const std::string& path, base::SystemError error) override;
    /// A failure that the program itself found; `reason` is a sentence.
    void FailedBecause(const std::string& path, const std::string& reason);

  private:
    bool Count();
    bool Tick(std::string_view path);
    void ShowState(std::string_view path);
    std::string FiguresText() const;
    std::uint32_t FailureText() const;
    std::string Report() const;

    Kind kind_;
    std::vector<std::string> sources_; ///< not counted yet
    QPointer<QWidget> parent_;
    std::chrono::milliseconds patience_;
    FileWork* before_;
    QPointer<ProgressWindow> window_;
    QElapsedTimer started_;
    QElapsedTimer shown_; ///< since the window was last brought up to date
    std::uint64_t entriesInAll_ = 0;
    std::uint64_t bytesInAll_ = 0;
    std::uint64_t entries_ = 0;
    std::uint64_t bytes_ = 0;
    std::vector<std::string> failures_; ///< the first few, a path and a reason each
    std::size_t failureCount_ = 0;
    bool isCounting_ = false;
    bool wasStopped_ = false;
    bool isFinished_ = false;
};

} // namespace ui
