#include "ZipWindowFixture.h"

namespace {

using Texts = std::vector<std::string>;

class ZipWindowExtract : public ZipWindow {
  protected:
    void SetUp() override {
        ZipWindow::SetUp();
        dir_.MakeFolder("out");
        tests::MakeZip(dir_.Host("three.zip"), {{"c.txt", "see"}, {"a.txt", "ay"}, {"b.txt", "bee"}});
        // The order of extraction: open, secret, last.
        tests::MakeZip(dir_.Host("locked.zip"), {{"open.txt", "open"}});
        tests::AddEncrypted(dir_.Host("locked.zip"), "secret.txt", "geheim", "pw");
        tests::MakeZip(dir_.Host("tail.zip"), {{"last.txt", "last"}});
        AppendEntries("locked.zip", "tail.zip");
    }

    /// Puts the entries of one archive behind those of another.
    void AppendEntries(const std::string& archive, const std::string& more) {
        std::filesystem::create_directory(dir_.Host("unpacked"));
        tests::RunTool(QStringLiteral("7zz"), {QStringLiteral("x"), QStringLiteral("-ounpacked"), Name(more)},
                       dir_.Host());
        tests::RunTool(QStringLiteral("zip"),
                       {QStringLiteral("-q"), QStringLiteral("-r"), QStringLiteral("../") + Name(archive),
                        QStringLiteral(".")},
                       dir_.Host("unpacked"));
        std::filesystem::remove_all(dir_.Host("unpacked"));
    }

    static QString Name(const std::string& name) { return QString::fromStdString(name); }
};

TEST_F(ZipWindowExtract, SelectedEntriesGoToThePickedFolder) {
    Open("three.zip");
    ClickRow("c.txt");
    ClickRow("b.txt", Qt::ControlModifier);
    picker_.folders = {"E:\\out"};
    Press("cmdExtract");
    EXPECT_EQ(dir_.Read("out/c.txt"), "see");
    EXPECT_EQ(dir_.Read("out/b.txt"), "bee");
    EXPECT_FALSE(Exists("out/a.txt"));
    EXPECT_EQ(Get<QLabel>("lblDestFile").text(), QStringLiteral("E:\\out\\"));
    EXPECT_FALSE(window_->isVisible());
    EXPECT_TRUE(ExtractionDone());
    EXPECT_TRUE(messages_.Ids().empty());
    EXPECT_TRUE(Exists("three.zip"));
}

TEST_F(ZipWindowExtract, ARootKeepsItsOneBackslash) {
    Open("three.zip");
    ClickRow("a.txt");
    picker_.folders = {"E:\\"};
    Press("cmdExtract");
    EXPECT_EQ(dir_.Read("a.txt"), "ay");
    EXPECT_EQ(Get<QLabel>("lblDestFile").text(), QStringLiteral("E:\\"));
}

TEST_F(ZipWindowExtract, ACancelledPickerLeavesEverythingAsItWas) {
    Open("three.zip");
    ClickRow("a.txt");
    Press("cmdExtract");
    EXPECT_EQ(picker_.prompts.size(), 1U);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_FALSE(ExtractionDone());
    EXPECT_TRUE(messages_.Ids().empty());
    EXPECT_EQ(SelectedNames(), Texts{"a.txt"});
}

TEST_F(ZipWindowExtract, EntriesGoBesideTheirArchiveAndKeepTheirRowsAfterSorting) {
    std::filesystem::rename(dir_.Host("three.zip"), dir_.Host("out/three.zip"));
    Open("out/three.zip");
    ClickHeader(0);
    EXPECT_EQ(Column(0), (Texts{" a.txt", " b.txt", " c.txt"}));
    ClickRow("a.txt");
    Press("cmdExtractSame");
    EXPECT_EQ(dir_.Read("out/a.txt"), "ay");
    EXPECT_EQ(dir_.Count("out"), 2U);
    EXPECT_FALSE(window_->isVisible());
    EXPECT_TRUE(ExtractionDone());
}

TEST_F(ZipWindowExtract, CheckedAllExtractsEveryEntryWhateverIsSelected) {
    Open("three.zip");
    Check("chkAll");
    ClickRow("b.txt");
    ASSERT_EQ(SelectedNames(), Texts{"b.txt"});
    picker_.folders = {"E:\\out\\"};
    Press("cmdExtract");
    EXPECT_EQ(dir_.Count("out"), 3U);
}

TEST_F(ZipWindowExtract, AWrongPasswordIsAFailureThatEachCommandEndsInItsOwnWay) {
    Open("locked.zip");
    Check("chkAll");
    Check("chkDelete");
    picker_.folders = {"E:\\out"};
    messages_.replies = {"wrong"};
    Press("cmdExtract");
    EXPECT_EQ(messages_.Ids(), (Ids{555, 525}));
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(Get<QPushButton>("cmdExtract").isEnabled());

    messages_.shown.clear();
    Press("cmdExtractSame");
    EXPECT_EQ(messages_.Ids(), Ids{555});
    EXPECT_FALSE(window_->isVisible());
    EXPECT_FALSE(ExtractionDone());
    EXPECT_TRUE(Exists("locked.zip"));
    EXPECT_FALSE(Exists("secret.txt"));
}

TEST_F(ZipWindowExtract, ProgressCountsEveryEntry) {
    Open("locked.zip");
    ClickRow("secret.txt");
    messages_.replies = {"pw"};
    QString inMidWork;
    QString hint;
    messages_.onAsk = [&] {
        inMidWork = Percentage();
        hint = Get<QLabel>("lblDest2").text();
    };
    picker_.folders = {"E:\\out"};
    Press("cmdExtract");
    EXPECT_EQ(inMidWork, QStringLiteral("33%"));
    EXPECT_FALSE(hint.isEmpty());
    EXPECT_EQ(Percentage(), QStringLiteral("100%"));
    EXPECT_EQ(dir_.Read("out/secret.txt"), "geheim");
    EXPECT_EQ(dir_.Count("out"), 1U);
}

TEST_F(ZipWindowExtract, EscapeStopsAfterTheEntryInHandAndLeavesTheWindowOpen) {
    Open("locked.zip");
    Check("chkAll");
    Check("chkDelete");
    messages_.replies = {"pw"};
    messages_.onAsk = [&] { QTest::keyClick(window_.get(), Qt::Key_Escape); };
    Press("cmdExtractSame");
    EXPECT_EQ(dir_.Read("open.txt"), "open");
    EXPECT_EQ(dir_.Read("secret.txt"), "geheim");
    EXPECT_FALSE(Exists("last.txt"));
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(messages_.Ids().empty());
    EXPECT_TRUE(Exists("locked.zip"));
    EXPECT_FALSE(ExtractionDone());
    EXPECT_EQ(Percentage(), QStringLiteral("67%"));

    // The next attempt starts afresh.
    messages_.onAsk = nullptr;
    messages_.replies = {"pw"};
    picker_.folders = {"E:\\out"};
    Check("chkDelete");
    Press("cmdExtract");
    EXPECT_EQ(dir_.Count("out"), 3U);
    EXPECT_TRUE(ExtractionDone());
}

TEST_F(ZipWindowExtract, ExitAndTheCloseButtonStopTheWorkAndThenClose) {
    const std::function<void()> kWays[] = {[&] { Press("cmdExit"); }, [&] { window_->close(); }};
    for (const auto& way : kWays) {
        Open("locked.zip");
        Check("chkAll");
        messages_.replies = {"pw"};
        messages_.onAsk = [&] {
            way();
            EXPECT_TRUE(window_->isVisible());
        };
        picker_.folders = {"E:\\out"};
        Press("cmdExtract");
        EXPECT_FALSE(window_->isVisible());
        EXPECT_EQ(dir_.Read("out/secret.txt"), "geheim");
        EXPECT_FALSE(Exists("out/last.txt"));
        EXPECT_FALSE(ExtractionDone());
        EXPECT_TRUE(messages_.Ids().empty());
        std::filesystem::remove_all(dir_.Host("out/secret.txt"));
    }
}

TEST_F(ZipWindowExtract, NothingElseCanBeStartedOrChangedWhileItWorks) {
    Open("locked.zip");
    Check("chkAll");
    messages_.replies = {"pw"};
    messages_.onAsk = [&] {
        for (const char* button : {"cmdExtract", "cmdExtractSame", "cmdOpen"})
            EXPECT_FALSE(Get<QPushButton>(button).isEnabled());
        ClickHeader(0);
        DoubleClickRow("open.txt");
        QTest::keyClick(&List(), Qt::Key_Return);
        QTest::keyClick(window_->focusWidget(), Qt::Key_Space);
    };
    picker_.folders = {"E:\\out"};
    Press("cmdExtract");
    EXPECT_EQ(Column(0)[0], " open.txt");
    EXPECT_EQ(SelectedNames().size(), 3U);
    EXPECT_TRUE(opener_.opened.empty());
    EXPECT_EQ(dir_.Count("out"), 3U);
    EXPECT_TRUE(ExtractionDone());
}

TEST_F(ZipWindowExtract, TheArchiveIsDeletedOnlyWhenAllOfItWasExtracted) {
    Open("three.zip");
    Check("chkDelete");
    ClickRow("a.txt");
    ClickRow("b.txt", Qt::ControlModifier);
    picker_.folders = {"E:\\out"};
    Press("cmdExtract");
    EXPECT_EQ(messages_.Ids(), Ids{561});
    EXPECT_TRUE(Exists("three.zip"));
    EXPECT_EQ(dir_.Count("out"), 2U);
    EXPECT_FALSE(window_->isVisible());

    Open("three.zip");
    Check("chkDelete");
    ClickRow("c.txt");
    ClickRow("b.txt", Qt::ShiftModifier);
    ASSERT_EQ(SelectedNames().size(), 3U);
    Press("cmdExtractSame");
    EXPECT_EQ(messages_.Ids(), Ids{561});
    EXPECT_FALSE(Exists("three.zip"));
    EXPECT_EQ(dir_.Read("c.txt"), "see");
}

TEST_F(ZipWindowExtract, AnArchiveThatDidNotComeOutWholeIsKept) {
    // A wrong checksum and an unknown method both leave the extraction's status at "done".
    const auto damage = [&](const std::string& archive, const std::string& script) {
        tests::RunTool(QStringLiteral("python3"),
                       {QStringLiteral("-c"), Name("import sys, zipfile\n" + script), Name(archive)},
                       dir_.Host());
    };
    damage("bad.zip", "z = zipfile.ZipFile(sys.argv[1], 'w'); z.writestr('x.txt', 'content'); z.close()\n"
                      "d = open(sys.argv[1], 'rb').read().replace(b'content', b'cOntent'); open(sys.argv[1], "
                      "'wb').write(d)");
    damage("bzip.zip", "z = zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_BZIP2)\n"
                       "z.writestr('y.txt', 'content'); z.close()");
    damage("twice.zip", "z = zipfile.ZipFile(sys.argv[1], 'w')\n"
                        "z.writestr('t.txt', 'first'); z.writestr('t.txt', 'second'); z.close()");
    for (const std::string archive : {"bad.zip", "bzip.zip", "twice.zip"}) {
        SCOPED_TRACE(archive);
        messages_.shown.clear();
        Open(archive);
        Check("chkAll");
        Check("chkDelete");
        picker_.folders = {"E:\\out"};
        Press("cmdExtract");
        EXPECT_TRUE(Exists(archive));
        EXPECT_EQ(messages_.Ids().back(), 612U);
        EXPECT_FALSE(window_->isVisible());
    }
}

} // namespace
