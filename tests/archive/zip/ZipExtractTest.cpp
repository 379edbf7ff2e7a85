#include "app/TextIds.h"
#include "archive/codec/ByteBuffer.h"
#include "archive/zip/ArchiveState.h"
#include "archive/zip/ZipTest.h"
#include "support/HostFiles.h"
#include "support/RunProgram.h"
#include "support/SampleText.h"

#include <algorithm>
#include <random>

namespace tests {
namespace {

using ZipExtractTest = ZipTest;

TEST_F(ZipExtractTest, ArchivesOfIndependentProgramsComeOutWhole) {
    const std::string prose = SampleText(5000000);
    dir.MakeFile("in/Docs/prose.txt", prose);
    // Repetitions from 60,000 bytes back, which only one of the methods can name.
    std::string far;
    std::mt19937 random(5);
    for (int i = 0; i < 60000; ++i)
        far += static_cast<char>(random());
    while (far.size() < 5000000)
        far.append(far, far.size() - 60000, 60000 - random() % 100);
    dir.MakeFile("in/far", far);
    dir.MakeFile("in/empty", "");
    dir.MakeFile("in/Docs/deep/er/bytes.bin", std::string("\0\xFF\x01", 3));
    const std::string in = "cd '" + dir.Host("in").string() + "' && ";
    for (const std::string make :
         {"zip -r -9 ../a.zip .", "zip -r -0 ../a.zip .", "zip -rD ../a.zip .", "7zz a -tzip ../a.zip .",
          "7zz a -tzip -mm=Deflate64 ../a.zip .", "python3 -m zipfile -c ../a.zip Docs empty far"}) {
        std::filesystem::remove(dir.Host("a.zip"));
        std::filesystem::remove_all(dir.Host("out"));
        ASSERT_TRUE(RunProgram(in + make)) << make;
        ASSERT_EQ(front.Get_Contents(dir.Path("a.zip")), 0);
        EXPECT_EQ(UnPackAll(), 0) << make;
        EXPECT_EQ(messages.Ids(), Ids{}) << make;
        const bool hasFolders = make.find("-rD") == make.npos;
        // Folders made for folder entries keep their letter case, those made for files are in upper case.
        const std::string docs = hasFolders ? "Docs/" : "DOCS/";
        const std::string deep = hasFolders ? "Docs/deep/er/" : "DOCS/DEEP/ER/";
        EXPECT_TRUE(dir.Read("out/" + docs + "prose.txt") == prose) << make;
        EXPECT_TRUE(dir.Read("out/far") == far) << make;
        EXPECT_EQ(dir.Read("out/" + deep + "bytes.bin"), std::string("\0\xFF\x01", 3)) << make;
        EXPECT_EQ(dir.Read("out/empty"), "") << make;
        EXPECT_EQ(Written().size(), 7u) << make;
    }
}

TEST_F(ZipExtractTest, FoldersAreMatchedWithoutRegardToCaseAndMadeInUpperCase) {
    const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "65001");
    dir.MakeFolder("out/Music");
    std::vector<std::string> expected = {"BACK/",
                                         "BACK/slash",
                                         "DOT/",
                                         "DOT/x",
                                         "Docs/",
                                         "Docs/a",
                                         "GR\u00DCN/",
                                         "GR\u00DCN/y",
                                         "Music/",
                                         "Music/NEW/",
                                         "Music/NEW/song.mp3",
                                         "two/",
                                         "two/z"};
    if constexpr (kNamesAreBytes) {
        for (const std::string name : {"TWO", "Two"}) { // of which the one in the right letter case is taken
            dir.MakeFolder("out/" + name);
            expected.push_back(name + "/");
        }
    }
    dir.MakeFolder("out/two");
    std::ranges::sort(expected);
    Load({StoredEntry("music/new/song.mp3", "la"), StoredEntry("Docs/", ""), StoredEntry("docs/a", "1"),
          StoredEntry("back\\slash", "2"), StoredEntry("./dot/./x", "3"), StoredEntry("gr\u00FCn/y", "4"),
          StoredEntry("two/z", "5")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(Written(), expected);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ZipExtractTest, AMissingTargetIsMadeAndMayLackItsLastSeparator) {
    Load({StoredEntry("a", "1"), StoredEntry("Sub/", "")});
    EXPECT_EQ(front.UnPack({false, true, false}, "E:\\new\\place"), 0);
    EXPECT_EQ(dir.Read("NEW/PLACE/a"), "1");
    EXPECT_EQ(front.UnPack({false, false, true}, "E:\\other\\"), 0);
    EXPECT_TRUE(std::filesystem::is_directory(dir.Host("other/Sub")));
}

TEST_F(ZipExtractTest, OnlySelectedEntriesAreWrittenAndAllCountForTheProgress) {
    CountingObserver observer;
    Load({StoredEntry("a", "1"), StoredEntry("b", "2"), StoredEntry("c/", ""), StoredEntry("d/e", "3")});
    EXPECT_EQ(front.UnPack({true, false, true, true, false}, dir.MakeFolder("out"), &observer), 0);
    EXPECT_EQ(Written(), (std::vector<std::string>{"b", "c/"}));
    EXPECT_EQ(observer.last, 4);
    for (const std::size_t size : {0u, 1u, 4u, 6u})
        EXPECT_EQ(front.UnPack(zip::EntrySelection(size, true), dir.Path("out"), &observer),
                  zip::kStatusNothing);
    EXPECT_EQ(observer.last, 4);
}

TEST_F(ZipExtractTest, TheObserverEndsTheExtraction) {
    CountingObserver observer([](std::int32_t entry) { return entry != 2; });
    Load({StoredEntry("a", "1"), StoredEntry("b", "2"), StoredEntry("c", "3")});
    EXPECT_EQ(UnPackAll(&observer), zip::kStatusRefused);
    EXPECT_EQ(Written(), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(zip::State().UnpackBuffer.Size(), 0u);
}

TEST_F(ZipExtractTest, DamagedEntriesAreReportedAndWritten) {
    ZipEntry altered = StoredEntry("altered", "good bytes");
    altered.stored[0] = 'f';
    ZipEntry shorter = StoredEntry("shorter", "12345678");
    shorter.size = 9;
    ZipEntry nothing = StoredEntry("nothing", "");
    nothing.crc = 5;
    ZipEntry cut = DeflatedEntry("cut", SampleText(3000));
    cut.stored.resize(cut.stored.size() / 2);
    ZipEntry endless = DeflatedEntry("endless", "small");
    endless.size = 0x7FFFFFFF;
    ZipEntry table = StoredEntry("table", "\x05\x00");
    table.method = 8;
    table.stored = "\xFF\xFF\xFF";
    table.stored[0] = '\x05';
    Load({altered, shorter, nothing, cut, endless, table, StoredEntry("fine", "fine")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(dir.Read("out/altered"), "food bytes");
    EXPECT_EQ(dir.Read("out/shorter"), "12345678");
    EXPECT_EQ(dir.Read("out/nothing"), "");
    const std::string part = dir.Read("out/cut").value_or("?");
    EXPECT_FALSE(part.empty());
    EXPECT_EQ(part.substr(0, 500), SampleText(3000).substr(0, 500));
    EXPECT_EQ(dir.Read("out/endless"), "small");
    EXPECT_EQ(dir.Read("out/table"), table.stored) << "a damaged table leaves the stored bytes";
    EXPECT_EQ(dir.Read("out/fine"), "fine");
    EXPECT_EQ(messages.Ids(),
              (Ids{IDS_WRONG_CHECKSUM, IDS_WRONG_SIZE, IDS_NO_DATA, IDS_WRONG_CHECKSUM, IDS_WRONG_SIZE,
                   IDS_WRONG_SIZE, IDS_DAMAGED_DATA, IDS_WRONG_CHECKSUM, IDS_WRONG_SIZE}));
    EXPECT_EQ(messages.shown[0].flags, app::kMessageError);
}

TEST_F(ZipExtractTest, DamagedLargeEntriesAreReportedAndWritten) {
    const std::string prose = SampleText(3 << 20);
    ZipEntry altered = DeflatedEntry("altered", prose);
    altered.crc ^= 1;
    ZipEntry longer = DeflatedEntry("longer", prose);
    longer.size -= 100;
    ZipEntry table = DeflatedEntry("table", prose);
    table.stored = Deflated(prose.substr(0, 1 << 21), Z_FULL_FLUSH) + "\x05\xFF\xFF\xFF";
    ZipEntry block = DeflatedEntry("block", prose);
    block.stored = Deflated(prose.substr(0, 1 << 21), Z_FULL_FLUSH) + "\x07";
    ZipEntry refused = DeflatedEntry("../refused", prose);
    ZipEntry copied = StoredEntry("copied", prose);
    copied.stored[1 << 21] ^= 1;
    dir.MakeFile("out/table", "what was there");
    Load({altered, longer, table, block, refused, copied});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{IDS_WRONG_CHECKSUM, IDS_WRONG_CHECKSUM, IDS_WRONG_SIZE, IDS_DAMAGED_DATA,
                                   IDS_WRONG_CHECKSUM, IDS_WRONG_SIZE, IDS_WRONG_CHECKSUM, IDS_WRONG_SIZE,
                                   IDS_NOT_WRITTEN, IDS_WRONG_CHECKSUM}));
    EXPECT_TRUE(dir.Read("out/altered") == prose);
    // A match that does not fit is left out whole.
    const std::string fitting = dir.Read("out/longer").value_or("");
    EXPECT_TRUE(prose.starts_with(fitting));
    EXPECT_GE(fitting.size(), prose.size() - 100 - 258);
    EXPECT_TRUE(dir.Read("out/table") == table.stored);
    EXPECT_TRUE(dir.Read("out/block") == prose.substr(0, 1 << 21));
    EXPECT_TRUE(dir.Read("out/copied") == copied.stored);
    EXPECT_EQ(Written().size(), 5u) << "nothing begun is left behind";
}

TEST_F(ZipExtractTest, ALargeEntryInTheWayIsReportedInItsPlace) {
    ZipEntry entry = DeflatedEntry("file/large", SampleText(3 << 20));
    entry.crc ^= 1;
    ZipEntry onFolder = entry;
    onFolder.name = "folder";
    dir.MakeFile("out/file", "keep");
    dir.MakeFolder("out/folder");
    Load({entry, onFolder});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{IDS_WRONG_CHECKSUM, IDS_FOLDER_NOT_MADE, IDS_NOT_WRITTEN,
                                   IDS_WRONG_CHECKSUM, IDS_NOT_WRITTEN}));
    EXPECT_EQ(Written(), (std::vector<std::string>{"file", "folder/"}));
}

TEST_F(ZipExtractTest, ALocalHeaderThatIsNotThereSkipsTheEntry) {
    std::vector<ZipEntry> entries;
    for (const std::uint32_t offset : {1u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        entries.push_back(StoredEntry("x" + std::to_string(offset), "x"));
        entries.back().offset = offset;
    }
    entries.push_back(StoredEntry("good", "1"));
    Load(entries);
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(),
              (Ids{IDS_NO_LOCAL_HEADER, IDS_NO_LOCAL_HEADER, IDS_NO_LOCAL_HEADER, IDS_NO_LOCAL_HEADER}));
    EXPECT_EQ(Written(), (std::vector<std::string>{"good"}));
}

TEST_F(ZipExtractTest, SizesBeyondTheFileReadWhatIsThere) {
    ZipEntry beyond = StoredEntry("beyond", "12345678");
    beyond.packed = 0x7FFFFFFF;
    ZipEntry negative = StoredEntry("negative", "12345678");
    negative.packed = 0xFFFFFFFF;
    negative.size = 0xFFFFFFFF;
    Load({negative, beyond});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{IDS_NO_DATA, IDS_WRONG_SIZE, IDS_WRONG_CHECKSUM, IDS_WRONG_SIZE}));
    EXPECT_EQ(dir.Read("out/negative"), "");
    EXPECT_EQ(dir.Read("out/beyond").value_or("").substr(0, 8), "12345678");
}

TEST_F(ZipExtractTest, RefusedMethodsSetTheStatusAndUnknownOnesArePassedOver) {
    const auto withMethod = [](std::string name, std::uint16_t method) {
        ZipEntry entry = StoredEntry(std::move(name), "data");
        entry.method = method;
        return entry;
    };
    Load({withMethod("bzip2", 12), StoredEntry("a", "1"), withMethod("ppmd", 98), withMethod("odd", 0xFFFF)});
    EXPECT_EQ(UnPackAll(), 0);
    for (const std::uint16_t method : std::initializer_list<std::uint16_t>{1, 6, 7, 10}) {
        Load({withMethod("x", method), StoredEntry("b", "2")});
        EXPECT_EQ(UnPackAll(), zip::kStatusNothing) << method;
    }
    EXPECT_EQ(Written(), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(messages.shown.empty());

    // The reducing decoder's result becomes the status: here it takes the place of a refusal before it.
    ZipEntry reduced = withMethod("reduced", 2);
    reduced.size = 0;
    reduced.crc = 0;
    Load({withMethod("x", 6), reduced});
    EXPECT_EQ(UnPackAll(), 0);
    Load({reduced, withMethod("x", 6)});
    EXPECT_EQ(UnPackAll(), zip::kStatusNothing);
}

TEST_F(ZipExtractTest, OnePasswordServesTheWholeExtraction) {
    Load({Encrypted(DeflatedEntry("a.txt", SampleText(5000)), "open sesame"),
          Encrypted(StoredEntry("b.txt", "b"), "open sesame")});
    EXPECT_TRUE(front.Encrypted(1));
    messages.replies = {"open sesame", "open sesame"};
    EXPECT_EQ(UnPackAll(), 0);
    ASSERT_EQ(messages.asked.size(), 1u);
    EXPECT_EQ(messages.asked[0].prompt, "Give Password");
    EXPECT_EQ(messages.asked[0].caption, "Password requered");
    EXPECT_TRUE(messages.asked[0].hidden);
    EXPECT_EQ(dir.Read("out/a.txt"), SampleText(5000));
    EXPECT_EQ(dir.Read("out/b.txt"), "b");
    EXPECT_EQ(UnPackAll(), 0) << "every extraction asks anew";
    EXPECT_EQ(messages.asked.size(), 2u);
}

TEST_F(ZipExtractTest, AMissingOrWrongPasswordEndsTheExtraction) {
    const ZipEntry secret = Encrypted(StoredEntry("secret", "data"), "right");
    Load({StoredEntry("before", "1"), secret, StoredEntry("after", "2")});
    for (const std::optional<std::string>& reply :
         {std::optional<std::string>(), std::optional<std::string>(""),
          std::optional<std::string>("wrong")}) {
        CountingObserver observer;
        messages.shown.clear();
        messages.replies = {reply};
        EXPECT_EQ(UnPackAll(&observer), zip::kStatusRefused);
        EXPECT_EQ(messages.Ids(), (Ids{IDS_WRONG_PASSWORD}));
        EXPECT_EQ(observer.last, 1);
        EXPECT_EQ(Written(), (std::vector<std::string>{"before"}));
        EXPECT_EQ(zip::State().UnpackBuffer.Size(), 0u);
    }
    messages.replies = {"right"};
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(dir.Read("out/secret"), "data");
}

TEST_F(ZipExtractTest, AnEncryptedEntryNeedsItsTwelveBytes) {
    ZipEntry tooShort = Encrypted(StoredEntry("short", ""), "p");
    tooShort.stored.resize(11);
    Load({Encrypted(StoredEntry("empty", ""), "p"), tooShort});
    messages.replies = {"p"};
    EXPECT_EQ(UnPackAll(), zip::kStatusRefused);
    EXPECT_EQ(messages.Ids(), (Ids{IDS_WRONG_PASSWORD}));
    EXPECT_EQ(Written(), (std::vector<std::string>{"empty"}));
    EXPECT_EQ(dir.Read("out/empty"), "");
}

TEST_F(ZipExtractTest, LaterEntriesAndNewFilesReplaceEarlierOnes) {
    dir.MakeFile("out/same", std::string(1000, 'o'));
    Load({StoredEntry("same", "first, longer"), StoredEntry("Same", "other"), StoredEntry("same", "second")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(dir.Read("out/same"), "second");
    EXPECT_EQ(dir.Read("out/Same"), kNamesAreBytes ? "other" : "second");
    EXPECT_EQ(Written().size(), kNamesAreBytes ? 2u : 1u) << "nothing else is left behind";
}

TEST_F(ZipExtractTest, FaultsThatComeOftenOfferTheRestAtOnce) {
    std::vector<ZipEntry> entries;
    for (int i = 0; i < 50; ++i) {
        entries.push_back(StoredEntry("x" + std::to_string(i), "good"));
        entries.back().crc ^= 1;
    }
    entries.push_back(StoredEntry("../escape", "x"));
    Load(entries);
    messages.restAnswers = {true};
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{IDS_WRONG_CHECKSUM, IDS_WRONG_CHECKSUM, IDS_WRONG_CHECKSUM,
                                   IDS_NOT_WRITTEN, IDS_WRONG_CHECKSUM}));
    EXPECT_EQ(Written().size(), 50u);
}

TEST_F(ZipExtractTest, AnArchiveThatIsGoneIsReportedOnce) {
    Load({StoredEntry("a", "1"), StoredEntry("b", "2")});
    std::filesystem::remove(dir.Host("a.zip"));
    EXPECT_EQ(UnPackAll(), zip::kStatusNothing);
    EXPECT_EQ(messages.shown.size(), 1u);
    EXPECT_TRUE(Written().empty());
}

} // namespace
} // namespace tests
