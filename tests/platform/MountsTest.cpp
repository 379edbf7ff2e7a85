#include "platform/posix/paths/Mounts.h"

#include "platform/posix/paths/DriveLetters.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;
using tests::TestDir;

TEST(Mounts, ReadsTheMountTable) {
    const std::vector<Mount> mounts =
        ParseMounts("22 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw\n"
                    "short line\n"
                    "90 22 8:17 / /media/ann/MY\\040STICK\\134\\0 rw - vfat /dev/sdb1 rw\n"
                    "91 22 8:2 /srv /bind rw - ext4 /dev/sda2 rw");
    ASSERT_EQ(mounts.size(), 3U);
    EXPECT_EQ(mounts[1].device, "8:17");
    EXPECT_EQ(mounts[1].folder, "/media/ann/MY STICK\\\\0");
    EXPECT_EQ(mounts[0].source, "/dev/sda2") << "behind an optional field";
    EXPECT_EQ(mounts[1].source, "/dev/sdb1");
    EXPECT_EQ(mounts[2].root, "/srv");
}

TEST(Mounts, DeviceIsRemovableByItsDiskOrItsBus) {
    const TestDir dir;
    const std::pair<const char*, const char*> disks[] = {
        {"ata1/block/sda", "0\n"}, {"mmc0/block/mmcblk0", "1\n"}, {"pci0/usb2/2-1/block/sdb", "0\n"}};
    for (const auto& [disk, removable] : disks) {
        dir.MakeFile(std::string(disk) + "/removable", removable);
        dir.MakeFolder(std::string(disk) + "/part1");
    }
    dir.MakeFolder("virtual/block/dm-0/slaves");
    std::filesystem::create_symlink("../../../../pci0/usb2/2-1/block/sdb/part1",
                                    dir.Host("virtual/block/dm-0/slaves/sdb1"));
    dir.MakeFolder("virtual/block/dm-1/slaves");
    std::filesystem::create_symlink("../../dm-1", dir.Host("virtual/block/dm-1/slaves/dm-1"));
    const auto isRemovable = [&](const char* device) { return IsRemovableDevice(dir.Host(device).string()); };
    EXPECT_FALSE(isRemovable("ata1/block/sda"));
    EXPECT_FALSE(isRemovable("ata1/block/sda/part1"));
    EXPECT_TRUE(isRemovable("mmc0/block/mmcblk0"));
    EXPECT_TRUE(isRemovable("mmc0/block/mmcblk0/part1"));
    EXPECT_TRUE(isRemovable("pci0/usb2/2-1/block/sdb/part1")) << "a USB disk that says it is fixed";
    EXPECT_TRUE(isRemovable("virtual/block/dm-0")) << "unlocked from an encrypted USB disk";
    EXPECT_FALSE(isRemovable("virtual/block/dm-1")) << "a loop ends";
    EXPECT_FALSE(isRemovable("none"));
}

std::string Letters(const std::vector<DriveEntry>& drives) {
    std::string letters;
    for (const DriveEntry& drive : drives)
        letters.push_back(drive.letter);
    return letters;
}

TEST(DriveLetters, AMountKeepsItsLetterWhileItStays) {
    const auto mounted = [](const std::vector<const char*>& roots) {
        std::vector<DriveEntry> drives = {{'C', DriveType::kFixed, "/"}};
        for (const char* root : roots)
            drives.push_back({0, DriveType::kRemovable, root});
        return drives;
    };
    const auto first = WithLetters(mounted({"/m/a", "/m/b"}), {});
    EXPECT_EQ(Letters(first), "CDE");
    const auto second = WithLetters(mounted({"/m/b", "/m/c"}), first);
    EXPECT_EQ(Letters(second), "CED") << "b keeps E, c takes the free D";
    const auto third = WithLetters(mounted({"/m/a", "/m/b", "/m/c"}), second);
    EXPECT_EQ(Letters(third), "CFED");
    const std::vector<const char*> roots(40, "/m/many");
    EXPECT_EQ(Letters(WithLetters(mounted(roots), {})), "CDEFGHIJKLMNOPQRSTUVWXYZ") << "more than letters";
}

TEST(MountWatch, TellsOfTheFirstAndThenOnlyOfChanges) {
    MountWatch watch;
    EXPECT_TRUE(watch.HasChanged());
    EXPECT_FALSE(watch.HasChanged());
}

} // namespace
