#include "ui/explorer/tree/FolderMarks.h"

#include "support/HostFiles.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

using ui::FolderMarks;

namespace {

class Marks : public testing::Test {
  protected:
    std::string Content() const { return dir_.Read("tree.dat").value_or("(no file)"); }

    tests::TestDir dir_;
    FolderMarks marks_{"E:"};
};

} // namespace

TEST_F(Marks, AMarkFollowsItsFolderToAnotherLetterButADriveKeepsIts) {
    marks_.AddMark(FolderMarks::EntryOf("E:\\Docs\\Work"));
    marks_.AddMark(FolderMarks::EntryOf("E:\\"));
    EXPECT_EQ(Content(), "\\Docs\\Work\r\nE:\\\r\n");
    EXPECT_TRUE(marks_.IsMarked("F:\\docs\\WORK"));
    EXPECT_TRUE(marks_.IsMarked("e:\\"));
    EXPECT_FALSE(marks_.IsMarked("F:\\"));
    EXPECT_FALSE(marks_.IsMarked("E:\\Docs"));
}

TEST_F(Marks, AddingTwiceKeepsOneLineAndRemovingTakesAllOfThem) {
    dir_.MakeFile("tree.dat", "\\A\r\n\\b\r\n\\a\r\n");
    marks_.AddMark("\\B");
    EXPECT_EQ(Content(), "\\A\r\n\\b\r\n\\a\r\n");
    marks_.RemoveMark("\\A");
    EXPECT_EQ(Content(), "\\b\r\n");
    marks_.RemoveMark("\\b");
    EXPECT_EQ(Content(), "");
    EXPECT_EQ(dir_.Count(), 1U);
}

TEST_F(Marks, AListThatWouldStayTheSameIsNotWritten) {
    dir_.MakeFile("tree.dat", "\\one\r\n\\two\r\nno line end");
    tests::NameWatch watch(dir_.Host("tree.dat"));
    marks_.AddMark("\\TWO");
    marks_.RemoveMark("\\three");
    EXPECT_EQ(Content(), "\\one\r\n\\two\r\nno line end");
    EXPECT_EQ(watch.Count(), 0);
    marks_.RemoveMark("\\one");
    EXPECT_EQ(Content(), "\\two\r\n");
    EXPECT_EQ(watch.Count(), watch.IsCounting() ? 1 : 0);
}

TEST_F(Marks, LinesInTheCodePageAndInUtf8AreTheSame) {
    const tests::ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
    dir_.MakeFile("tree.dat", "\\Gr\xF6\xDF"
                              "e\r\n");
    EXPECT_TRUE(marks_.IsMarked("E:\\GRÖßE"));
    marks_.AddMark("\\größe");
    marks_.AddMark("\\日本");
    EXPECT_EQ(Content(), "\\Gr\xF6\xDF"
                         "e\r\n\\日本\r\n");
    marks_.RemoveMark("\\größe");
    EXPECT_EQ(Content(), "\\日本\r\n");
}

TEST_F(Marks, WithoutAListNothingIsMarkedAndNothingIsMade) {
    EXPECT_FALSE(marks_.IsMarked("E:\\Docs"));
    marks_.RemoveMark("\\Docs");
    EXPECT_EQ(dir_.Count(), 0U);
}

TEST_F(Marks, WhatFollowsTheLastLineEndIsNoMarkUntilALineIsAdded) {
    dir_.MakeFile("tree.dat", "\\one\r\n\\two");
    EXPECT_TRUE(marks_.IsMarked("E:\\one"));
    EXPECT_FALSE(marks_.IsMarked("E:\\two"));
    marks_.AddMark("\\three");
    EXPECT_EQ(Content(), "\\one\r\n\\two\r\n\\three\r\n");
}

TEST_F(Marks, ALongListAndRubbishInItAreKept) {
    std::string list = "\\Docs\r\n\n\r\n" + std::string(3000, '\xFF') + std::string(3, '\0') + "\r\n";
    for (int number = 0; list.size() < 10'000'000; ++number)
        list += "\\Folder " + std::to_string(number) + "\r\n";
    dir_.MakeFile("tree.dat", list);
    EXPECT_TRUE(marks_.IsMarked("E:\\docs"));
    EXPECT_TRUE(marks_.IsMarked("E:\\FOLDER 400000"));
    marks_.AddMark("\\New");
    EXPECT_EQ(Content(), list + "\\New\r\n");
    marks_.RemoveMark("\\DOCS");
    EXPECT_EQ(Content(), list.substr(7) + "\\New\r\n");
}

TEST_F(Marks, AListThatCannotBeReadOrWrittenIsNotReplaced) {
    dir_.MakeFile("tree.dat", "\\one\r\n");
    tests::Protect(dir_.Host("tree.dat"));
    marks_.AddMark("\\two");
    marks_.RemoveMark("\\one");
    EXPECT_EQ(Content(), "\\one\r\n");
    std::filesystem::permissions(dir_.Host("tree.dat"), std::filesystem::perms::all);
    std::filesystem::remove(dir_.Host("tree.dat"));
    dir_.MakeFolder("tree.dat");
    marks_.AddMark("\\Docs");
    EXPECT_TRUE(std::filesystem::is_directory(dir_.Host("tree.dat")));
    EXPECT_FALSE(marks_.IsMarked("E:\\Docs"));
    EXPECT_EQ(dir_.Count(), 1U);
}
