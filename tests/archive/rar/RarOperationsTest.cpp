#include "archive/rar/RarOperations.h"

#include "app/TextIds.h"
#include "fakes/RecordingMessages.h"
#include "support/HostFiles.h"
#include "support/RarBuilder.h"
#include "support/SmallDisk.h"
#include "support/TestDir.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tests {
namespace {

using base::Outcome;
using Texts = std::vector<std::string>;
using Ids = std::vector<std::uint32_t>;

/// Notes what it is told, and stops where it is told to.
class Observer final : public rar::RarListObserver, public rar::RarExtractionObserver {
  public:
    Texts rows;
    Texts labels;
    std::uint64_t ofEntry = 0;
    std::uint64_t progressed = 0;
    std::uint64_t mostProgress = ~0ull;
    int entriesLeft = 1'000'000;
    int written = 0;

    std::string TimeText(const platform::SystemTime& local) override {
        return std::to_string(local.year) + "-" + std::to_string(local.hour);
    }

    void RarFileFound(const rar::RarFile& file) override {
        rows.push_back(std::to_string(file.entry) + "|" + file.name + "|" + std::to_string(file.size) + "|" +
                       rar::CurrentRarArchive() + "|" + rar::RarArchiveTimeText());
    }

    void EntryBegins(const std::string& text) override { labels.push_back(text); }

    bool Proceed(const base::WorkStep& step) override {
        ofEntry = step.entries > 0 ? 0 : ofEntry + step.bytes;
        progressed = std::max(progressed, ofEntry);
        entriesLeft -= static_cast<int>(step.entries);
        return ofEntry <= mostProgress && entriesLeft > 0;
    }

    void EntryWritten(std::int32_t) override { ++written; }
};

class RarTest : public testing::Test {
  protected:
    Outcome List(const std::string& archive) { return rar::ListRarArchive(archive, "", observer); }

    Outcome Extract(const rar::RarFilter& filter = {}) {
        observer.written = 0;
        return rar::ExtractRarArchive(TestDir::Path("out\\"), path, password, observer, filter);
    }

    bool Compare(const rar::RarFilter& filter = {}) {
        return rar::CompareRarArchive(TestDir::Path("out\\"), path, "", observer, filter);
    }

    void Make(std::vector<RarItem> items) {
        builder.items = std::move(items);
        path = dir.MakeFile("A.rar", builder.Bytes());
    }

    /// An archive of the stub of the library; see there.
    void MakeScript(const std::string& script) { path = dir.MakeFile("A.rar", script); }

    TestDir dir;
    ScopedVariable library{"PELLARION_RAR_LIBRARY", ""};
    fakes::RecordingMessages messages;
    Observer observer;
    RarBuilder builder;
    std::string path;
    std::string password;
};

/// The same with the stub in the library's place.
class RarCodesTest : public RarTest {
  protected:
    ScopedVariable stub{"PELLARION_RAR_LIBRARY", RAR_STUB};
};

TEST_F(RarTest, ListsEveryEntry) {
    const TimeZone zone;
    Make({{"sub/One.txt", "content"}, {"sub", "", true}, {"two", "22"}});
    // 2020-05-06 00:00 UTC
    std::filesystem::last_write_time(
        dir.Host("A.rar"),
        std::chrono::file_clock::from_sys(std::chrono::sys_seconds(std::chrono::seconds(1'588'723'200))));
    EXPECT_EQ(List(path), Outcome::kDone);
    EXPECT_EQ(observer.rows, (Texts{"1|sub\\One.txt|7|E:\\A.rar|2020-2", "2|sub|0|E:\\A.rar|2020-2",
                                    "3|two|2|E:\\A.rar|2020-2"}));
    EXPECT_EQ(rar::RarEntryNames(), "sub\\One.txt\r\nsub\r\ntwo\r\n");
    EXPECT_EQ(List(dir.MakeFile("b.rar", "no archive")), Outcome::kFailed);
    EXPECT_EQ(rar::RarEntryNames(), "");
    EXPECT_EQ(rar::CurrentRarArchive(), "E:\\b.rar");
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text, "E:\\b.rar is not RAR archive");
    EXPECT_EQ(messages.shown[0].flags, app::kMessageError);
}

TEST_F(RarCodesTest, ListingEndsTheProgramWithItsMessage) {
    const struct {
        const char* script;
        std::uint32_t id;
        const char* text;
    } kCases[] = {{"open 11\n", 0, "Not enough memory"},
                  {"open 12\n", 0, "E:\\A.rar: archive header broken"},
                  {"open 13\n", 0, "E:\\A.rar is not RAR archive"},
                  {"open 15\n", 0, "Cannot open E:\\A.rar"},
                  {"a f x 112\n", IDS_RAR_STOP_BAD_DATA, ""},
                  {"a f x 113\n", IDS_RAR_STOP_NOT_RAR, ""},
                  {"a f x 114\n", IDS_RAR_STOP_UNKNOWN_FORMAT, ""},
                  {"a f x 115\n", IDS_RAR_STOP_CANNOT_OPEN, ""},
                  {"a f x 116\n", IDS_RAR_STOP_CANNOT_CREATE, ""},
                  {"a f x 117\n", IDS_RAR_STOP_CANNOT_CLOSE, ""},
                  {"a f x 118\n", IDS_RAR_STOP_READ_ERROR, ""},
                  {"a f x 119\n", IDS_RAR_STOP_WRITE_ERROR, ""},
                  {"a f x 0\nheaders 12\n", 0, "File header broken"}};

    for (const auto& one : kCases) {
        MakeScript(one.script);
        messages.shown.clear();
        EXPECT_EQ(List(path), Outcome::kFailed) << one.script;
        ASSERT_EQ(messages.shown.size(), 1u) << one.script;
        EXPECT_EQ(messages.shown[0].id, one.id) << one.script;
        EXPECT_EQ(messages.shown[0].text, one.text) << one.script;
    }
    messages.shown.clear();
    for (const char* quiet : {"open 14\n", "open 18\n", "a f x 0\nheaders 18\n", "a f x 111\nb f x 120\n"}) {
        MakeScript(quiet);
        EXPECT_EQ(List(path), Outcome::kDone) << quiet;
    }
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(rar::RarEntryNames(), "") << "what cannot be skipped is not named";
}

TEST_F(RarCodesTest, ChecksEveryResult) {
    const rar::RARHeaderData header{.ArcName = "ARC", .FileName = "FILE"};

    const struct {
        int code;
        std::uint32_t id;
        const char* text;
        bool goesOn;
    } kCases[] = {{11, IDS_RAR_NO_MEMORY, "", false},          {12, IDS_RAR_BAD_DATA, "", false},
                  {13, IDS_RAR_NOT_RAR, "\nARC", false},       {14, IDS_RAR_UNKNOWN_FORMAT, "\nARC", false},
                  {15, IDS_RAR_CANNOT_OPEN, "\nARC", false},   {16, IDS_RAR_CANNOT_CREATE, "\nFILE", true},
                  {17, IDS_RAR_CANNOT_CLOSE, "\nFILE", false}, {18, IDS_RAR_READ_ERROR, "\nFILE", false},
                  {19, IDS_RAR_WRITE_ERROR, "\nFILE", true},   {20, IDS_RAR_BUFFER_TOO_SMALL, "", true}};

    for (const auto& one : kCases) {
        EXPECT_EQ(rar::CheckRarResult(one.code, header), one.goesOn) << one.code;
        ASSERT_FALSE(messages.shown.empty());
        EXPECT_EQ(messages.shown.back().id, one.id) << one.code;
        EXPECT_EQ(messages.shown.back().text, one.text) << one.code;
    }
    for (const int code : {0, 10, 21, 99})
        EXPECT_TRUE(rar::CheckRarResult(code, header));
    EXPECT_EQ(messages.shown.size(), std::size(kCases));
}

TEST_F(RarTest, TestsThenExtracts) {
    Make({{"Sub/One.txt", "content"}, {"Sub/Deep", "", true}, {"two", "22"}});
    const Outcome outcome = Extract();
    EXPECT_EQ(outcome, Outcome::kDone);
    EXPECT_EQ(observer.written, 3);
    EXPECT_EQ(observer.labels, (Texts{"testing -sub\\one.txt", "testing -sub\\deep", "testing -two",
                                      "sub\\one.txt", "sub\\deep", "two"}));
    EXPECT_EQ(observer.progressed, 7u);
    EXPECT_EQ(dir.Read("out/Sub/One.txt"), "content");
    EXPECT_TRUE(std::filesystem::is_directory(dir.Host("out/Sub/Deep")));
    EXPECT_EQ(dir.Read("out/two"), "22");
    EXPECT_TRUE(Compare());
    EXPECT_TRUE(messages.shown.empty());
    for (const char* changed : {"23", "2", "222"}) {
        dir.MakeFile("out/two", changed);
        EXPECT_FALSE(Compare()) << changed;
    }
    EXPECT_TRUE(Compare([](std::int32_t entry, const std::string&) { return entry < 3; }));
}

TEST_F(RarTest, ExtractsOnlyWhatIsWanted) {
    Make({{"a", "new a"}, {"b", "new b"}, {"sub/c", "new c"}, {"sub", "", true}});
    dir.MakeFile("out/b", "old b");
    const auto outcome =
        Extract([](std::int32_t entry, const std::string& name) { return entry == 1 && name == "a"; });
    EXPECT_EQ(outcome, Outcome::kDone);
    EXPECT_EQ(observer.written, 1);
    EXPECT_EQ(dir.Read("out/a"), "new a");
    EXPECT_EQ(dir.Read("out/b"), "old b");
    EXPECT_EQ(dir.Count("out"), 2u);
    EXPECT_EQ(observer.labels, (Texts{"testing -a", "a"}));
}

TEST_F(RarTest, StaysInTheTargetAndMakesNoLinks) {
    std::vector<RarItem> items;
    for (const char* name : {"../up", "sub/../../up", "/root", "\\root", "C:\\drive", "CON", "nul.txt", "x:y",
                             "sub//x", "dot.", "..\\up", "sub\\..\\..\\up"})
        items.push_back({name, "bad"});
    items.push_back({.name = "link", .content = "/etc", .link = true});
    items.push_back({"sub\\both/ways", "good"});
    Make(items);
    dir.MakeFolder("elsewhere");
    dir.MakeFolder("out");
    if (MakeLink(dir.Host("elsewhere"), dir.Host("out/sub"))) {
        const auto outcome = Extract();
        EXPECT_EQ(outcome, Outcome::kFailed);
        EXPECT_EQ(observer.written, 0) << "the folder there is a link, which is not followed";
        EXPECT_EQ(messages.Ids(), Ids(14, IDS_RAR_CANNOT_CREATE));
        EXPECT_EQ(dir.Count("elsewhere"), 0u);
        std::filesystem::remove(dir.Host("out/sub"));
    }
    messages.shown.clear();
    EXPECT_EQ(Extract(), Outcome::kFailed);
    EXPECT_EQ(observer.written, 1);
    EXPECT_EQ(messages.Ids(), Ids(13, IDS_RAR_CANNOT_CREATE));
    EXPECT_EQ(dir.Read("out/sub/both/ways"), "good");
    EXPECT_EQ(dir.Count(), 3u) << "the archive, elsewhere and out";
    EXPECT_EQ(dir.Count("out"), 1u);
}

TEST_F(RarTest, LaterEntriesOfANameReplaceEarlierOnes) {
    Make({{"same", "first"}, {"same", "second"}, {"same", "third"}});
    EXPECT_EQ(Extract(), Outcome::kDone);
    EXPECT_EQ(dir.Read("out/same"), "third");
    EXPECT_FALSE(Compare()) << "two of the three contents are only in the archive";
}

TEST_F(RarTest, NeverCallsComplete) {
    Make({{"a", "content a"}, {"b", "content b"}});
    const std::string whole = builder.Bytes();
    const auto outcomeOf = [&](const std::string& bytes) {
        path = dir.MakeFile("A.rar", bytes);
        return Extract();
    };
    EXPECT_EQ(outcomeOf(whole), Outcome::kDone);
    EXPECT_EQ(outcomeOf(whole.substr(0, whole.size() - 1)), Outcome::kFailed);
    std::string damaged = whole;
    damaged[damaged.find("content b")] = 'C';
    EXPECT_EQ(outcomeOf(damaged), Outcome::kFailed);
    EXPECT_EQ(observer.written, 1) << "what came before stays";
    EXPECT_EQ(messages.Ids().back(), 530u);
    std::filesystem::remove(dir.Host("A.rar"));
    messages.shown.clear();
    EXPECT_EQ(Extract(), Outcome::kFailed);
    EXPECT_EQ(messages.Ids(), Ids{IDS_RAR_ARCHIVE_GONE});
    EXPECT_TRUE(messages.shown[0].text.ends_with("\nE:\\A.rar"));
}

TEST_F(RarTest, EndsWhereTheObserverSaysSo) {
    Make({{"a", "content a"}, {"b", "content b"}});
    observer.entriesLeft = 3;
    Outcome outcome = Extract();
    EXPECT_EQ(outcome, Outcome::kStopped);
    EXPECT_EQ(observer.written, 1);
    EXPECT_EQ(dir.Count("out"), 1u);
    observer.entriesLeft = 99;
    observer.mostProgress = 5;
    outcome = Extract();
    EXPECT_EQ(outcome, Outcome::kStopped);
    EXPECT_EQ(dir.Count("out"), 1u);
    EXPECT_TRUE(messages.shown.empty()) << "who stops is told nothing";
}

TEST_F(RarTest, GoesOnPastFilesThatCannotBeWritten) {
    Make({{"big", std::string(100'000, 'b')}, {"small", "s"}});
    dir.MakeFolder("out");
    {
        const SmallDisk disk(dir.Host("out"));
        if (!disk.IsMounted())
            GTEST_SKIP() << "mounting takes a super-user";
        EXPECT_EQ(Extract(), Outcome::kFailed);
        EXPECT_EQ(observer.written, 1);
        EXPECT_EQ(messages.Ids(), Ids{IDS_RAR_WRITE_ERROR});
        EXPECT_EQ(dir.Read("out/small"), "s");
        EXPECT_EQ(dir.Count("out"), 1u) << "nothing of the big one";
        ASSERT_TRUE(disk.Protect());
        messages.shown.clear();
        EXPECT_EQ(Extract(), Outcome::kFailed);
        EXPECT_EQ(messages.Ids(), (Ids{IDS_RAR_CANNOT_CREATE, IDS_RAR_CANNOT_CREATE}));
    }
    std::filesystem::create_directory(dir.Host("out/small"));
    messages.shown.clear();
    EXPECT_EQ(Extract(), Outcome::kFailed);
    EXPECT_EQ(observer.written, 1);
    EXPECT_EQ(messages.Ids(), Ids{IDS_RAR_CANNOT_CREATE}) << "a folder has the name";
}

TEST_F(RarCodesTest, ExtractionFollowsTheCodes) {
    MakeScript("a f one 16\nb f two 0\nc f three 19\nd f four 20\n");
    Outcome outcome = Extract();
    EXPECT_EQ(outcome, Outcome::kFailed);
    EXPECT_EQ(observer.written, 1);
    EXPECT_EQ(messages.Ids(), (Ids{IDS_RAR_CANNOT_CREATE, IDS_RAR_WRITE_ERROR, IDS_RAR_BUFFER_TOO_SMALL}));
    MakeScript("a f one 0\nb f two 12\nc f three 0\n");
    messages.shown.clear();
    EXPECT_EQ(Extract(), Outcome::kFailed);
    EXPECT_EQ(observer.written, 1) << "stops at b";
    EXPECT_EQ(messages.Ids(), Ids{IDS_RAR_BAD_DATA});
    for (const auto& [script, id] :
         {std::pair{"a f x 0\nheaders 15\n", 533u}, {"a f x 0\nclose 17\n", 535u}, {"open 13\n", 531u}}) {
        MakeScript(script);
        messages.shown.clear();
        EXPECT_EQ(Extract(), Outcome::kFailed);
        EXPECT_EQ(observer.written, 0) << script << ": the test pass ends it";
        EXPECT_EQ(messages.Ids(), Ids{id}) << script;
    }
    MakeScript("a f PASSWORD 0\n");
    password = "secret";
    EXPECT_EQ(Extract(), Outcome::kDone);
    EXPECT_EQ(dir.Read("out/a"), "secret");
}

} // namespace
} // namespace tests
