#include "ZipEntry.h"

#include "Compare.h"

#include <array>
#include <fstream>
#include <span>

namespace bench {

namespace {

std::size_t Number(std::span<const char> bytes, std::size_t at, std::size_t size) {
    std::size_t value = 0;
    for (std::size_t i = size; i-- > 0;)
        value = value << 8 | static_cast<std::uint8_t>(bytes[at + i]);
    return value;
}

template <std::size_t kSize>
std::array<char, kSize> ReadAt(std::ifstream& file, std::ios::off_type offset, std::ios::seekdir from) {
    std::array<char, kSize> bytes{};
    file.seekg(offset, from);
    file.read(bytes.data(), kSize);
    return bytes;
}

} // namespace

codec::ByteBuffer ReadFirstEntry(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    // The end record without a comment, the central header for the size, the local header for the start.
    const auto end = ReadAt<22>(file, -22, std::ios::end);
    const auto central = ReadAt<46>(file, static_cast<std::ios::off_type>(Number(end, 16, 4)), std::ios::beg);
    Require(Number(central, 0, 4) == 0x02014B50, "central header of " + path);
    const auto local = ReadAt<30>(file, 0, std::ios::beg);
    file.seekg(static_cast<std::ios::off_type>(Number(local, 26, 2) + Number(local, 28, 2)), std::ios::cur);
    codec::ByteBuffer stored(Number(central, 20, 4));
    file.read(reinterpret_cast<char*>(stored.Data()), static_cast<std::streamsize>(stored.Size()));
    Require(file.good(), path);
    return stored;
}

} // namespace bench
