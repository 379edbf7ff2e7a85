#include "platform/Drives.h"

#include "support/TestDir.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;
using tests::ScopedVariable;
using tests::TestDir;

TEST(Drives, TableIsReadAgainWhenItChanges) {
    const TestDir dir;
    const std::string root = dir.Host().string();
    {
        const ScopedVariable drives("PELLARION_DRIVES", "f=cdrom:" + root + ";G=remote:" + root +
                                                            "/;H=removable:relative;nonsense;;F=fixed:" +
                                                            root + ";I=odd:" + root + ";J=ramdisk:" + root);
        EXPECT_EQ(GetDriveType("F:\\"), DriveType::kCdRom) << "the first of two";
        EXPECT_EQ(GetDriveType("G:\\"), DriveType::kRemote);
        EXPECT_EQ(GetDriveType("I:\\"), DriveType::kUnknown);
        EXPECT_EQ(GetDriveType("J:\\"), DriveType::kRamDisk);
        for (const char* none : {"H:\\", "E:\\", "", "?:\\"})
            EXPECT_EQ(GetDriveType(none), DriveType::kNoRoot) << none;
    }
    EXPECT_EQ(GetDriveType("e:\\"), DriveType::kRemovable);
    EXPECT_EQ(GetDriveType("C:\\"), DriveType::kFixed);
    const ScopedVariable noTable("PELLARION_DRIVES", "");
    EXPECT_EQ(GetDriveType("C:\\"), DriveType::kFixed) << "the computer's own";
}

TEST(Drives, DriveThatGoesAwayHasNoRoot) {
    const TestDir dir;
    std::filesystem::rename(dir.Host(), dir.Host().string() + "-gone");
    EXPECT_EQ(GetDriveType("E:\\"), DriveType::kNoRoot);
    EXPECT_EQ(GetDriveSpace("E:\\"), std::nullopt);
    std::filesystem::rename(dir.Host().string() + "-gone", dir.Host());
    EXPECT_EQ(GetDriveType("E:\\"), DriveType::kRemovable);
}

TEST(Drives, SpaceIsThatOfTheFileSystem) {
    const TestDir dir;
    const std::optional<DriveSpace> space = GetDriveSpace("E:\\");
    ASSERT_TRUE(space);
    const std::filesystem::space_info host = std::filesystem::space(dir.Host());
    const std::uint64_t cluster = std::uint64_t{space->bytesPerSector} * space->sectorsPerCluster;
    EXPECT_EQ(space->totalClusters, host.capacity / cluster);
    EXPECT_LE(space->freeClusters, space->totalClusters);
    EXPECT_GT(space->freeClusters, 0U);
    EXPECT_EQ(GetDriveSpace("Q:\\"), std::nullopt);
}

} // namespace
