#include "ui/explorer/list/FileListModel.h"

#include "support/HostFiles.h"
#include "support/TestDir.h"
#include "ui/explorer/list/ListFolderFiles.h"

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

class FileList : public testing::Test {
  protected:
    void Add(const char* name, bool isFolder, std::uint64_t size = 0, ui::PackedTime modified = 0) {
        ui::FileRow row;
        row.name = QString::fromLatin1(name);
        row.sortName = row.name.toUpper();
        row.isFolder = isFolder;
        row.size = size;
        row.modified = modified;
        row.kind = kinds_.KindOf(name, isFolder);
        row.isCabinet = row.name.endsWith(QLatin1String(".cab"), Qt::CaseInsensitive);
        rows_.push_back(row);
    }

    void Fill() { model_.SetRows("E:\\Docs\\", rows_); }

    Names Column(int column) const {
        Names texts;
        for (int row = 0; row < model_.rowCount(); ++row)
            texts.push_back(model_.index(row, column).data().toString().toStdString());
        return texts;
    }

    Names Sorted(int column, Qt::SortOrder order) {
        model_.sort(column, order);
        EXPECT_TRUE(model_.IsConsistent());
        return Column(ui::FileListModel::kName);
    }

    ui::FileKinds kinds_;
    std::vector<ui::FileRow> rows_;
    ui::FileListModel model_{kinds_};
    QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

/// The rows of a folder on the test's drive, by name.
struct Listing {
    explicit Listing(const tests::TestDir&) : rows(ui::ListFolderFiles("E:\\", kinds, [] { return true; })) {}

    const ui::FileRow* Find(const char* name) const {
        for (const ui::FileRow& row : rows) {
            if (row.name == QLatin1String(name))
                return &row;
        }
        return nullptr;
    }

    ui::FileKinds kinds;
    std::vector<ui::FileRow> rows;
};

} // namespace

TEST_F(FileList, SizesAndDatesSortByTheirKeysAndNotByTheirTexts) {
    Add("big", false, 1000, 20070201000000);
    Add("small", false, 999, 20070131235959);
    Add("huge", false, 3ULL << 30, 20061231000000);
    Add("large", false, 2ULL << 30, 20080101000000);
    Add("folder", true, 0, 20050101000000);
    Fill();
    EXPECT_EQ(Sorted(ui::FileListModel::kSize, Qt::AscendingOrder),
              (Names{"folder", "small", "big", "large", "huge"}));
    EXPECT_EQ(Sorted(ui::FileListModel::kSize, Qt::DescendingOrder),
              (Names{"huge", "large", "big", "small", "folder"}));
    EXPECT_EQ(Sorted(ui::FileListModel::kModified, Qt::AscendingOrder),
              (Names{"folder", "huge", "small", "big", "large"}));
}

TEST_F(FileList, TypesSortByTheirTextsAndEqualOnesByName) {
    kinds_.SetEncryptedTypeText(QStringLiteral("aaa encrypted"));
    Add("z.enc", false);
    Add("b", false);
    Add("a.ENC", false);
    Add("Folder", true);
    Fill();
    EXPECT_EQ(Sorted(ui::FileListModel::kType, Qt::AscendingOrder), (Names{"b", "a.ENC", "z.enc", "Folder"}));
    EXPECT_EQ(Column(ui::FileListModel::kType), (Names{"", "aaa encrypted", "aaa encrypted", "File Folder"}));
    EXPECT_EQ(Sorted(ui::FileListModel::kType, Qt::DescendingOrder),
              (Names{"Folder", "a.ENC", "z.enc", "b"}));
}

TEST_F(FileList, TheOrderStaysForLaterListingsAndSelectionsFollowTheirRows) {
    Add("a", false, 1);
    Add("b", false, 3);
    Add("c", false, 2);
    Fill();
    QItemSelectionModel selection(&model_);
    selection.select(model_.index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_EQ(Sorted(ui::FileListModel::kSize, Qt::DescendingOrder), (Names{"b", "c", "a"}));
    ASSERT_EQ(selection.selectedRows().size(), 1);
    EXPECT_EQ(selection.selectedRows().first().data().toString(), "b");

    Add("d", false, 9);
    Fill();
    EXPECT_EQ(Column(ui::FileListModel::kName), (Names{"d", "b", "c", "a"}));
}

TEST_F(FileList, OtherOrdersAndRowsMayComeWhileManyAreSorted) {
    constexpr std::uint64_t kMany = 60'000;
    for (std::uint64_t number = 0; number < kMany; ++number)
        Add(("Notes " + std::to_string(number * 7919 % kMany)).c_str(), false, number);
    int came = 0;
    const auto meanwhile = [&](const std::function<void()>& what) {
        QTimer::singleShot(0, &model_, [&came, what] {
            ++came;
            what();
        });
    };
    meanwhile([&] { model_.sort(ui::FileListModel::kSize, Qt::DescendingOrder); });
    Fill();
    EXPECT_TRUE(model_.IsConsistent());
    EXPECT_EQ(model_.Row(0).size, kMany - 1);

    QItemSelectionModel selection(&model_);
    selection.select(model_.index(7, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    meanwhile([&] { model_.sort(ui::FileListModel::kName, Qt::AscendingOrder); });
    model_.sort(ui::FileListModel::kModified, Qt::DescendingOrder);
    EXPECT_TRUE(model_.IsConsistent());
    EXPECT_EQ(model_.Row(0).size, 0U);
    ASSERT_EQ(selection.selectedRows().size(), 1);
    EXPECT_EQ(model_.Row(selection.selectedRows().first().row()).size, kMany - 8);

    meanwhile([&] { model_.SetRows("E:\\Few\\", {rows_[0], rows_[1]}); });
    Fill();
    EXPECT_EQ(model_.FullPath(0), "E:\\Few\\Notes 0") << "those rows are newer";
    Fill();
    meanwhile([&] { model_.Clear(); });
    model_.sort(ui::FileListModel::kName, Qt::DescendingOrder);
    EXPECT_EQ(model_.rowCount(), 0);
    EXPECT_EQ(came, 4) << "no message was let in while rows were sorted";
}

TEST_F(FileList, HiddenColumnsHoldPathAndSortKeys) {
    Add("old.stuff", true, 0, 20070305140709);
    Add("disk.CAB", false, 1536, 20070305140709);
    Fill();
    const auto text = [this](int row, int column) { return Column(column)[static_cast<std::size_t>(row)]; };
    EXPECT_EQ(text(0, ui::FileListModel::kType), "File Folder");
    EXPECT_EQ(text(0, ui::FileListModel::kPath), "E:\\Docs\\old.stuff");
    EXPECT_EQ(text(1, ui::FileListModel::kSortDate), "20070305140709");
    EXPECT_EQ(text(1, ui::FileListModel::kSortSize), "000000000000000001536");
    EXPECT_EQ(text(0, ui::FileListModel::kSortFile), "00old.stuff");
    EXPECT_EQ(text(1, ui::FileListModel::kSortFile), "11disk.CAB");
    EXPECT_FALSE(model_.index(0, 0).data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(model_.index(1, 0).data(Qt::ForegroundRole).value<QColor>(), QColor(0, 0, 255));
}

TEST_F(FileList, RowsAreFoundByNameOrFullPath) {
    Add("a.txt", false);
    Add("b.txt", false);
    Fill();
    EXPECT_EQ(model_.FindRow("B.TXT"), 1);
    EXPECT_EQ(model_.FindRow("e:\\docs\\b.txt"), 1);
    EXPECT_EQ(model_.FindRow("E:\\Docs\\"), -1);
    EXPECT_EQ(model_.FindRow("E:\\Other\\b.txt"), -1);
    EXPECT_EQ(model_.FindRow("b"), -1);
    EXPECT_EQ(model_.FindRow(""), -1);
}

TEST(ListFolderFiles, ListsHiddenEntriesAndLeavesOutWhatCannotBeNamed) {
    const tests::TestDir dir;
    dir.MakeFile(".hidden", "12345");
    dir.MakeFile("plain", "");
    if constexpr (tests::kNamesAreBytes) {
        dir.MakeFile("dots.", "");
        dir.MakeFile("bad\xff.txt", "");
    }
    dir.MakeFolder("sub.folder");
    dir.MakeFile("sub.folder/inside.txt");
    const Listing listing(dir);
    EXPECT_EQ(listing.rows.size(), 3U);
    const ui::FileRow* hidden = listing.Find(".hidden");
    const ui::FileRow* folder = listing.Find("sub.folder");
    ASSERT_TRUE(hidden && folder && listing.Find("plain"));
    EXPECT_EQ(hidden->size, 5U);
    EXPECT_FALSE(hidden->isFolder);
    EXPECT_TRUE(folder->isFolder);
    EXPECT_EQ(folder->size, 0U);
    EXPECT_EQ(listing.kinds.TypeText(folder->kind), "File Folder");
    EXPECT_EQ(listing.kinds.TypeText(listing.Find("plain")->kind), "");
}

TEST(ListFolderFiles, StopsWhenItIsToldToAndTakesAMissingFolderAsEmpty) {
    const tests::TestDir dir;
    for (int i = 0; i < 10; ++i)
        dir.MakeFile("f" + std::to_string(i));
    ui::FileKinds kinds;
    int asked = 0;
    EXPECT_LT(ui::ListFolderFiles("E:\\", kinds, [&] { return ++asked < 5; }).size(), 5U);
    EXPECT_EQ(asked, 5);
    EXPECT_TRUE(ui::ListFolderFiles("E:\\gone\\", kinds, [] { return true; }).empty());
    EXPECT_TRUE(ui::ListFolderFiles("", kinds, [] { return true; }).empty());
}
