#include "Mounts.h"

#include "DriveLetters.h"
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
    dir.MakeFile("sys/devices/ata1/block/sda/removable", "0\n");
    dir.MakeFile("sys/devices/ata1/block/sda/sda1/partition", "1\n");
    dir.MakeFile("sys/devices/mmc0/block/mmcblk0/removable", "1\n");
    dir.MakeFile("sys/devices/mmc0/block/mmcblk0/mmcblk0p1/partition", "1\n");
    dir.MakeFile("sys/devices/pci0/usb2/2-1/block/sdb/removable", "0\n");
    dir.MakeFile("sys/devices/pci0/usb2/2-1/block/sdb/sdb1/partition", "1\n");
    dir.MakeFolder("sys/dev/block");
    dir.MakeFolder("sys/devices/virtual/block/dm-0/slaves");
    std::filesystem::create_symlink("../../../../pci0/usb2/2-1/block/sdb/sdb1",
                                    dir.Host("sys/devices/virtual/block/dm-0/slaves/sdb1"));
    dir.MakeFolder("sys/devices/virtual/block/dm-1/slaves");
    std::filesystem::create_symlink("../../dm-1", dir.Host("sys/devices/virtual/block/dm-1/slaves/dm-1"));
    const auto link = [&](const char* name, const char* target) {
        std::filesystem::create_symlink(target, dir.Host(std::string("sys/dev/block/") + name));
        return IsRemovableDevice(dir.Host(std::string("sys/dev/block/") + name).string());
    };
    EXPECT_FALSE(link("8:0", "../../devices/ata1/block/sda"));
    EXPECT_FALSE(link("8:1", "../../devices/ata1/block/sda/sda1"));
    EXPECT_TRUE(link("179:0", "../../devices/mmc0/block/mmcblk0"));
    EXPECT_TRUE(link("179:1", "../../devices/mmc0/block/mmcblk0/mmcblk0p1"));
    EXPECT_TRUE(link("8:17", "../../devices/pci0/usb2/2-1/block/sdb/sdb1"))
        << "a USB disk that says it is fixed";
    EXPECT_TRUE(link("253:0", "../../devices/virtual/block/dm-0")) << "unlocked from an encrypted USB disk";
    EXPECT_FALSE(link("253:1", "../../devices/virtual/block/dm-1")) << "a loop ends";
    EXPECT_FALSE(link("0:5", "../../devices/none")) << "no block device at all";
}

std::string Letters(const std::vector<DriveEntry>& drives) {
    std::string letters;
    for (const DriveEntry& drive : drives)
        letters.push_back(drive.letter);
    return letters;
}

TEST(DriveLetters, AMountKeepsItsLetterWhileItStays) {
    const auto mounted = [](std::initializer_list<const char*> roots) {
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
}

TEST(DriveLetters, MoreMountsThanLetters) {
    std::vector<DriveEntry> drives = {{'C', DriveType::kFixed, "/"}};
    for (int i = 0; i < 40; ++i)
        drives.push_back({0, DriveType::kRemovable, "/m/" + std::to_string(i)});
    EXPECT_EQ(Letters(WithLetters(drives, {})), "CDEFGHIJKLMNOPQRSTUVWXYZ");
}

TEST(MountWatch, TellsOfTheFirstAndThenOnlyOfChanges) {
    MountWatch watch;
    EXPECT_TRUE(watch.HasChanged());
    EXPECT_FALSE(watch.HasChanged());
}

} // namespace
