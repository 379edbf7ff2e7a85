// Cabinets that are written, read back by the program's own reader, and on the systems that have some by
// programs that have no part in writing them.

#include "archive/cabinet/CabCompress.h"

#include "archive/cabinet/CabFile.h"
#include "archive/cabinet/CabinetIterator.h"
#include "support/CabBuilder.h"
#include "support/HostFiles.h"
#include "support/RunProgram.h"
#include "support/SmallDisk.h"
#include "support/TestDir.h"

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>
#include <tuple>

#ifndef _WIN32
#include <sched.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tests {
namespace {

namespace fs = std::filesystem;
using cabinet::CabFailure;

using Tree = std::map<std::string, std::string>;

/// All files below a folder, by path.
Tree TreeAt(const fs::path& folder) {
    Tree tree;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_directory())
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        tree[fs::relative(entry.path(), folder).generic_string()] =
            std::string(std::istreambuf_iterator<char>(file), {});
    }
    return tree;
}

class CabCompressTest : public testing::Test {
  protected:
    cabinet::CabReport Pack(std::int32_t mode, const std::string& folder, const std::string& name,
                            const std::string& source, base::WorkObserver* observer = nullptr) {
        return cabinet::CabCompress(mode, TestDir::Path(folder), name, TestDir::Path(source), status,
                                    observer);
    }

    cabinet::CabReport PackFolder(base::WorkObserver* observer = nullptr) {
        return Pack(cabinet::kCabModeFolder, "", "src.cab", "src/", observer);
    }

    void ExpectRefused(CabFailure failure, const std::string& path) {
        const auto before = dir.Count();
        const cabinet::CabReport report = PackFolder();
        EXPECT_EQ(report.failure, failure) << report.Description();
        EXPECT_EQ(report.path, path);
        EXPECT_NE(report.Description().find(path), std::string::npos);
        EXPECT_EQ(status, static_cast<std::int16_t>(failure));
        EXPECT_EQ(dir.Count(), before) << "something is left behind";
    }

    /// The content that a reader makes of src.cab: a command with "CAB" and "OUT" in it, or the program's
    /// own.
    Tree ReadBy(std::string command) {
        const fs::path out = dir.HostC() / "read";
        fs::remove_all(out);
        fs::create_directory(out);
        if (command.empty()) {
            cabinet::CabFile cab;
            cab.CabName = TestDir::Path("src.cab");
            EXPECT_TRUE(cab.Extract("", "C:\\", "read.cab"));
            return TreeAt(out);
        }
        for (const auto& [word, value] : Tree{{"CAB", dir.Host("src.cab").string()}, {"OUT", out.string()}})
            command.replace(command.find(word), word.size(), value);
        EXPECT_TRUE(RunProgram(command)) << command;
        return TreeAt(out);
    }

    TestDir dir;
    std::int16_t status = 99;
};

const std::vector<std::string> kReaders =
    kIsWindows ? std::vector<std::string>{""}
               : std::vector<std::string>{"", "cabextract -q -d OUT CAB", "7zz x -bd -y -oOUT CAB",
                                          "LC_ALL=C.UTF-8 bsdtar -C OUT -xf CAB",
                                          "LC_ALL=C.UTF-8 gcab -x -C OUT CAB"};

TEST_F(CabCompressTest, EveryReaderGetsTheTreeBack) {
    std::mt19937 random(3);
    std::string noise(3'000'000, '\0');
    for (char& c : noise)
        c = static_cast<char>(random());
    dir.MakeFile("src/.hidden", "dot");
    dir.MakeFile("src/a.txt", SampleText(200000));
    dir.MakeFile("src/block", SampleText(32768, 2));
    dir.MakeFile("src/empty.txt");
    dir.MakeFile("src/noise.bin", noise);
    dir.MakeFile("src/photos/2024/\xC3\xBC\xE6\x97\xA5.jpg", noise.substr(0, 70000));
    dir.MakeFile("src/photos/2024/zeros", std::string(9'000'000, '\0'));
    dir.MakeFile("src/z/large", SampleText(17'500'000, 4));
    for (int i = 0; i < 300; ++i)
        dir.MakeFile("src/small/" + std::to_string(i), SampleText(static_cast<std::size_t>(i), 5));
    const cabinet::CabReport report = PackFolder();
    ASSERT_EQ(status, 0) << report.Description();
    const Tree source = TreeAt(dir.Host("src"));
    for (const std::string& reader : kReaders)
        EXPECT_TRUE(ReadBy(reader) == source) << reader;
}

TEST_F(CabCompressTest, OneFileKeepsItsNameAndCabinetTakesTheOldOnesPlace) {
    dir.MakeFile("docs/a.txt", "first");
    dir.MakeFile("src.cab", "an older cabinet");
    Pack(cabinet::kCabModeFile, "", "src.cab", "docs/a.txt");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ReadBy(kReaders.back()), (Tree{{"a.txt", "first"}}));
    EXPECT_EQ(dir.Count(), 2u);
}

TEST_F(CabCompressTest, KeepsDatesAndAttributes) {
    const TimeZone zone;
    for (const char* name : {"tool", "fixed", ".dot", "old"})
        dir.MakeFile("src/" + std::string(name), "x");
    const auto date = [&](const char* name, std::int64_t seconds) {
        fs::last_write_time(dir.Host(name), std::chrono::file_clock::from_sys(
                                                std::chrono::sys_seconds(std::chrono::seconds(seconds))));
    };
    date("src/tool", 1709247598); // 2024-02-29 22:59:58 UTC
    date("src/old", 0);
    fs::permissions(dir.Host("src/tool"), fs::perms(0755));
    Protect(dir.Host("src/fixed"));
    Hide(dir.Host("src/.dot"));
    PackFolder();
    ASSERT_EQ(status, 0);
    using Facts = std::array<int, 3>; // date, time, attributes
    std::map<std::string, Facts> found;
    cabinet::CabinetIterator iterator;
    const auto note = [](std::uintptr_t context, std::uint32_t notification, void* param1, std::uintptr_t) {
        if (notification == cabinet::kNotifyFileInCabinet) {
            const auto& info = *static_cast<cabinet::FILE_IN_CABINET_INFO*>(param1);
            (*reinterpret_cast<decltype(found)*>(context))[info.NameInCabinet] = {info.DosDate, info.DosTime,
                                                                                  info.DosAttribs};
        }
        return cabinet::kFileOpSkip;
    };
    ASSERT_FALSE(iterator.Iterate(TestDir::Path("src.cab"), note, reinterpret_cast<std::uintptr_t>(&found)));
    EXPECT_EQ(found["tool"],
              (Facts{44 << 9 | 2 << 5 | 29, 23 << 11 | 59 << 5 | 29, kIsWindows ? 0x20 : 0x60}));
    EXPECT_EQ(found["fixed"][2], 0x21);
    EXPECT_EQ(found[".dot"][2], 0x22);
    EXPECT_EQ(found["old"][0], 1 << 5 | 1) << "the first day that the format has";
}

TEST_F(CabCompressTest, RefusesWhatACabinetCannotHold) {
    dir.MakeFile("src/file", "x");
    const std::string longName(200, 'd');
    const auto put = [&](const std::string& name) { dir.MakeFile("src/" + name, "x"); };
    // What is made there, where it can be.
    const std::tuple<CabFailure, std::string, std::function<bool(const fs::path&)>> cases[] = {
        {CabFailure::kLink, "link", [](const fs::path& at) { return MakeLink("file", at); }},
        {CabFailure::kLink, "linked folder", [](const fs::path& at) { return MakeLink("..", at); }},
        {CabFailure::kSpecialFile, "pipe", MakePipe},
        {CabFailure::kEmptyFolder, "empty\\", [](const fs::path& at) { return fs::create_directory(at); }},
        {CabFailure::kFileTooLarge, "huge",
         [](const fs::path& at) {
             std::ofstream(at).flush();
             fs::resize_file(at, 0x7FFF8001);
             return true;
         }},
    };
    for (const auto& [failure, name, make] : cases) {
        const fs::path at = dir.Host("src") / name.substr(0, name.find('\\'));
        if (!make(at)) {
            EXPECT_TRUE(kIsWindows) << name << " can be made everywhere else";
            continue;
        }
        ExpectRefused(failure, "E:\\src\\" + name);
        fs::remove(at);
    }
    if constexpr (kNamesAreBytes) {
        for (const char* name : {"a\\b", "colon:name", "aux.c", "ends in dot.", "control\x01", "bytes\xFF"}) {
            std::ofstream(dir.Host("src") / name) << "x";
            EXPECT_EQ(PackFolder().failure, CabFailure::kName) << name;
            fs::remove(dir.Host("src") / name);
        }
    }
    put(longName + "/" + std::string(54, 'x')); // 255 bytes
    EXPECT_EQ(PackFolder().failure, CabFailure::kNone);
    put(longName + "/" + std::string(55, 'y'));
    EXPECT_EQ(PackFolder().failure, CabFailure::kName);
}

TEST_F(CabCompressTest, HoldsAsManyFilesAsTheFormatCounts) {
    dir.MakeFolder("src");
    const SmallDisk quick(dir.Host("src"), 64 << 20); // where it may be mounted
    for (int i = 0; i < 65536; ++i)
        std::ofstream(dir.Host("src/" + std::to_string(i))).flush();
    ExpectRefused(CabFailure::kTooManyFiles, "E:\\src\\");
    fs::remove(dir.Host("src/0"));
    PackFolder();
    EXPECT_EQ(status, 0) << "65,535 fit";
}

TEST_F(CabCompressTest, ReportsWhatIsMissingOrCannotBeWritten) {
    EXPECT_EQ(PackFolder().failure, CabFailure::kCannotRead);
    EXPECT_EQ(PackFolder().error.code, 2u);
    dir.MakeFile("src/file", "x");
    dir.MakeFolder("src.cab");
    ExpectRefused(CabFailure::kCannotWrite, "E:\\src.cab");
    EXPECT_EQ(Pack(cabinet::kCabModeFolder, "no/", "src.cab", "src/").failure, CabFailure::kCannotWrite);
    EXPECT_EQ(Pack(cabinet::kCabModeFile, "", "s.cab", "src").failure, CabFailure::kCannotRead);
    EXPECT_EQ(Pack(3, "", "s.cab", "src/").failure, CabFailure::kWrongCall);
}

/// Runs `change` once, when the files have been listed and about `share` of the work is done.
class When final : public base::WorkObserver {
  public:
    When(double share, std::function<void()> change) : share_(share), change_(std::move(change)) {}

    bool Proceed(const base::WorkStep& step) override {
        bytes_ += step.bytes;
        const bool isListed = step.size > 0;
        if (isListed && !done && static_cast<double>(bytes_) >= share_ * static_cast<double>(step.size)) {
            done = true;
            change_();
        }
        return true;
    }

    bool done = false;

  private:
    double share_;
    std::function<void()> change_;
    std::uint64_t bytes_ = 0;
};

TEST_F(CabCompressTest, SourceThatChangesIsNoticedAtAnyMoment) {
    const std::vector<std::pair<std::string, std::function<void()>>> changes = {
        {"grows", [&] { std::ofstream(dir.Host("src/m"), std::ios::app) << "more"; }},
        {"shrinks", [&] { fs::resize_file(dir.Host("src/m"), 100); }},
        {"vanishes", [&] { fs::remove(dir.Host("src/m")); }},
        {"is rewritten", [&] { dir.MakeFile("src/m", SampleText(900000, 9)); }},
        {"becomes a link",
         [&] {
             fs::remove(dir.Host("src/m"));
             MakeLink("z", dir.Host("src/m"));
         }},
        {"a file comes", [&] { dir.MakeFile("src/new", "x"); }},
        {"a file is renamed", [&] { fs::rename(dir.Host("src/m"), dir.Host("src/n")); }},
    };
    const std::string large = SampleText(5'000'000);
    for (const auto& [name, change] : changes) {
        int made = 0;
        for (const double share : {0.0, 0.6}) {
            fs::remove_all(dir.Host("src"));
            dir.MakeFile("src/a", large);
            dir.MakeFile("src/m", large.substr(1000, 900'000));
            dir.MakeFile("src/z", large);
            When observer(share, change);
            const cabinet::CabReport report = PackFolder(&observer);
            if (!observer.done) { // this machine was done before it was asked again
                fs::remove(dir.Host("src.cab"));
                continue;
            }
            ++made;
            EXPECT_NE(report.failure, CabFailure::kNone) << name << " at " << share;
            EXPECT_EQ(dir.Count(), 1u) << name;
        }
        EXPECT_GT(made, 0) << name << ": at neither moment";
    }
}

TEST_F(CabCompressTest, FullDiskLeavesNothing) {
    dir.MakeFolder("disk");
    const SmallDisk disk(dir.Host("disk"), 512 << 10);
    if (!disk.IsMounted())
        GTEST_SKIP() << "no right to mount a small disk";
    dir.MakeFile("src/a", SampleText(6'000'000));
    const cabinet::CabReport report = Pack(cabinet::kCabModeFolder, "disk/", "src.cab", "src/");
    EXPECT_EQ(report.failure, CabFailure::kCannotWrite);
    EXPECT_EQ(report.error.code, 112u);
    EXPECT_EQ(dir.Count("disk"), 0u);
}

TEST_F(CabCompressTest, AnotherPackingIntoTheSameFolderIsLeftAlone) {
    dir.MakeFile("src/a", SampleText(5'000'000));
    When observer(0.3, [&] {
        Pack(cabinet::kCabModeFile, "", "other.cab", "src/a");
        EXPECT_EQ(status, 0);
    });
    PackFolder(&observer);
    EXPECT_TRUE(observer.done);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(dir.Count(), 3u);
}

#ifndef _WIN32

// A kill at any moment: the source is whole, and a cabinet of the final name is there whole or not at all.
TEST_F(CabCompressTest, KilledAtAnyMomentNothingIsHalfDone) {
    dir.MakeFile("src/a", SampleText(2'500'000));
    dir.MakeFile("src/b", SampleText(2'500'000, 2));
    const Tree source = TreeAt(dir.Host("src"));
    std::set<bool> outcomes;
    for (int milliseconds = 0; outcomes.size() < 2 && milliseconds < 10000;
         milliseconds += 3 + milliseconds / 3) {
        const pid_t child = ::fork();
        if (child == 0) {
            // The alarm's default action ends the process where it stands.
            const itimerval alarm{{}, {milliseconds / 1000, milliseconds % 1000 * 1000 + 1}};
            ::setitimer(ITIMER_REAL, &alarm, nullptr);
            PackFolder();
            ::_exit(0);
        }
        ::waitpid(child, nullptr, 0);
        EXPECT_TRUE(TreeAt(dir.Host("src")) == source);
        const bool made = dir.Exists("src.cab");
        outcomes.insert(made);
        if (made) {
            EXPECT_TRUE(ReadBy(kReaders.back()) == source);
        }
    }
    EXPECT_EQ(outcomes.size(), 2u) << "both before and after the end";
    EXPECT_EQ(dir.Count(), 2u) << "the last one takes away what the killed ones have left";
}

TEST_F(CabCompressTest, CabinetDoesNotDependOnTheNumberOfProcessors) {
    dir.MakeFile("src/a", SampleText(1'000'000));
    dir.MakeFile("src/b", SampleText(17'000'000, 2));
    PackFolder();
    ASSERT_EQ(status, 0);
    const auto first = dir.Read("src.cab");
    cpu_set_t before{};
    cpu_set_t one{};
    ASSERT_EQ(::sched_getaffinity(0, sizeof before, &before), 0);
    std::size_t cpu = 0;
    while (!CPU_ISSET(cpu, &before))
        ++cpu;
    CPU_SET(cpu, &one);
    ASSERT_EQ(::sched_setaffinity(0, sizeof one, &one), 0);
    PackFolder();
    ::sched_setaffinity(0, sizeof before, &before);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(dir.Read("src.cab") == first);
}

#endif

} // namespace
} // namespace tests
