#include "archive/zip/ZipScan.h"

#include "app/TextIds.h"
#include "archive/output/RepeatedMessages.h"
#include "archive/zip/ZipRecords.h"
#include "base/LittleEndian.h"

namespace zip {

namespace {

constexpr std::size_t kRubbishBlock = 128 * 1024;

class Scan {
  public:
    explicit Scan(ArchiveBytes& file) : file_(file) {}

    std::optional<ScannedDirectory> Run() {
        const auto found = Walk();
        if (!found && !reported_)
            Report();
        messages_.Finish();
        return found;
    }

  private:
    std::optional<ScannedDirectory> Walk() {
        std::uint32_t entries = 0;
        for (;;) {
            const auto head = file_.View(offset_, kLocalSize);
            if (head.size() < kSignatureSize)
                return std::nullopt;
            switch (base::LoadLittle32(head.data())) {
            case kCentralSignature:
                return ScannedDirectory{offset_, entries};
            case kLocalSignature: {
                if (head.size() < kLocalSize)
                    return std::nullopt;
                const LocalHeader header = ParseLocalHeader(head.first<kLocalSize>());
                if (header.compressedSize < 0)
                    return std::nullopt;
                offset_ += kLocalSize + header.textLength + static_cast<std::uint32_t>(header.compressedSize);
                if (offset_ > file_.Size())
                    return std::nullopt;
                ++entries;
                break;
            }
            case kDescriptorSignature:
                offset_ += kDescriptorSize;
                break;
            default:
                Report();
                offset_ += kSignatureSize;
                if (messages_.IsSilent(IDS_UNKNOWN_RECORD))
                    SkipRubbish();
            }
        }
    }

    void Report() {
        messages_.Report(IDS_UNKNOWN_RECORD, IDS_WARNING_TITLE);
        reported_ = true;
    }

    /// Goes on in steps of four bytes, block by block, to the next record or the end of the file.
    void SkipRubbish() {
        for (;;) {
            const auto block = file_.View(offset_, kRubbishBlock);
            std::size_t at = 0;
            for (; block.size() - at >= kSignatureSize; at += kSignatureSize) {
                const std::uint32_t word = base::LoadLittle32(block.data() + at);
                if (word == kCentralSignature || word == kLocalSignature || word == kDescriptorSignature) {
                    offset_ += at;
                    return;
                }
                Report();
            }
            offset_ += at;
            if (at == 0)
                return;
        }
    }

    ArchiveBytes& file_;
    output::RepeatedMessages messages_;
    std::uint64_t offset_ = 0;
    bool reported_ = false;
};

} // namespace

std::optional<ScannedDirectory> ScanForDirectory(ArchiveBytes& file) {
    return Scan(file).Run();
}

} // namespace zip
