// What only the window of RAR archives does.

#include "app/TextIds.h"
#include "ui/archive/ArchiveWindowFixture.h"

#include <QProgressBar>

namespace {

class RarWindow : public ArchiveWindows {
  protected:
    void OpenRar(const std::vector<Item>& items) { Open(Format::kRar, {Make(Format::kRar, "x", items)}); }
};

TEST_F(RarWindow, ShowsEveryEntryInItsColumns) {
    OpenRar({{"docs/", ""},
             {"docs/1", "1"},
             {"2", "22"},
             {"500", std::string(500, '5')},
             {"1023", std::string(1023, 'x')},
             {"1024", std::string(1024, 'x')}});
    EXPECT_EQ(Column(0), (Texts{"docs", "docs\\1", "2", "500", "1023", "1024"}));
    EXPECT_EQ(Column(2), (Texts{"Directory Entry", "1", "1 KB", "1 KB", "1 KB", "1024"}));
    EXPECT_EQ(Column(1), Texts(6, rar::RarArchiveTimeText()));
    EXPECT_FALSE(Cell(0, 1).empty());
    EXPECT_EQ(Column(8), Texts(6));
}

TEST_F(RarWindow, OnlyWhatIsSelectedReachesTheTargetAndWhatWasThereStays) {
    dir_.MakeFile("b", "mine");
    OpenRar({{"a", "1"}, {"b", "2"}, {"c", "3"}, {"empty", ""}});
    Select({"c", "a"});
    Texts seen;
    onWork_ = [&] {
        connect(List().model(), &QAbstractItemModel::dataChanged, this, [&] { seen = Column(8); });
    };
    Press("cmdExtractSame");
    EXPECT_EQ(seen, (Texts{"True", "False", "True", "False"}));
    EXPECT_EQ(dir_.Read("a"), "1");
    EXPECT_EQ(dir_.Read("b"), "mine");
    EXPECT_EQ(dir_.Read("c"), "3");
    EXPECT_FALSE(dir_.Exists("empty"));
    EXPECT_EQ(Get<QProgressBar>("ProgressBar1").value(), Get<QProgressBar>("ProgressBar1").maximum());
}

TEST_F(RarWindow, FoldersAndEmptyFilesNeedNoSelectionButAreNotLost) {
    const std::vector<Item> items{{"docs/", ""}, {"docs/a", "1"}, {"empty", ""}};
    for (const bool isInTheWay : {true, false}) {
        SCOPED_TRACE(isInTheWay);
        messages_.shown.clear();
        if (isInTheWay)
            dir_.MakeFile("out/empty", "mine");
        OpenRar(items);
        Check("chkDelete");
        Select({"docs\\a"});
        picker_.folders = {"E:\\out"};
        Press("cmdExtract");
        EXPECT_EQ(messages_.Ids(), isInTheWay ? Ids{IDS_NOT_READ_BACK} : Ids());
        EXPECT_EQ(dir_.Exists("x.rar"), isInTheWay);
        EXPECT_EQ(dir_.Read("out/empty"), isInTheWay ? "mine" : "");
        EXPECT_EQ(dir_.Read("out/docs/a"), "1");
        std::filesystem::remove(dir_.Host("out/empty"));
    }
}

TEST_F(RarWindow, AnArchiveThatFailsIsKeptAndTheOthersGo) {
    tests::RarBuilder bad;
    bad.items = {{"good", "1"}, {"bad", "22"}};
    bad.items[1].crc = 1;
    dir_.MakeFile("bad.rar", bad.Bytes());
    Open(Format::kRar, {"bad.rar", Make(Format::kRar, "fine", {{"fine", "3"}})});
    Check("chkAll");
    Check("chkDelete");
    Press("cmdExtractSame");
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_RAR_BAD_DATA, IDS_NOT_READ_BACK}));
    EXPECT_TRUE(dir_.Exists("bad.rar"));
    EXPECT_FALSE(dir_.Exists("bad"));
    EXPECT_FALSE(dir_.Exists("fine.rar"));
    EXPECT_EQ(dir_.Read("fine"), "3");
    EXPECT_TRUE(ExtractionDone());
    EXPECT_FALSE(window_->isVisible());
}

TEST_F(RarWindow, AListingThatFailsEndsTheProgramAfterItsMessage) {
    dir_.MakeFile("x.rar", "not an archive");
    Open(Format::kRar, {"x.rar"});
    ASSERT_EQ(messages_.shown.size(), 1U);
    EXPECT_EQ(messages_.shown[0].text, "E:\\x.rar is not RAR archive");
    EXPECT_FALSE(window_->isVisible());
    EXPECT_TRUE(static_cast<ui::frmRarExtract&>(*window_).EndsProgram());
}

TEST_F(RarWindow, StopsInsideALargeEntryWithoutLeavingHalfOfIt) {
    OpenRar({{"big", std::string(64 << 20, 'x')}, {"next", "1"}});
    Check("chkAll");
    // Once the extraction of it has begun; the name stands there then without "testing -".
    Get<QLabel>("lblDestFile").installEventFilter(this);
    bool isStopped = false;
    onPaint_ = [&] {
        if (isStopped || Get<QLabel>("lblDestFile").text() != QLatin1String("big"))
            return;
        isStopped = true;
        QTest::keyClick(window_.get(), Qt::Key_Escape);
    };
    picker_.folders = {"E:\\out"};
    Press("cmdExtract");
    EXPECT_TRUE(isStopped);
    EXPECT_EQ(dir_.Count("out"), 0U);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_FALSE(ExtractionDone());
}

} // namespace
