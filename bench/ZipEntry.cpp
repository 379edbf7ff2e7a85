#include "ZipEntry.h"

#include "Compare.h"
#include "base/LittleEndian.h"

#include <array>
#include <fstream>

namespace bench {

namespace {

template <std::size_t kSize>
std::array<std::uint8_t, kSize> ReadAt(std::ifstream& file, std::ios::off_type offset,
                                       std::ios::seekdir from) {
    std::array<std::uint8_t, kSize> bytes{};
    file.seekg(offset, from);
    file.read(reinterpret_cast<char*>(bytes.data()), kSize);
    return bytes;
}

} // namespace

codec::ByteBuffer ReadFirstEntry(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    // The end record without a comment, the central header for the size, the local header for the start.
    const auto end = ReadAt<22>(file, -22, std::ios::end);
    const auto central =
        ReadAt<46>(file, static_cast<std::ios::off_type>(base::LoadLittle32(&end[16])), std::ios::beg);
    Require(base::LoadLittle32(&central[0]) == 0x02014B50, "central header of " + path);
    const auto local = ReadAt<30>(file, 0, std::ios::beg);
    file.seekg(
        static_cast<std::ios::off_type>(base::LoadLittle16(&local[26]) + base::LoadLittle16(&local[28])),
        std::ios::cur);
    codec::ByteBuffer stored(base::LoadLittle32(&central[20]));
    file.read(reinterpret_cast<char*>(stored.Data()), static_cast<std::streamsize>(stored.Size()));
    Require(file.good(), path);
    return stored;
}

} // namespace bench
