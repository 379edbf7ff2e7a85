// Filling the archive windows with 65,000 entries: from showing the window to its painted rows. Each format
// has a process of its own, so that its memory is its own.

#include "Compare.h"
#include "app/ApplicationState.h"
#include "support/CabBuilder.h"
#include "support/RarBuilder.h"
#include "support/TestDir.h"
#include "support/ZipBuilder.h"
#include "ui/archive/CabWindow.h"
#include "ui/archive/RarWindow.h"
#include "ui/archive/ZipWindow.h"

#include <QApplication>
#include <QTreeView>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <time.h>

namespace {

constexpr int kEntries = 65'000;
constexpr int kRuns = 9;
constexpr double kMostSeconds = 0.5;
constexpr double kMostMegabytes = 40;

std::string NameOf(int entry) {
    return "folder " + std::to_string(entry % 100) + "/document number " + std::to_string(entry) + ".txt";
}

std::string MakeZip() {
    tests::ZipBuilder builder;
    for (int i = 0; i < kEntries; ++i)
        builder.entries.push_back(tests::StoredEntry(NameOf(i), "x"));
    return builder.Bytes();
}

std::string MakeCab() {
    tests::CabBuilder builder;
    for (int i = 0; i < kEntries; ++i) {
        std::string name = NameOf(i);
        name[name.find('/')] = '\\';
        builder.items.push_back({name, "x"});
    }
    return builder.Bytes();
}

std::string MakeRar() {
    tests::RarBuilder builder;
    for (int i = 0; i < kEntries; ++i)
        builder.items.push_back({NameOf(i), "x"});
    return builder.Bytes();
}

std::unique_ptr<ui::ArchiveWindow> Fill(const std::string& format, const std::string& path) {
    std::unique_ptr<ui::ArchiveWindow> window;
    if (format == "zip") {
        auto zip = std::make_unique<ui::frmWinExtract>();
        zip->CurrentArchive = path;
        zip->ListArchive();
        window = std::move(zip);
    } else if (format == "cab") {
        window = std::make_unique<ui::frmextract>();
    } else {
        window = std::make_unique<ui::frmRarExtract>();
    }
    window->ArchiveList = path + "\r\n";
    window->show();
    auto* list = window->findChild<QTreeView*>(QStringLiteral("ListView"));
    while (list->model()->rowCount() == 0)
        QApplication::processEvents();
    list->viewport()->repaint();
    bench::Require(list->model()->rowCount() == kEntries, "rows of " + path);
    return window;
}

double ProcessorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

/// The most memory that this process has had, in megabytes.
double PeakMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == "VmHWM:" && status >> kilobytes)
            return kilobytes / 1024;
    }
    bench::Require(false, "peak memory");
    return 0;
}

void Measure(const std::string& format) {
    const tests::TestDir folder;
    const std::string path = folder.MakeFile("many." + format, format == "zip"   ? MakeZip()
                                                               : format == "cab" ? MakeCab()
                                                                                 : MakeRar());
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << '5'; // the peak starts afresh
    const double before = PeakMegabytes();
    Fill(format, path);
    const double megabytes = PeakMegabytes() - before;
    std::vector<double> seconds;
    for (int run = 0; run < kRuns; ++run) {
        const double start = ProcessorSeconds();
        const auto window = Fill(format, path);
        seconds.push_back(ProcessorSeconds() - start);
    }
    const double median = bench::Median(seconds);
    const std::string what = "filling the " + format + " window";
    std::printf("%-24s %9.0f ms %9.1f MB\n", what.c_str(), median * 1e3, megabytes);
    std::printf("RATIO %s vs 0.5 s %.2f\n", what.c_str(), kMostSeconds / median);
    std::printf("RATIO %s vs 40 MB %.2f\n", what.c_str(), kMostMegabytes / megabytes);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    app::Application().LanguageId = "0409";
    if (argc > 1) {
        Measure(argv[1]);
        return 0;
    }
    for (const char* format : {"zip", "cab", "rar"})
        bench::Require(std::system((std::string(argv[0]) + ' ' + format).c_str()) == 0, format);
    return 0;
}
