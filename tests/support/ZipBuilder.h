#pragma once

#include "support/PlainEncryption.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <zlib.h>

namespace tests {

inline void PutWord(std::string& out, std::uint32_t value) {
    out += static_cast<char>(value & 0xFF);
    out += static_cast<char>(value >> 8 & 0xFF);
}

inline void PutDoubleWord(std::string& out, std::uint32_t value) {
    PutWord(out, value & 0xFFFF);
    PutWord(out, value >> 16);
}

inline std::uint32_t Crc(std::string_view bytes) {
    return static_cast<std::uint32_t>(
        ::crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size())));
}

/// One entry of an archive that is built by hand; every field can be made to lie.
struct ZipEntry {
    std::string name;
    std::string stored; ///< the bytes behind the local header
    std::uint16_t method = 0;
    std::uint32_t crc = 0;
    std::uint32_t size = 0;              ///< recorded uncompressed size
    std::optional<std::uint32_t> packed; ///< recorded compressed size; nothing: the true one
    std::optional<std::uint32_t> offset; ///< recorded local header offset; nothing: the true one
    std::uint16_t flags = 0;
    std::uint16_t time = 0x5294; // 10:20:40
    std::uint16_t date = 0x3264; // 2005-03-04
    std::uint16_t madeBy = 20;
    std::uint16_t needed = 20;
    std::string extra;
    std::string comment;
    std::string localExtra;
    std::string behind; ///< bytes behind the stored ones, such as a data descriptor
    bool localSizesAreZero = false;
};

inline ZipEntry StoredEntry(std::string name, std::string content) {
    ZipEntry entry;
    entry.name = std::move(name);
    entry.crc = Crc(content);
    entry.size = static_cast<std::uint32_t>(content.size());
    entry.stored = std::move(content);
    return entry;
}

/// A raw Deflate stream by zlib; without its last block when `flush` is not Z_FINISH.
inline std::string Deflated(std::string content, int flush = Z_FINISH) {
    z_stream stream{};
    deflateInit2(&stream, 6, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    std::string out(content.size() + content.size() / 100 + 1000, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(content.data());
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, flush);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

inline ZipEntry DeflatedEntry(std::string name, const std::string& content) {
    ZipEntry entry = StoredEntry(std::move(name), content);
    entry.method = 8;
    entry.stored = Deflated(content);
    return entry;
}

/// The entry under the traditional encryption (ZIP application note, section 6.1).
inline ZipEntry Encrypted(ZipEntry entry, std::string_view password) {
    std::string plain = "elevenbytes";
    plain += static_cast<char>(entry.crc >> 24);
    entry.stored = support::PlainEncryption(password).Encrypt(plain + entry.stored);
    entry.flags |= 1;
    return entry;
}

/// Puts a ZIP file together (ZIP application note, section 4.3).
struct ZipBuilder {
    std::vector<ZipEntry> entries;
    std::string comment;
    std::optional<std::uint32_t> count; ///< recorded entries; nothing: the true number
    std::optional<std::uint32_t> directoryOffset;
    std::string beforeEnd; ///< bytes between the last central header and the end record

    std::string Bytes() const {
        std::string out;
        std::string directory;
        for (const ZipEntry& entry : entries) {
            AppendCentral(directory, entry, static_cast<std::uint32_t>(out.size()));
            AppendLocal(out, entry);
        }
        const auto start = static_cast<std::uint32_t>(out.size());
        const std::uint32_t recorded = count.value_or(static_cast<std::uint32_t>(entries.size()));
        out += directory + beforeEnd;
        PutDoubleWord(out, 0x06054B50);
        PutDoubleWord(out, 0);
        PutWord(out, recorded);
        PutWord(out, recorded);
        PutDoubleWord(out, static_cast<std::uint32_t>(directory.size()));
        PutDoubleWord(out, directoryOffset.value_or(start));
        PutWord(out, static_cast<std::uint32_t>(comment.size()));
        return out + comment;
    }

  private:
    static std::uint32_t PackedSize(const ZipEntry& entry) {
        return entry.packed.value_or(static_cast<std::uint32_t>(entry.stored.size()));
    }

    static void AppendLocal(std::string& out, const ZipEntry& entry) {
        PutDoubleWord(out, 0x04034B50);
        PutWord(out, entry.needed);
        PutWord(out, entry.flags);
        PutWord(out, entry.method);
        PutWord(out, entry.time);
        PutWord(out, entry.date);
        PutDoubleWord(out, entry.localSizesAreZero ? 0 : entry.crc);
        PutDoubleWord(out, entry.localSizesAreZero ? 0 : PackedSize(entry));
        PutDoubleWord(out, entry.localSizesAreZero ? 0 : entry.size);
        PutWord(out, static_cast<std::uint32_t>(entry.name.size()));
        PutWord(out, static_cast<std::uint32_t>(entry.localExtra.size()));
        out += entry.name + entry.localExtra + entry.stored + entry.behind;
    }

    static void AppendCentral(std::string& out, const ZipEntry& entry, std::uint32_t at) {
        PutDoubleWord(out, 0x02014B50);
        PutWord(out, entry.madeBy);
        PutWord(out, entry.needed);
        PutWord(out, entry.flags);
        PutWord(out, entry.method);
        PutWord(out, entry.time);
        PutWord(out, entry.date);
        PutDoubleWord(out, entry.crc);
        PutDoubleWord(out, PackedSize(entry));
        PutDoubleWord(out, entry.size);
        PutWord(out, static_cast<std::uint32_t>(entry.name.size()));
        PutWord(out, static_cast<std::uint32_t>(entry.extra.size()));
        PutWord(out, static_cast<std::uint32_t>(entry.comment.size()));
        PutWord(out, 0); // disk
        PutWord(out, 0); // internal attributes
        PutDoubleWord(out, 0);
        PutDoubleWord(out, entry.offset.value_or(at));
        out += entry.name + entry.extra + entry.comment;
    }
};

} // namespace tests
