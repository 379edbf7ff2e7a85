// The passes over an archive: test, extract, compare.

#include "archive/output/OpenFolders.h"
#include "archive/rar/RarMessages.h"
#include "archive/rar/RarOperations.h"
#include "base/Letters.h"
#include "base/OutputPathRule.h"
#include "platform/FileReader.h"
#include "platform/Files.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace rar {

namespace {

enum class RarPass { kTest, kExtract, kCompare };

class RarExtraction {
  public:
    RarExtraction(std::string destination, std::string path, std::string password,
                  RarExtractionObserver& observer, const RarFilter& filter)
        : destination_(std::move(destination)), path_(std::move(path)), password_(std::move(password)),
          observer_(observer), filter_(filter), folders_(destination_) {}

    base::Outcome Extract() {
        const bool done = Pass(RarPass::kTest) && Pass(RarPass::kExtract);
        messages_.Finish();
        if (isStopped_)
            return base::Outcome::kStopped;
        return done && failures_ == 0 ? base::Outcome::kDone : base::Outcome::kFailed;
    }

    bool Compare() { return Pass(RarPass::kCompare) && failures_ == 0; }

  private:
    bool Pass(RarPass pass);
    bool DoEntry(RarPass pass, RarArchive& archive, std::int32_t entry);
    int Process(RarPass pass, RarArchive& archive);
    int ExtractEntry(RarArchive& archive);
    int CompareEntry(RarArchive& archive);
    bool IsInFile(std::span<const std::uint8_t> piece, std::uint64_t offset);
    bool Check(RarPass pass, int code);

    std::string destination_;
    std::string path_;
    std::string password_;
    RarExtractionObserver& observer_;
    const RarFilter& filter_;
    output::OpenFolders folders_;
    output::RepeatedMessages messages_;
    RARHeaderData header_;
    std::unique_ptr<platform::FileReader> file_; // that the entry in hand is compared with
    std::vector<std::uint8_t> buffer_;
    bool isStopped_ = false;
    int failures_ = 0;
};

/// Notes and reports a result that is none of success; whether to go on. A comparison ends with the first.
bool RarExtraction::Check(RarPass pass, int code) {
    const bool failed = code != kRarSuccess && code != kRarEndOfArchive;
    failures_ += failed;
    return pass == RarPass::kCompare ? !failed : ReportRarResult(messages_, code, header_);
}

/// Whether the extraction goes on.
bool RarExtraction::Pass(RarPass pass) {
    header_ = {.ArcName = path_};
    const unsigned mode = pass == RarPass::kTest ? kRarOpenList : kRarOpenExtract;
    RAROpenArchiveData data{.ArcName = path_, .OpenMode = mode};
    const auto archive = TheRarLibrary().RAROpenArchive(data);
    if (!archive) {
        Check(pass, data.OpenResult);
        return false;
    }
    if (!password_.empty())
        archive->RARSetPassword(password_);
    int result = archive->RARReadHeader(header_);
    for (std::int32_t entry = 1; result == kRarSuccess; ++entry) {
        if (!DoEntry(pass, *archive, entry))
            return false;
        header_ = {.ArcName = path_};
        result = archive->RARReadHeader(header_);
    }
    return Check(pass, result) && Check(pass, archive->RARCloseArchive());
}

bool RarExtraction::DoEntry(RarPass pass, RarArchive& archive, std::int32_t entry) {
    if (filter_ && !filter_(entry, header_.FileName)) {
        const int skipped = archive.RARProcessFile(kRarSkip, "", "", nullptr);
        return pass == RarPass::kTest || Check(pass, skipped);
    }
    const std::string name = base::ToLower(header_.FileName);
    observer_.EntryBegins(pass == RarPass::kTest ? "testing -" + name : name);
    std::uint64_t done = 0;
    archive.RARSetCallback([&, size = header_.UnpSize](std::span<const std::uint8_t> piece) {
        if (file_ && !IsInFile(piece, done))
            return false;
        done += piece.size();
        isStopped_ = isStopped_ || !observer_.Proceed({header_.FileName, 0, piece.size(), size});
        return !isStopped_;
    });
    const int result = Process(pass, archive);
    archive.RARSetCallback({});
    if (isStopped_)
        return false;
    if (pass == RarPass::kExtract && result == kRarSuccess)
        observer_.EntryWritten(entry);
    // The test pass tells nothing of a single entry.
    if (pass != RarPass::kTest && !Check(pass, result))
        return false;
    isStopped_ = !observer_.Proceed({.path = header_.FileName, .entries = 1});
    return !isStopped_;
}

int RarExtraction::Process(RarPass pass, RarArchive& archive) {
    if (pass == RarPass::kExtract)
        return ExtractEntry(archive);
    if (pass == RarPass::kCompare)
        return CompareEntry(archive);
    return archive.RARProcessFile(kRarTest, destination_, destination_ + header_.FileName, nullptr);
}

/// Returns the library's result code, or kRarCannotCreate when the target folder refuses the entry.
int RarExtraction::ExtractEntry(RarArchive& archive) {
    std::string target = destination_ + header_.FileName;
    if (header_.IsFolder && !target.ends_with('\\'))
        target += '\\';
    const std::size_t nameStart = target.find_last_of('\\') + 1;
    platform::OutputFolder* folder = nullptr;
    if (base::StaysInTarget(header_.FileName)) {
        const std::string below = target.substr(0, nameStart);
        folder = folders_.Last(below);
        if (!folder)
            folder = folders_.Open(below, below);
    }
    if (folder && !header_.IsFolder)
        return archive.RARProcessFile(kRarExtract, destination_, target, folder);
    const int skipped = archive.RARProcessFile(kRarSkip, "", "", nullptr);
    return folder ? skipped : kRarCannotCreate;
}

/// Returns kRarBadData when the file or folder is missing or differs.
int RarExtraction::CompareEntry(RarArchive& archive) {
    const std::string target = destination_ + header_.FileName;
    if (!base::StaysInTarget(header_.FileName))
        return kRarBadData;
    if (header_.IsFolder) {
        const int skipped = archive.RARProcessFile(kRarSkip, "", "", nullptr);
        return platform::FolderExists(target) ? skipped : kRarBadData;
    }
    base::SystemError error;
    file_ = platform::FileReader::Open(target, error);
    if (!file_ || file_->Size() != header_.UnpSize)
        return kRarBadData;
    const int result = archive.RARProcessFile(kRarTest, destination_, target, nullptr);
    file_.reset();
    return result;
}

bool RarExtraction::IsInFile(std::span<const std::uint8_t> piece, std::uint64_t offset) {
    buffer_.resize(piece.size());
    return file_->ReadAt(offset, buffer_) == piece.size() && std::ranges::equal(buffer_, piece);
}

} // namespace

base::Outcome ExtractRarArchive(const std::string& destination, const std::string& path,
                                const std::string& password, RarExtractionObserver& observer,
                                const RarFilter& filter) {
    if (!platform::FileExists(path)) {
        ShowArchiveGone(path);
        return base::Outcome::kFailed;
    }
    return RarExtraction(destination, path, password, observer, filter).Extract();
}

bool CompareRarArchive(const std::string& destination, const std::string& path, const std::string& password,
                       RarExtractionObserver& observer, const RarFilter& filter) {
    return RarExtraction(destination, path, password, observer, filter).Compare();
}

} // namespace rar
