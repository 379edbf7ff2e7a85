#include "platform/ResourceLibrary.h"

#include "base/PeStringTable.h"
#include "support/TestDir.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

using namespace platform;
using namespace std::string_literals;
using tests::TestDir;

constexpr std::size_t kOptionalHeader = 24; // behind the signature and the COFF header

std::size_t HeaderOf(const std::string& image) {
    return static_cast<unsigned char>(image[0x3C]) + static_cast<std::size_t>(image[0x3D]) * 256;
}

/// The library of sample.rc as the linker makes it, for 64-bit processors; or turned into one for 32 bits,
/// whose optional header is 16 bytes shorter.
std::string Sample(bool is64Bit = true) {
    std::ifstream file(SAMPLE_LIBRARY, std::ios::binary);
    std::string image(std::istreambuf_iterator<char>(file), {});
    if (is64Bit)
        return image;
    const std::size_t header = HeaderOf(image);
    image.replace(header + 4, 2, "\x4C\x01"s); // the machine
    image.replace(header + kOptionalHeader, 2, "\x0B\x01"s);
    const std::size_t directories = header + kOptionalHeader + 108;
    std::memmove(&image[directories - 16], &image[directories], 4 + 16 * 8);
    return image;
}

TEST(ResourceLibrary, FindsStringsInBothKindsOfImage) {
    const std::pair<std::uint32_t, std::string> texts[] = {
        {0, "zero"},       {1, "\U0001F600"}, {2, "a\uFFFDb"},
        {3, "\uFFFD"},     {4, "a\0b"s},      {5, ""},   // an empty place in a block
        {15, "fifteen"},   {16, "sixteen"},   {100, ""}, // no such block
        {302, "Größe 日"}, {65535, "last"},   {0xFFFFFFFF, ""}};
    for (const bool is64Bit : {false, true}) {
        const TestDir dir;
        base::SystemError error{99};
        const auto library = ResourceLibrary::Load(dir.MakeFile("lib.dll", Sample(is64Bit)), error);
        ASSERT_NE(library, nullptr) << is64Bit;
        EXPECT_FALSE(error);
        std::filesystem::resize_file(dir.Host("lib.dll"), 0); // the file is not held
        for (const auto& [id, text] : texts)
            EXPECT_EQ(library->LoadString(id), text) << id;
    }
}

TEST(ResourceLibrary, WhatIsNoLibrary) {
    const TestDir dir;
    base::SystemError error;
    // No text library is as large as the last.
    for (const std::string& content : {std::string(), std::string("MZ"), std::string((16 << 20) + 1, 'x')}) {
        EXPECT_EQ(ResourceLibrary::Load(dir.MakeFile("lib.dll", content), error), nullptr);
        EXPECT_EQ(error.code, base::kErrorBadExeFormat);
    }
    EXPECT_EQ(ResourceLibrary::Load("E:\\none.dll", error), nullptr);
    EXPECT_EQ(error.code, base::kErrorFileNotFound);
}

/// All that a table gives, which is bounded by the file that it was read from.
std::size_t Total(const base::PeStringTable& table) {
    std::size_t total = 0;
    for (const std::uint32_t id : {0U, 1U, 2U, 15U, 16U, 302U, 65535U})
        total += table.Find(id).size();
    return total;
}

TEST(PeStringTable, CutAndDamagedAnywhere) {
    const std::string image = Sample();
    const std::size_t whole = Total(*base::PeStringTable::Read(image));
    for (std::size_t size = 0; size < image.size(); ++size) {
        const auto table = base::PeStringTable::Read(image.substr(0, size));
        EXPECT_TRUE(!table || Total(*table) <= whole) << size;
    }
    EXPECT_FALSE(base::PeStringTable::Read(image.substr(0, image.size() / 2)));
    // Zeros make offsets lead back to where they were reached from.
    std::size_t survivors = 0;
    for (std::size_t at = 0; at < image.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            std::string damaged = image;
            damaged[at] = static_cast<char>(value);
            const auto table = base::PeStringTable::Read(damaged);
            survivors += table && table->Find(16) == "sixteen";
            EXPECT_TRUE(!table || Total(*table) <= image.size() * 7);
        }
    }
    EXPECT_GT(survivors, image.size()) << "a damaged block does not take the others along";
}

} // namespace
