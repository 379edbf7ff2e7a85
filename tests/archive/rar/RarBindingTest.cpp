#include "archive/rar/RarBinding.h"

#include "archive/rar/RarLibrary.h"
#include "platform/FindFiles.h"
#include "platform/OutputFolder.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tests {
namespace {

using namespace platform;

/// A RAR library that has only the calls everybody uses, and one with the newer ones.
class RarBindingTest : public testing::TestWithParam<const char*> {
  protected:
    std::unique_ptr<rar::RarArchive> Open(const std::string& script) {
        data.ArcName = dir.MakeFile("a.rar", script);
        data.OpenMode = rar::kRarOpenExtract;
        data.CmtBufSize = 16384;
        return library->RAROpenArchive(data);
    }

    int Extract(rar::RarArchive& archive) const {
        return archive.RARProcessFile(rar::kRarExtract, "E:\\", "E:\\" + header.FileName, folder.get());
    }

    TestDir dir;
    std::unique_ptr<rar::RarLibrary> library = rar::BindRarLibrary(GetParam());
    rar::RAROpenArchiveData data;
    rar::RARHeaderData header;
    base::SystemError error;
    std::unique_ptr<OutputFolder> folder = OutputFolder::Open("E:\\", error);
    bool isNew = GetParam() == std::string(RAR_STUB7);
};

TEST_P(RarBindingTest, ReadsRecordsAndExtracts) {
    const auto archive = Open("a.txt f content 0\nlinked l - 0\nsub d - 0\nhuge f x 0\n");
    ASSERT_EQ(archive->RARReadHeader(header), rar::kRarSuccess);
    EXPECT_EQ(header.FileName, "a.txt");
    EXPECT_EQ(header.ArcName, "E:\\a.rar");
    EXPECT_EQ(header.UnpSize, 7u);
    EXPECT_FALSE(header.IsFolder);
    EXPECT_EQ(Extract(*archive), rar::kRarSuccess);
    EXPECT_EQ(dir.Read("a.txt"), "content");
    if (isNew) {
        EXPECT_EQ(FileTimeToSystemTime(FindEntry("E:\\a.txt")->lastWrite),
                  (SystemTime{1999, 12, 31, 23, 59, 58}));
    }
    archive->RARReadHeader(header);
    EXPECT_EQ(Extract(*archive), rar::kRarCannotCreate) << "a link";
    archive->RARReadHeader(header);
    EXPECT_TRUE(header.IsFolder);
    EXPECT_EQ(archive->RARProcessFile(rar::kRarSkip, "", "", nullptr), rar::kRarSuccess);
    archive->RARReadHeader(header);
    EXPECT_EQ(header.UnpSize, (isNew ? 3ull << 32 : 0) + 1);
    EXPECT_EQ(archive->RARReadHeader(header), rar::kRarEndOfArchive);
    EXPECT_EQ(archive->RARCloseArchive(), rar::kRarSuccess);
    EXPECT_EQ(dir.Count(), 2u);
}

TEST_P(RarBindingTest, AnswersCodesAndNeverTakesNewOnesForSuccess) {
    EXPECT_FALSE(Open("open 13\n"));
    EXPECT_EQ(data.OpenResult, rar::kRarNotRar);
    EXPECT_FALSE(Open("open 22\n"));
    EXPECT_EQ(data.OpenResult, rar::kRarBadData) << "a password is missing";
    const auto archive = Open("a f old 18\nb f new 24\nc f whole 0\nd f late 122\nheaders 12\nclose 17\n");
    dir.MakeFile("a", "was here");
    for (const int code : {rar::kRarReadError, rar::kRarBadData, rar::kRarSuccess}) {
        archive->RARReadHeader(header);
        EXPECT_EQ(Extract(*archive), code);
    }
    archive->RARReadHeader(header);
    EXPECT_EQ(archive->RARProcessFile(rar::kRarSkip, "", "", nullptr), rar::kRarBadData);
    EXPECT_EQ(archive->RARReadHeader(header), rar::kRarBadData);
    EXPECT_EQ(archive->RARCloseArchive(), rar::kRarCannotClose);
    EXPECT_EQ(dir.Read("a"), "was here");
    EXPECT_EQ(dir.Count(), 3u) << "the archive, a and c";
}

TEST_P(RarBindingTest, HandsOverThePassword) {
    const auto archive = Open("a f PASSWORD 0\n");
    archive->RARSetPassword("secret");
    archive->RARReadHeader(header);
    EXPECT_EQ(Extract(*archive), rar::kRarSuccess);
    EXPECT_EQ(dir.Read("a"), "secret");
}

INSTANTIATE_TEST_SUITE_P(Libraries, RarBindingTest, testing::Values(RAR_STUB5, RAR_STUB7),
                         [](const auto& test) { return test.index == 0 ? "Old" : "New"; });

TEST(RarBinding, NewCallsGiveWideNamesAndStopInAnEntry) {
    const TestDir dir;
    const auto library = rar::BindRarLibrary(RAR_STUB7);
    rar::RAROpenArchiveData data;
    data.ArcName = dir.MakeFile("a.rar", "sub/~.txt f content 0\n");
    const auto archive = library->RAROpenArchive(data);
    rar::RARHeaderData header;
    archive->RARReadHeader(header);
    EXPECT_EQ(header.FileName, "sub\\\u4E2D.txt");
    std::size_t pieces = 0;
    archive->RARSetCallback([&](std::span<const std::uint8_t>) { return ++pieces > 1; });
    base::SystemError error;
    const auto folder = OutputFolder::Open("E:\\", error);
    EXPECT_NE(archive->RARProcessFile(rar::kRarExtract, "E:\\", "E:\\x", folder.get()), rar::kRarSuccess);
    EXPECT_EQ(pieces, 1u);
    EXPECT_EQ(dir.Count(), 1u) << "the archive alone";
}

TEST(RarBinding, ChoosesTheLibraryThatIsThere) {
    const TestDir dir;
    rar::RAROpenArchiveData data;
    data.ArcName = dir.MakeFile("a.rar", "a f content 0\n");
    const auto result = [&](const char* setting) {
        const ScopedVariable variable("PELLARION_RAR_LIBRARY", setting);
        rar::TheRarLibrary().RAROpenArchive(data);
        return data.OpenResult;
    };
    EXPECT_EQ(result(RAR_STUB5), rar::kRarSuccess);
    EXPECT_EQ(result(RAR_STUB4), rar::kRarNotRar) << "a call is missing: the program's own reader";
    EXPECT_EQ(result("/no/such/library.so"), rar::kRarNotRar);
    EXPECT_EQ(result(RAR_STUB7), rar::kRarSuccess);
    EXPECT_EQ(result(""), rar::kRarNotRar);
}

} // namespace
} // namespace tests
