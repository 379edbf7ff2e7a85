#include "archive/cabinet/CabFilesCallback.h"
#include "archive/cabinet/CabTest.h"
#include "platform/FindFiles.h"
#include "support/HostFiles.h"

#include <filesystem>
#include <tuple>

namespace tests {
namespace {

TEST_F(CabTest, ListsInCabinetOrderUpToTheNamedFile) {
    UseItems({{"z.txt", "zz"}, {"sub\\a.txt", "content"}, {"sub\\deep\\b", "", 0, 0x20, 0, 0}});
    EXPECT_TRUE(cab.GetInfo(""));
    EXPECT_EQ(found, (Texts{"|z.txt|2", "sub\\|a.txt|7", "sub\\deep\\|b|0"}));
    EXPECT_EQ(times[0], (platform::SystemTime{2025, 1, 1, 12, 0, 0}));
    EXPECT_EQ(times[2], platform::SystemTime{}) << "no date";
    found.clear();
    UseItems({{"a", "1"}, {"B.TXT", "22"}, {"b.txt", "333"}});
    EXPECT_TRUE(cab.GetInfo("b.Txt"));
    EXPECT_TRUE(cab.GetInfo("missing"));
    EXPECT_EQ(found, (Texts{"|B.TXT|2"}));
}

TEST_F(CabTest, NamesTargetsByEachSource) {
    UseItems({{"x.txt", "1"}, {"skipped", "-"}, {"plain", "2"}, {"sub\\a.txt", "A"}});
    cancelled = "skipped";
    EXPECT_TRUE(ExtractAll());
    EXPECT_EQ(before.size(), 4u);
    EXPECT_EQ(after, (Texts{"E:\\out\\data\\x.txt", "E:\\out\\data\\plain", "E:\\out\\data\\sub\\a.txt"}));
    EXPECT_EQ(dir.Read("out/data/sub/a.txt"), "A");
    EXPECT_FALSE(dir.Read("out/data/skipped"));
    EXPECT_TRUE(cab.Extract("x.txt", "", "")) << "beside the cabinet, in a folder named after the file";
    EXPECT_EQ(dir.Read("x/x.txt"), "1");
    EXPECT_TRUE(cab.Extract("plain", "E:\\o2\\", ""));
    EXPECT_EQ(dir.Read("o2/plain"), "2");
    EXPECT_TRUE(cab.Extract("plain", "E:\\o3", "E:\\any\\PLAIN.cab"));
    EXPECT_EQ(dir.Read("o3/PLAIN"), "2");
}

TEST_F(CabTest, FilterIgnoresCaseAndFolders) {
    UseItems({{"a.txt", "top"}, {"sub\\a.txt", "below"}, {"\xC3\xA4.txt", "umlaut", 0, 0xA0}});
    EXPECT_TRUE(ExtractOne("A.TXT"));
    EXPECT_EQ(dir.Read("out/data/a.txt"), "top");
    EXPECT_FALSE(dir.Read("out/data/sub/a.txt"));
    EXPECT_TRUE(ExtractOne("SUB\\A.txt"));
    EXPECT_TRUE(ExtractOne("\xC3\x84.TXT"));
    EXPECT_EQ(before, (Texts{"a.txt", "sub\\a.txt", "\xC3\xA4.txt"}));
}

TEST_F(CabTest, ComparesWhatItWroteAndCanBeCancelledInsideALargeFile) {
    UseItems({{"a", std::string(3 << 20, 'a')}, {"b", "12"}, {"..\\b", "12"}});

    struct : base::WorkObserver {
        std::vector<std::uint64_t> steps;

        bool Proceed(const base::WorkStep& step) override {
            steps.push_back(step.bytes);
            return step.path == "a" && step.size == 3 << 20 && steps.size() < 2;
        }
    } observer;

    cab.Observer = &observer;
    EXPECT_EQ(cab.Extract("", "E:\\out", cab.CabName).number, cabinet::kCabErrorCancelled);
    EXPECT_EQ(dir.Count("out/data"), 0u);
    ASSERT_EQ(observer.steps.size(), 2u);
    EXPECT_GE(observer.steps[0], 1u << 20);
    EXPECT_GE(observer.steps[1], 1u << 20);
    EXPECT_LE(observer.steps[0] + observer.steps[1], 3u << 20);
    cab.Observer = nullptr;

    EXPECT_TRUE(cab.Extract("", "E:\\out", cab.CabName));
    EXPECT_TRUE(cab.Compare("A", "E:\\out", cab.CabName));
    EXPECT_TRUE(cab.Compare("b", "E:\\out", cab.CabName));
    EXPECT_FALSE(cab.Compare("..\\b", "E:\\out", cab.CabName)) << "it was never written";
    for (const char* other : {"13", "1", "123"}) {
        dir.MakeFile("out/data/b", other);
        EXPECT_FALSE(cab.Compare("b", "E:\\out", cab.CabName)) << other;
    }
}

TEST_F(CabTest, RaisesErrorsWithTheirTexts) {
    const cabinet::CabResult unset = cab.GetInfo("");
    EXPECT_EQ(unset.number, 0x800407A4u);
    EXPECT_EQ(unset.description,
              "You must set the CabName property before taking any action on the CabFile object.");
    EXPECT_EQ(cab.Extract("", "E:\\", "").number, 0x800407A4u);

    const std::string text = "This is not a cabinet, though it is long enough to be one.";
    const std::tuple<std::string, std::uint32_t, const char*> cases[] = {
        {TestDir::Path("missing.cab"), 2, "The system cannot find the file specified."},
        {TestDir::Path("no\\missing.cab"), 3, "The system cannot find the path specified."},
        {dir.MakeFolder("folder.cab"), 5, "Access is denied."},
        {dir.MakeFile("text.cab", text), 13, "Invalid data."}};
    for (const auto& [name, number, description] : cases) {
        cab.CabName = name;
        EXPECT_EQ(ExtractAll().number, number);
        EXPECT_EQ(cab.GetInfo("").description, description);
    }
}

TEST_F(CabTest, SkipsTargetsThatLeaveTheDestinationOrDoNotFitTheRecord) {
    CabBuilder builder;
    for (const char* name : {"..\\up", "sub\\..\\..\\up", "\\root", "/root", "C:\\drive", "d:", "a\\CON",
                             "nul.txt", "folder\\", "sub//x", "../up", "stream:x"})
        builder.items.push_back({name, "bad"});
    builder.items.push_back({"good", "good"});
    builder.items.push_back({"sub/slash", "fine"});
    // The destination and "data\" take 7 + 5 of 259 characters; each of these letters is two bytes.
    std::string letters;
    for (int i = 0; i < 80; ++i)
        letters += "\xC3\xA9";
    const std::string folder = std::string(120, 'd') + "\\";
    builder.items.push_back({letters, "fits", 0, 0xA0});
    builder.items.push_back({folder + std::string(126, 'x'), "fits exactly"});
    builder.items.push_back({folder + std::string(127, 'y'), "too long"});
    Use(builder);
    EXPECT_TRUE(ExtractAll());
    EXPECT_EQ(after, (Texts{"E:\\out\\data\\good", "E:\\out\\data\\sub/slash", "E:\\out\\data\\" + letters,
                            "E:\\out\\data\\" + folder + std::string(126, 'x')}));
    EXPECT_EQ(dir.Count(), 2u) << "the cabinet and the output";
    EXPECT_EQ(dir.Count("out"), 1u);
    EXPECT_EQ(dir.Count("out/data"), 4u);
}

TEST_F(CabTest, FollowsNoLinkBelowTheDestination) {
    UseItems({{"sub\\a", "through"}, {"file", "new"}});
    dir.MakeFolder("elsewhere");
    dir.MakeFolder("out/data");
    dir.MakeFile("precious", "old");
    if (!MakeLink(dir.Host("elsewhere"), dir.Host("out/data/sub")) ||
        !MakeLink(dir.Host("precious"), dir.Host("out/data/file")))
        GTEST_SKIP() << "no links here";
    EXPECT_TRUE(ExtractAll());
    EXPECT_EQ(dir.Count("elsewhere"), 0u);
    EXPECT_EQ(dir.Read("precious"), "old");
    EXPECT_EQ(dir.Read("out/data/file"), "new");
    EXPECT_FALSE(std::filesystem::is_symlink(dir.Host("out/data/file")));
}

TEST_F(CabTest, GivesFilesTheirTimeAndExecutableMark) {
    UseItems({{"tool", "#!/bin/sh\n", 0, 0x60}, {"doc", "text"}, {"undated", "", 0, 0x20, 0, 0}});
    EXPECT_TRUE(ExtractAll());
    const auto doc = platform::FindEntry("E:\\out\\data\\doc");
    EXPECT_EQ(FileTimeToSystemTime(FileTimeToLocalFileTime(doc->lastWrite)),
              (platform::SystemTime{2025, 1, 1, 12, 0, 0}));
    const auto mayRun = [&](const char* name) {
        using std::filesystem::perms;
        return (std::filesystem::status(dir.Host(name)).permissions() & perms::owner_exec) != perms::none;
    };
    EXPECT_EQ(mayRun("out/data/tool"), !kIsWindows) << "where there is such a mark";
    EXPECT_FALSE(mayRun("out/data/doc"));
}

TEST_F(CabTest, RefusesToReplaceFoldersAndReadOnlyFiles) {
    UseItems({{"a", "new"}, {"b", "new"}});
    dir.MakeFolder("out/data/a");
    EXPECT_EQ(ExtractAll().number, 5u);
    EXPECT_TRUE(after.empty()) << "the first failure ends the extraction";
    EXPECT_EQ(dir.Count("out/data"), 1u) << "nothing half written stays";
    EXPECT_TRUE(ExtractOne("b"));
}

TEST_F(CabTest, NoticesWhatChangedBetweenCalls) {
    UseItems({{"sub\\a", SampleText(100000, 1)}, {"sub\\b", SampleText(100000, 2)}});
    EXPECT_TRUE(ExtractOne("sub\\a"));
    UseItems({{"sub\\b", "another"}});
    EXPECT_TRUE(ExtractOne("sub\\b"));
    EXPECT_EQ(dir.Read("out/data/sub/b"), "another");
}

TEST_F(CabTest, NoticesWhatVanishedBetweenCalls) {
    UseItems({{"sub\\a", "1"}});
    EXPECT_TRUE(ExtractOne("sub\\a"));
    std::filesystem::remove_all(dir.Host("out")); // both were kept open
    EXPECT_TRUE(ExtractOne("sub\\a"));
    EXPECT_EQ(dir.Read("out/data/sub/a"), "1");
    std::filesystem::remove(dir.Host("data.cab"));
    EXPECT_EQ(ExtractOne("sub\\a").number, 2u);
}

TEST_F(CabTest, FileThatContinuesInAnotherCabinetIsMissing) {
    CabBuilder builder;
    builder.items = {{"here", "1"}, {"half", "2", 0xFFFE}, {"earlier", "3", 0xFFFD}};
    builder.nextCabinet = "next.cab";
    Use(builder);
    EXPECT_TRUE(cab.GetInfo(""));
    EXPECT_EQ(found, (Texts{"|here|1", "|half|1"})) << "what began elsewhere is not a file of this cabinet";
    EXPECT_TRUE(ExtractOne("here"));
    EXPECT_EQ(ExtractOne("half").number, 2u);
    EXPECT_FALSE(dir.Read("out/data/half"));
}

TEST_F(CabTest, AnObjectThatIsGoneIsNotCalled) {
    UseItems({{"a", "1"}});
    {
        cabinet::CabFile other;
        other.CabName = cab.CabName;
        EXPECT_TRUE(other.GetInfo(""));
        EXPECT_EQ(cabinet::CurrentCabFile(), &other);
    }
    EXPECT_EQ(cabinet::CurrentCabFile(), nullptr);
    EXPECT_EQ(cabinet::CabIterateCallback(1, 0x11, nullptr, 0), 0u) << "the iteration goes on";
}

} // namespace
} // namespace tests
