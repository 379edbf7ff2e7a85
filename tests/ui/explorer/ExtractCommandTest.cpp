#include "ui/explorer/commands/ExtractCommand.h"

#include "app/ApplicationState.h"
#include "app/TextIds.h"
#include "archive/rar/RarOperations.h"
#include "fakes/FakeArchiveDialogs.h"
#include "fakes/RecordingMessages.h"
#include "support/RarBuilder.h"
#include "support/TestDir.h"
#include "support/ZipBuilder.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;

/// A file list that keeps what is done to it, in order.
class FakeFileList : public ui::FileListAccess {
  public:
    Texts selected;
    Texts names; ///< what SelectRow finds
    Texts done;

    std::vector<std::string> SelectedPaths() const override { return selected; }

    void ShowFolder(const std::string&, const std::string&) override { done.push_back("folder"); }

    void ShowCurrentFolder() override { done.push_back("show"); }

    void ClearSelection() override { done.push_back("clear"); }

    bool SelectRow(std::string_view name) override {
        const bool isThere = std::find(names.begin(), names.end(), name) != names.end();
        done.push_back((isThere ? "select " : "miss ") + std::string(name));
        return isThere;
    }

    bool SelectPaths(const std::vector<std::string>& paths) override {
        bool found = false;
        for (const std::string& path : paths)
            found = SelectRow(path) || found;
        return found;
    }

    QWidget* DialogParent() override { return nullptr; }
};

class ExtractCommand : public testing::Test {
  protected:
    void SetUp() override {
        app::Application() = {};
        tests::ZipBuilder zip;
        zip.entries = {tests::StoredEntry("only.txt", "1")};
        dir_.MakeFile("one.zip", zip.Bytes());
        zip.entries = {tests::StoredEntry("1.txt", "1"), tests::StoredEntry("2.txt", "2")};
        dir_.MakeFile("MANY.two.ZIP", zip.Bytes());
        dir_.MakeFile("fake.zip", "text");
        dialogs_.whileOpen = [this] {
            EXPECT_TRUE(files_.done.empty()) << "the list is refreshed after the window";
            if (whileOpen_)
                whileOpen_();
            app::Application().ExtractionDone = extracts_ || app::Application().ExtractionDone;
        };
    }

    using Ids = std::vector<std::uint32_t>;

    tests::TestDir dir_;
    fakes::RecordingMessages messages_;
    FakeFileList files_;
    fakes::FakeArchiveDialogs dialogs_;
    std::function<void()> whileOpen_;
    bool extracts_ = false; ///< whether a window extracts something
    ui::ExtractCommand command_{files_, dialogs_};
};

TEST_F(ExtractCommand, TheFirstSelectedArchiveChoosesTheWindow) {
    const std::pair<Texts, std::string> kCases[] = {
        {{"E:\\a.CAB", "E:\\b.cab"}, "CAB E:\\a.CAB\r\nE:\\b.cab\r\n"},
        {{"E:\\MANY.two.ZIP", "E:\\one.zip"}, "ZIP E:\\MANY.two.ZIP\r\nE:\\one.zip\r\n"},
        {{"E:\\x.rar"}, "RAR E:\\x.rar\r\n"},
    };
    for (const auto& [paths, expected] : kCases) {
        dialogs_.shown.clear();
        files_.done.clear();
        files_.selected = paths;
        command_.Run();
        EXPECT_EQ(dialogs_.shown, Texts{expected});
        ASSERT_GE(files_.done.size(), 2U);
        EXPECT_EQ(files_.done[0] + files_.done[1], "showclear");
    }
    EXPECT_TRUE(messages_.Ids().empty());
}

TEST_F(ExtractCommand, AMixedSelectionIsRefusedAndNothingIsRefreshed) {
    for (const Texts& paths : {Texts{"E:\\notes.txt", "E:\\a.cab"}, Texts{"E:\\one.zip", "E:\\a.cab"},
                               Texts{"E:\\one.zip", "E:\\folder.zip\\sub"}}) {
        messages_.shown.clear();
        files_.selected = paths;
        command_.Run();
        EXPECT_EQ(messages_.Ids(), Ids{IDS_NOT_ONE_KIND});
        EXPECT_EQ(messages_.shown[0].flags, app::kMessageWarning);
    }
    EXPECT_TRUE(dialogs_.shown.empty());
    EXPECT_TRUE(files_.done.empty());
}

TEST_F(ExtractCommand, WithoutAnArchiveItOnlyRefreshes) {
    for (const Texts& paths : {Texts{}, Texts{"E:\\x.zipx", "E:\\zip", "E:\\a.txt"}}) {
        files_.done.clear();
        files_.selected = paths;
        command_.Run();
        EXPECT_EQ(files_.done, (Texts{"show", "clear"}));
    }
    EXPECT_TRUE(dialogs_.shown.empty());
    EXPECT_TRUE(messages_.Ids().empty());
}

TEST_F(ExtractCommand, SelectsWhatTheLastZipArchiveGave) {
    struct Case {
        std::string archive;
        bool extracts;
        Texts names;
        Texts looked;
    };

    const Case kCases[] = {
        {"E:\\one.zip", true, {"only.txt"}, {"select only.txt"}},
        {"E:\\one.zip", true, {}, {"miss only.txt"}},
        {"E:\\one.zip", false, {}, {"miss only.txt.zip"}},
        {"E:\\MANY.two.ZIP", true, {"E:\\MANY.two"}, {"select E:\\MANY.two"}},
        {"E:\\MANY.two.ZIP", true, {"E:\\MANY.two.zip"}, {"miss E:\\MANY.two", "select E:\\MANY.two.zip"}},
        {"E:\\MANY.two.ZIP", false, {"E:\\MANY.two.zip"}, {"select E:\\MANY.two.zip"}},
    };
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.archive + (c.extracts ? " extracted" : " left"));
        app::Application().ExtractionDone = true; // from an earlier command
        files_.done.clear();
        files_.names = c.names;
        files_.selected = {"E:\\fake.zip", c.archive};
        extracts_ = c.extracts;
        command_.Run();
        ASSERT_GE(files_.done.size(), 3U);
        EXPECT_EQ(Texts(files_.done.begin() + 2, files_.done.end()), c.looked);
    }
}

TEST_F(ExtractCommand, SelectsWhatCabinetsAndRarArchivesGaveBesideThem) {
    class Quiet : public rar::RarListObserver {
        std::string TimeText(const platform::SystemTime&) override { return {}; }

        void RarFileFound(const rar::RarFile&) override {}
    } quiet;

    tests::RarBuilder rar;
    rar.items = {{"docs/a", "1"}, {"b", "2"}};
    dir_.MakeFile("x.rar", rar.Bytes());
    whileOpen_ = [&] { rar::ListRarArchive("E:\\x.rar", "", quiet); };

    struct Case {
        Texts archives;
        bool extracts;
        Texts looked;
    };

    const Case kCases[] = {
        {{"E:\\x.rar"}, true, {"select E:\\docs", "miss E:\\b"}},
        {{"E:\\x.rar"}, false, {"select E:\\x.rar"}},
        {{"E:\\p.cab", "E:\\q.r.cab"}, true, {"miss E:\\p", "select E:\\q.r"}},
        {{"E:\\gone.cab", "E:\\x.cab"},
         true,
         {"miss E:\\gone", "miss E:\\x", "select E:\\gone.cab", "miss E:\\x.cab"}},
    };
    files_.names = {"E:\\docs", "E:\\x.rar", "E:\\q.r", "E:\\gone.cab"};
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.archives[0]);
        app::Application().ExtractionDone = false;
        files_.done.clear();
        files_.selected = c.archives;
        extracts_ = c.extracts;
        command_.Run();
        EXPECT_EQ(Texts(files_.done.begin() + 2, files_.done.end()), c.looked);
    }
}

TEST_F(ExtractCommand, IsNotStartedAgainWhileAWindowIsOpen) {
    files_.selected = {"E:\\one.zip"};
    whileOpen_ = [&] { command_.Run(); };
    command_.Run();
    EXPECT_EQ(dialogs_.shown.size(), 1U);
}

} // namespace
