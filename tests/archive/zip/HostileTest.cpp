#include "app/TextIds.h"
#include "archive/zip/ArchiveState.h"
#include "archive/zip/ZipTest.h"

#include <set>

namespace tests {
namespace {

/// Thousands of small extractions are spared the disk where the system has a folder in memory.
struct InMemory {
    ScopedVariable folder{"TMPDIR", std::filesystem::is_directory("/dev/shm")
                                        ? "/dev/shm"
                                        : std::filesystem::temp_directory_path().string()};
};

/// Archives that were cut or altered must end cleanly, with every member consistent and nothing outside the
/// target.
class HostileTest : private InMemory, public ZipTest {
  protected:
    static ZipBuilder Sample() {
        ZipBuilder zip;
        ZipEntry reduced = StoredEntry("r", std::string(16, '\0'));
        reduced.method = 3;
        ZipEntry wide = DeflatedEntry("w64", std::string(300, 'w'));
        wide.method = 9;
        wide.extra = "extra";
        zip.entries = {StoredEntry("a.txt", "some text"),
                       DeflatedEntry("d/b.txt", std::string(200, 'b') + "end"),
                       StoredEntry("d/", ""),
                       reduced,
                       wide,
                       Encrypted(StoredEntry("s", "secret"), "p")};
        zip.entries[0].comment = "note";
        return zip;
    }

    static std::string Changed(std::string bytes, std::size_t at, int flip) {
        bytes[at] = static_cast<char>(bytes[at] ^ flip);
        return bytes;
    }

    void Check(const std::string& bytes) {
        messages.shown.clear();
        messages.replies = {"p"};
        messages.restAnswers.assign(3, true);
        const std::int16_t status = Load(bytes);
        ASSERT_TRUE(status == 0 || status == zip::kStatusNotZip);
        const std::int32_t count = front.FileCount();
        ASSERT_LE(count, static_cast<std::int32_t>(bytes.size() / 46));
        for (std::int32_t entry = 1; entry <= count; ++entry) {
            front.FileName(entry);
            front.CommentsFile(entry);
            front.FileDateTime(entry);
        }
        ASSERT_EQ(front.FileName(count + 1), "");
        const std::int16_t result = UnPackAll();
        ASSERT_TRUE(result == 0 || result == -1 || result == -10) << result;
        ASSERT_EQ(dir.Count(), 2u) << "only the archive and the target";
        for (const std::uint32_t id : messages.Ids())
            ASSERT_TRUE(kKnown.contains(id)) << id;
        std::filesystem::remove_all(dir.Host("out"));
    }

    static inline const std::set<std::uint32_t> kKnown{
        IDS_DAMAGED_DATA,   IDS_FOLDER_NOT_MADE, IDS_UNKNOWN_RECORD, IDS_WRONG_PASSWORD, IDS_NO_LOCAL_HEADER,
        IDS_WRONG_CHECKSUM, IDS_NO_DATA,         IDS_WRONG_SIZE,     IDS_NOT_WRITTEN};
};

TEST_F(HostileTest, CutAtEveryByte) {
    const std::string bytes = Sample().Bytes();
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        SCOPED_TRACE(size);
        ASSERT_NO_FATAL_FAILURE(Check(bytes.substr(0, size)));
    }
}

TEST_F(HostileTest, EveryByteChanged) {
    ZipBuilder commented = Sample();
    commented.comment = "found by the scan";
    const std::string bytes = Sample().Bytes();
    const std::string scanned = commented.Bytes();
    for (std::size_t at = 0; at < scanned.size(); ++at) {
        SCOPED_TRACE(at);
        ASSERT_NO_FATAL_FAILURE(Check(Changed(scanned, at, 0xFF)));
        if (at >= bytes.size())
            continue;
        ASSERT_NO_FATAL_FAILURE(Check(Changed(bytes, at, 0x80)));
        ASSERT_NO_FATAL_FAILURE(Check(Changed(bytes, at, 0x01)));
    }
}

TEST_F(HostileTest, EntriesThatShareTheirBytesAreReadEachOnItsOwn) {
    // Every entry names the same local header, as in the archives that unfold without end.
    ZipEntry shared = DeflatedEntry("n0", std::string(100000, 'z'));
    std::vector<ZipEntry> entries{shared};
    for (int i = 1; i < 100; ++i) {
        entries.push_back(shared);
        entries.back().name = "n" + std::to_string(i);
        entries.back().offset = 0;
        entries.back().packed = static_cast<std::uint32_t>(shared.stored.size());
        entries.back().stored.clear();
    }
    Load(entries);
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(dir.Read("out/n99"), std::string(100000, 'z'));
}

} // namespace
} // namespace tests
