#include "archive/zip/EntryNames.h"

#include <array>
#include <cstddef>

namespace zip {

namespace {

constexpr std::array<std::string_view, 19> kHostSystems{
    "MS-DOS and OS/2 (FAT / VFAT / FAT32 file systems)",
    "Amiga",
    "2 - OpenVMS",
    "UNIX",
    "VM/CMS",
    "Atari ST",
    "OS/2 H.P.F.S.",
    "Macintosh",
    "Z-System",
    "CP/M",
    "Windows NTFS",
    "MVS (OS/390 - Z/OS)",
    "VSE",
    "Acorn Risc",
    "VFAT",
    "Alternate MVS",
    "BeOS",
    "Tandem",
    "OS/400",
};

constexpr std::array<std::string_view, 13> kMethods{
    "No Compression",   "Shrunk",   "Reduce Factor 1", "Reduce Factor 2", "Reduce Factor 3",
    "Reduce Factor 4",  "Imploded", "Tokenized",       "Deflated",        "Enhanced Deflating",
    "PKWARE Imploding", "Reserved", "BZip2",
};

} // namespace

std::string_view HostSystemName(std::uint16_t version) {
    const std::size_t system = version >> 8;
    return system < kHostSystems.size() ? kHostSystems[system] : "UnKnown";
}

std::string VersionText(std::uint16_t version) {
    const int tenfold = version & 0xFF;
    return std::to_string(tenfold / 10) + "." + std::to_string(tenfold % 10);
}

std::string_view MethodName(std::int16_t method) {
    const auto code = static_cast<std::size_t>(static_cast<std::uint16_t>(method));
    return code < kMethods.size() ? kMethods[code] : "Unknown";
}

} // namespace zip
