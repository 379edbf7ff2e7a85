#include "ui/explorer/tree/FolderTreeModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

using Keys = std::vector<std::string>;
using Kind = ui::FolderTreeModel::NodeKind;

class FolderTree : public testing::Test {
  protected:
    void SetUp() override {
        model_.AddNodes(ui::kRootKey, Kind::kDrive, {{"E:\\", "E:\\"}});
        model_.AddNodes("E:\\", Kind::kFolder, {{"E:\\b", "b"}, {"E:\\A", "A", true}, {"E:\\c", "c"}});
        model_.AddNodes("E:\\b", Kind::kFolder, {{"E:\\b\\inner", "inner"}});
    }

    void TearDown() override { EXPECT_TRUE(model_.IsConsistent()); }

    ui::FolderTreeModel model_;
    QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(FolderTree, KeysAreUniqueAndSortWithoutRegardToCase) {
    model_.AddNodes("E:\\", Kind::kFolder, {{"E:\\b", "b"}, {"E:\\0", "0"}});
    model_.AddNodes("F:\\", Kind::kFolder, {{"F:\\x", "x"}});
    EXPECT_EQ(model_.ChildKeys("E:\\"), (Keys{"E:\\b", "E:\\A", "E:\\c", "E:\\0"}));
    const QPersistentModelIndex inner = model_.IndexOf("E:\\b\\inner");
    model_.SortChildren("E:\\");
    EXPECT_EQ(model_.ChildKeys("E:\\"), (Keys{"E:\\0", "E:\\A", "E:\\b", "E:\\c"}));
    EXPECT_EQ(model_.KeyOf(inner), "E:\\b\\inner");
    EXPECT_FALSE(model_.Contains("F:\\x"));
}

TEST_F(FolderTree, ARemovedNodeTakesAllBelowItAlongAndMayComeBack) {
    model_.RemoveNode("E:\\b");
    EXPECT_FALSE(model_.Contains("E:\\b\\inner"));
    EXPECT_TRUE(model_.IsConsistent());
    model_.AddNodes("E:\\", Kind::kFolder, {{"E:\\b", "b"}});
    EXPECT_EQ(model_.ChildKeys("E:\\").size(), 3U);
    model_.RemoveNode(ui::kRootKey);
    EXPECT_TRUE(model_.Contains(ui::kRootKey));
}

TEST_F(FolderTree, ChecksAreToldAndTheRootRefusesThem) {
    QSignalSpy checked(&model_, &ui::FolderTreeModel::NodeChecked);
    QSignalSpy refused(&model_, &ui::FolderTreeModel::RootChecked);
    EXPECT_TRUE(model_.setData(model_.IndexOf("E:\\b"), Qt::Checked, Qt::CheckStateRole));
    EXPECT_FALSE(model_.setData(model_.IndexOf(ui::kRootKey), Qt::Checked, Qt::CheckStateRole));
    ASSERT_EQ(checked.size(), 1);
    EXPECT_EQ(checked[0][0].toString(), "E:\\b");
    EXPECT_EQ(refused.size(), 1);
    for (const char* key : {"E:\\A", "E:\\b"}) {
        const QModelIndex node = model_.IndexOf(key);
        EXPECT_EQ(node.data(Qt::CheckStateRole).toInt(), Qt::Checked);
        EXPECT_EQ(node.data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 255));
    }
    EXPECT_EQ(model_.IndexOf(ui::kRootKey).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    EXPECT_FALSE(model_.IndexOf("E:\\c").data(Qt::ForegroundRole).isValid());
}
