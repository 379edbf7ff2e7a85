// The explorer's window with a folder of 100,000 files, beside a plain listing of it. With an argument, the
// program is one that the comparison of whole programs starts: see explorer_peers.py.

#include "Compare.h"
#include "ManyFiles.h"
#include "RunCommand.h"
#include "Workplace.h"
#include "fakes/RecordingMessages.h"
#include "ui/explorer/list/FileListModel.h"
#include "ui/explorer/window/MainWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTimer>
#include <QTreeView>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <time.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr int kFiles = 100'000;
constexpr int kScrollSteps = 100; // as a drag of the scroll bar has
constexpr const char* kManyFolder = "E:\\many\\";
constexpr const char* kEmptyFolder = "E:\\empty\\";

/// The main window over a drive E: with a full and an empty folder.
class Window {
  public:
    Window() {
        window_.Load();
        window_.show();
        list_ = window_.findChild<QTreeView*>(QStringLiteral("ListView"));
        List(kEmptyFolder, 0);
    }

    void List(const std::string& folder, int rows) {
        window_.ShowFolder("E:\\", "E:\\");
        window_.ShowFolder(folder, folder.substr(0, folder.size() - 1));
        bench::Require(list_->model()->rowCount() == rows, "rows of " + folder);
        QApplication::processEvents();
    }

    void SortByEachColumn() {
        for (const int column : {ui::FileListModel::kType, ui::FileListModel::kSize,
                                 ui::FileListModel::kModified, ui::FileListModel::kName}) {
            list_->sortByColumn(column, Qt::AscendingOrder);
            QApplication::processEvents();
        }
    }

    void ScrollEndToEnd() {
        QScrollBar* bar = list_->verticalScrollBar();
        for (int step = 0; step <= kScrollSteps; ++step) {
            bar->setValue(static_cast<int>(static_cast<qint64>(bar->maximum()) * step / kScrollSteps));
            list_->viewport()->repaint();
        }
        const QModelIndex last = list_->model()->index(kFiles - 1, 0);
        bench::Require(list_->viewport()->rect().intersects(list_->visualRect(last)), "scrolled to the end");
    }

  private:
    ui::frmtarget window_;
    QTreeView* list_;
};

void CompareWithListing(Window& window, const std::string& hostFolder) {
    struct Work {
        const char* what;
        std::function<void()> run;
        std::function<void()> prepare;
    };

    const auto empty = [&] { window.List(kEmptyFolder, 0); };
    const auto full = [&] { window.List(kManyFolder, kFiles); };
    const Work works[] = {
        {"list", full, empty},
        {"sort", [&] { window.SortByEachColumn(); }, full},
        {"scroll", [&] { window.ScrollEndToEnd(); }, full},
        {"list+sort+scroll",
         [&] {
             full();
             window.SortByEachColumn();
             window.ScrollEndToEnd();
         },
         empty},
    };
    const bench::Side peer{"ls -lU", [&] { bench::RunCommand({"ls", "-lU", hostFolder}); }};
    for (const Work& work : works) {
        const auto times =
            bench::Measure({"explorer", work.run, work.prepare}, peer, bench::Clock::kProcessor);
        std::printf("%-24s %9.1f ms explorer %9.1f ms %s\n", work.what, times.ours * 1e3, times.peers * 1e3,
                    peer.name.c_str());
        std::printf("RATIO %s vs %s %.2f\n", work.what, peer.name.c_str(), times.peers / times.ours);
        std::fflush(stdout);
    }
    std::printf("(the last one's limit is 0.33: at most three times the plain listing)\n");
}

double ProcessorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

/// The longest time between two turns of the event loop during `work`, by the clock and by the processor time
/// spent: what others do on the machine is in the first alone.
void MeasureStall(const char* what, const std::function<void()>& prepare, const std::function<void()>& work) {
    std::vector<double> wall;
    std::vector<double> own;
    for (int run = 0; run < 9; ++run) {
        prepare();
        double longest = 0;
        double longestOwn = 0;
        double before = ProcessorSeconds();
        QElapsedTimer clock;
        QTimer ticks;
        const auto tick = [&] {
            longest = std::max(longest, static_cast<double>(clock.nsecsElapsed()) / 1e6);
            longestOwn = std::max(longestOwn, (ProcessorSeconds() - before) * 1e3);
            clock.start();
            before = ProcessorSeconds();
        };
        QObject::connect(&ticks, &QTimer::timeout, tick);
        clock.start();
        ticks.start(0);
        work();
        tick();
        wall.push_back(longest);
        own.push_back(longestOwn);
    }
    std::printf("longest stall while 100,000 files are %s: median %.1f ms, worst %.1f ms; of processor time "
                "%.1f ms (limit 100 ms)\n",
                what, bench::Median(wall), *std::ranges::max_element(wall), bench::Median(own));
}

double ResidentMegabytes() {
    std::ifstream status("/proc/self/statm");
    double pages = 0;
    status >> pages >> pages;
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const bench::Workplace memory(fs::is_directory("/dev/shm") ? fs::path("/dev/shm")
                                                               : fs::temp_directory_path());
    bench::MakeManyFiles(memory / "many", kFiles);
    fs::create_directory(memory / "empty");
    const std::string drives = "C=fixed:/;E=removable:" + (memory / "");
    ::setenv("PELLARION_DRIVES", drives.c_str(), 1);
    const QApplication application(argc, argv);
    const fakes::RecordingMessages messages;

    Window window;
    const double empty = ResidentMegabytes();
    window.List(kManyFolder, kFiles);
    std::printf("100,000 rows: %.1f MB above an empty list (limit 60 MB)\n", ResidentMegabytes() - empty);
    const auto list = [&] { window.List(kManyFolder, kFiles); };
    MeasureStall(
        "listed", [&] { window.List(kEmptyFolder, 0); }, list);
    MeasureStall("sorted", list, [&] { window.SortByEachColumn(); });
    CompareWithListing(window, memory / "many");
}
