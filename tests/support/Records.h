#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <zlib.h>

namespace tests {

/// A little-endian number of `size` bytes.
inline std::string Number(std::uint64_t value, std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i, value >>= 8)
        bytes += static_cast<char>(value & 0xFF);
    return bytes;
}

inline std::uint32_t Crc(std::string_view bytes) {
    return static_cast<std::uint32_t>(
        ::crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

/// A raw Deflate stream by zlib, which may reach back into `history`; without its last block when `flush` is
/// not Z_FINISH.
inline std::string Deflated(std::string_view content, int flush = Z_FINISH, std::string_view history = {}) {
    const auto bytesOf = [](std::string_view text) {
        return const_cast<Bytef*>(reinterpret_cast<const Bytef*>(text.data()));
    };
    z_stream stream{};
    deflateInit2(&stream, 6, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    if (!history.empty())
        deflateSetDictionary(&stream, bytesOf(history), static_cast<uInt>(history.size()));
    std::string out(content.size() + content.size() / 100 + 1000, '\0');
    stream.next_in = bytesOf(content);
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, flush);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

} // namespace tests
