#include "archive/zip/ZipDirectory.h"

#include "archive/zip/ArchiveBytes.h"
#include "archive/zip/ZipRecords.h"
#include "archive/zip/ZipScan.h"
#include "platform/CodePage.h"

#include <algorithm>

namespace zip {

namespace {

std::string_view AsText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Stored bytes as UTF-8. ASCII reads the same in every code page and stays where it is.
std::string_view Converted(TextArena& texts, std::string_view stored) {
    if (std::ranges::all_of(stored, [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return stored;
    return texts.Keep(platform::AnsiToUtf8(stored));
}

/// Whether a record can only stand behind the last central header. Any other signature is taken for a damaged
/// central header and read as one.
bool EndsDirectory(std::uint32_t signature) {
    return signature == kEndSignature || signature == kEnd64Signature || signature == kDigitalSignature;
}

std::optional<ScannedDirectory> LocateDirectory(ArchiveBytes& file) {
    if (file.Size() >= kEndSize) {
        const auto bytes = file.View(file.Size() - kEndSize, kEndSize);
        if (bytes.size() == kEndSize) {
            const EndRecord end = ParseEndRecord(bytes.first<kEndSize>());
            if (end.signature == kEndSignature && end.entriesOnThisDisk >= 0)
                // Read without a sign: the directory of a file of 2 to 4 GB is where it says.
                return ScannedDirectory{static_cast<std::uint32_t>(end.directoryOffset),
                                        static_cast<std::uint32_t>(end.entriesOnThisDisk)};
        }
    }
    return ScanForDirectory(file);
}

class DirectoryReader {
  public:
    DirectoryReader(ArchiveBytes& file, const ScannedDirectory& where) : file_(file), offset_(where.offset) {
        const std::uint64_t left = file.Size() > offset_ ? file.Size() - offset_ : 0;
        directory_->entries.reserve(
            static_cast<std::size_t>(std::min<std::uint64_t>(where.entries, left / kCentralSize)));
        for (std::uint32_t entry = 0; entry < where.entries && ReadEntry(); ++entry) {
        }
        ReadComment();
    }

    std::shared_ptr<const ZipDirectory> Result() { return std::move(directory_); }

  private:
    bool ReadEntry() {
        // Names and extra fields are short nearly always: one view holds header and texts.
        constexpr std::size_t kUsual = 512;
        auto bytes = file_.View(offset_, kUsual);
        if (bytes.size() < kCentralSize)
            return false;
        CentralHeader header = ParseCentralHeader(bytes.first<kCentralSize>());
        if (EndsDirectory(header.signature))
            return false;
        const std::size_t length = kCentralSize + header.TextLength();
        if (bytes.size() < length)
            bytes = file_.View(offset_, length);
        if (bytes.size() < length)
            return false;
        const auto stored = directory_->texts.Keep(AsText(bytes.subspan(kCentralSize, header.TextLength())));
        const std::size_t extra = header.nameLength;
        const std::size_t comment = extra + header.extraLength;
        header.entry.fileName = Converted(directory_->texts, stored.substr(0, extra));
        header.entry.extraField = stored.substr(extra, header.extraLength);
        header.entry.fileComment = Converted(directory_->texts, stored.substr(comment));
        directory_->entries.push_back(header.entry);
        offset_ += length;
        return true;
    }

    void ReadComment() {
        const auto bytes = file_.View(offset_, kEndSize);
        if (bytes.size() < kEndSize)
            return;
        const EndRecord end = ParseEndRecord(bytes.first<kEndSize>());
        if (end.signature == kEndSignature && end.commentLength != 0)
            directory_->comment =
                platform::AnsiToUtf8(AsText(file_.View(offset_ + kEndSize, end.commentLength)));
    }

    ArchiveBytes& file_;
    std::uint64_t offset_;
    std::shared_ptr<ZipDirectory> directory_ = std::make_shared<ZipDirectory>();
};

} // namespace

std::shared_ptr<const ZipDirectory> ReadZipDirectory(platform::FileReader& file) {
    ArchiveBytes window(file);
    const auto where = LocateDirectory(window);
    return where ? DirectoryReader(window, *where).Result() : nullptr;
}

} // namespace zip
