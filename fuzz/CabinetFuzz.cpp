// Reads any bytes as a cabinet: its records, and every file with the engine's own MSZIP decoder and with the
// library alone, which must agree.

#include "MemoryFile.h"
#include "archive/cabinet/CabinetDirectory.h"
#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/FolderReader.h"
#include "archive/cabinet/MspackFolderDecoder.h"
#include "base/LittleEndian.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace platform;
using fuzz::MemoryFile;

constexpr std::size_t kMostEntries = 16;
constexpr std::uint32_t kMostBytes = 1u << 18;

/// Switches the checksums off, so that damaged data gets as far as the decoders.
void ClearChecksums(std::vector<std::uint8_t>& bytes, const cabinet::CabinetDirectory& directory) {
    for (const cabinet::Folder& folder : directory.Folders()) {
        std::size_t at = folder.dataOffset;
        for (unsigned block = 0; block < folder.blockCount && at + cabinet::kDataSize <= bytes.size();
             ++block) {
            base::StoreLittle32(&bytes[at], 0);
            at += cabinet::kDataSize + directory.DataReserve() + base::LoadLittle16(&bytes[at + 4]);
        }
    }
}

struct Outcome {
    base::SystemError error;
    std::vector<std::uint8_t> content;
};

cabinet::ByteSink Into(std::vector<std::uint8_t>& content) {
    return [&content](std::span<const std::uint8_t> data) {
        content.insert(content.end(), data.begin(), data.end());
        return base::SystemError{};
    };
}

Outcome ReadEntry(MemoryFile& file, const cabinet::CabinetDirectory& directory, const cabinet::Entry& entry) {
    platform::BufferedInput input(file);
    cabinet::SharedScratch scratch;
    cabinet::FolderReader reader({file, input, directory.DataReserve(), scratch},
                                 directory.Folders()[entry.folder], false);
    Outcome outcome;
    outcome.error = reader.Read(entry.offset, entry.size, Into(outcome.content));
    return outcome;
}

Outcome ReadWithLibrary(MemoryFile& file, const cabinet::CabinetDirectory& directory,
                        const cabinet::Entry& entry) {
    const cabinet::Folder& folder = directory.Folders()[entry.folder];
    Outcome outcome;
    if (std::uint64_t{entry.offset} + entry.size > folder.Capacity()) {
        outcome.error = {base::kErrorInvalidData};
        return outcome;
    }
    cabinet::MspackFolderDecoder decoder(file, folder, directory.DataReserve());
    outcome.error = decoder.Decode(entry.offset, {});
    if (!outcome.error)
        outcome.error = decoder.Decode(entry.size, Into(outcome.content));
    return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MemoryFile file({data, data + size});
    cabinet::CabinetDirectory directory;
    if (directory.Read(file))
        return 0;
    ClearChecksums(file.bytes, directory);
    if (directory.Read(file)) // what was cleared may have been records
        return 0;
    std::size_t count = 0;
    for (const cabinet::Entry& entry : directory.Entries()) {
        if (directory.Find(entry.name).empty())
            std::abort();
        if (++count > kMostEntries || entry.size > kMostBytes || entry.offset > kMostBytes)
            continue;
        const Outcome own = ReadEntry(file, directory, entry);
        const Outcome library = ReadWithLibrary(file, directory, entry);
        if (!library.error && (own.error || own.content != library.content))
            std::abort();
    }
    return 0;
}
