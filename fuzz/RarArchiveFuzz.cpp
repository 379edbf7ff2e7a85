// Reads any bytes as a RAR archive with the program's own reader: lists it, and extracts every entry into
// memory.

#include "FuzzSupport.h"
#include "MemoryFile.h"
#include "archive/codec/Crc32.h"
#include "archive/rar/RarAdaptor.h"
#include "archive/rar/RarBlock.h"
#include "base/LittleEndian.h"
#include "platform/OutputFolder.h"

namespace {

using namespace platform;
using fuzz::Check;

constexpr std::uint64_t kMostBytes = 1 << 20;
constexpr int kMostEntries = 64;

class CountingFile final : public OutputFile {
  public:
    CountingFile(std::uint64_t& written, bool& committed) : written_(written), committed_(committed) {}

    base::SystemError Write(std::span<const std::uint8_t> data) override {
        written_ += data.size();
        return {};
    }

    base::SystemError Commit(const FileTraits&) override {
        committed_ = true;
        return {};
    }

  private:
    std::uint64_t& written_;
    bool& committed_;
};

class CountingFolder final : public OutputFolder {
  public:
    base::SystemError WriteFile(std::string_view, std::span<const std::uint8_t>,
                                const std::optional<FileTimes>&) override {
        return {};
    }

    std::unique_ptr<OutputFile> CreateFile(std::string_view, base::SystemError&) override {
        return std::make_unique<CountingFile>(written, committed);
    }

    std::unique_ptr<OutputFolder> OpenOrCreate(std::string_view, std::string_view,
                                               base::SystemError&) override {
        return nullptr;
    }

    std::uint64_t written = 0;
    bool committed = false;
};

/// Gives every header the checksum that it should have, so that changed ones are read further.
void MendChecksums(std::vector<std::uint8_t>& bytes) {
    const bool isNew = bytes.size() > 7 && bytes[6] == 1;
    for (std::size_t at = isNew ? 8 : 7; at < bytes.size();) {
        const auto rest = std::span(bytes).subspan(at);
        const std::size_t length = isNew ? rar::HeaderLength5(rest) : rar::HeaderLength4(rest);
        if (length < rar::kHeaderStart || length > rest.size())
            return;
        const std::size_t sumSize = isNew ? 4 : 2;
        const std::uint32_t sum =
            codec::Cls_CRC32().CalcCRC32File(std::span(rest).subspan(sumSize, length - sumSize));
        base::StoreLittle(rest.data(), sum, sumSize);
        rar::Block block;
        if (!(isNew ? rar::ParseBlock5(rest.first(length), block)
                    : rar::ParseBlock4(rest.first(length), block)) ||
            block.dataSize > rest.size() - length)
            return;
        at += length + static_cast<std::size_t>(block.dataSize);
    }
}

/// Goes over the archive; every entry is dealt with by `operation`.
void GoOver(rar::RarLibrary& library, unsigned mode, int operation) {
    rar::RAROpenArchiveData data;
    data.ArcName = "E:\\a.part1.rar";
    data.OpenMode = mode;
    const auto archive = library.RAROpenArchive(data);
    Check(archive != nullptr || data.OpenResult != rar::kRarSuccess);
    rar::RARHeaderData header;
    for (int i = 0; archive && i < kMostEntries && archive->RARReadHeader(header) == rar::kRarSuccess; ++i) {
        CountingFolder folder;
        std::uint64_t unpacked = 0;
        archive->RARSetCallback([&](std::span<const std::uint8_t> piece) {
            unpacked += piece.size();
            return unpacked <= kMostBytes;
        });
        const int result = archive->RARProcessFile(operation, "E:\\", "E:\\x", &folder);
        Check(unpacked <= header.UnpSize);
        Check(folder.committed == (operation == rar::kRarExtract && result == rar::kRarSuccess));
        Check(!folder.committed || folder.written == header.UnpSize);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::uint8_t> bytes(data, data + size);
    MendChecksums(bytes);
    // One volume follows itself, twice.
    rar::RarAdaptor adaptor(
        [&](const std::string& path, base::SystemError& error) -> std::unique_ptr<FileReader> {
            if (path > "E:\\a.part3.rar") {
                error = {base::kErrorFileNotFound};
                return nullptr;
            }
            return std::make_unique<fuzz::MemoryFile>(bytes);
        });
    GoOver(adaptor, rar::kRarOpenList, rar::kRarSkip);
    GoOver(adaptor, rar::kRarOpenExtract, rar::kRarExtract);
    return 0;
}
