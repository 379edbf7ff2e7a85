// The two passes of an extraction.

#include "Mod_ShowDirs.h"
#include "RarMessages.h"
#include "archive/OutputPathRule.h"
#include "archive/basUnrar.h"
#include "platform/Files.h"
#include "platform/Letters.h"

namespace archive {

namespace {

using platform::kRarSuccess;

class RarExtraction {
  public:
    RarExtraction(const std::string& destination, const std::string& path, const std::string& password,
                  RarExtractionObserver& observer, const RarFilter& filter)
        : destination_(destination), path_(path), password_(password), observer_(observer), filter_(filter),
          folders_(destination) {}

    RarOutcome Run() {
        const bool done = Pass(RarPass::kTest) && Pass(RarPass::kExtract);
        messages_.Finish();
        outcome_.complete = done && failures_ == 0;
        return outcome_;
    }

  private:
    bool Pass(RarPass pass);
    bool DoEntry(RarPass pass, platform::RarArchive& archive, std::int32_t entry);
    int Extract(platform::RarArchive& archive);
    bool Check(int code);

    std::string destination_;
    std::string path_;
    std::string password_;
    RarExtractionObserver& observer_;
    const RarFilter& filter_;
    OpenFolders folders_;
    RepeatedMessages messages_;
    platform::RARHeaderData header_;
    RarOutcome outcome_;
    int failures_ = 0;
};

/// Notes and reports a result that is none of success; whether to go on.
bool RarExtraction::Check(int code) {
    failures_ += code != kRarSuccess && code != platform::kRarEndOfArchive;
    return ReportRarResult(messages_, code, header_);
}

/// Whether the extraction goes on.
bool RarExtraction::Pass(RarPass pass) {
    header_ = {.ArcName = path_};
    const unsigned mode = pass == RarPass::kTest ? platform::kRarOpenList : platform::kRarOpenExtract;
    platform::RAROpenArchiveData data{.ArcName = path_, .OpenMode = mode};
    const auto archive = platform::TheRarLibrary().RAROpenArchive(data);
    if (!archive) {
        Check(data.OpenResult);
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
    return Check(result) && Check(archive->RARCloseArchive());
}

bool RarExtraction::DoEntry(RarPass pass, platform::RarArchive& archive, std::int32_t entry) {
    if (filter_ && !filter_(entry, header_.FileName)) {
        const int skipped = archive.RARProcessFile(platform::kRarSkip, "", "", nullptr);
        return pass == RarPass::kTest || Check(skipped);
    }
    const std::string name = platform::ToLower(header_.FileName);
    observer_.EntryBegins(pass, pass == RarPass::kTest ? "testing -" + name : name);
    std::uint64_t done = 0;
    archive.RARSetCallback([&, size = header_.UnpSize](std::span<const std::uint8_t> piece) {
        done += piece.size();
        outcome_.stopped = outcome_.stopped || !observer_.EntryProgress(done, size);
        return !outcome_.stopped;
    });
    int result = kRarSuccess;
    if (pass == RarPass::kTest)
        archive.RARProcessFile(platform::kRarTest, destination_, destination_ + header_.FileName, nullptr);
    else
        result = Extract(archive);
    archive.RARSetCallback({});
    if (outcome_.stopped)
        return false;
    if (pass == RarPass::kExtract)
        outcome_.written += result == kRarSuccess;
    if (!Check(result))
        return false;
    outcome_.stopped = !observer_.EntryDone(pass);
    return !outcome_.stopped;
}

/// Answers the library's code, or the one for a file that cannot be created where the target refuses it.
int RarExtraction::Extract(platform::RarArchive& archive) {
    std::string target = destination_ + header_.FileName;
    if (header_.IsFolder && !target.ends_with('\\'))
        target += '\\';
    const std::size_t nameStart = target.find_last_of('\\') + 1;
    platform::OutputFolder* folder = nullptr;
    if (StaysInTarget(header_.FileName)) {
        const std::string below = target.substr(0, nameStart);
        folder = folders_.Last(below);
        if (!folder)
            folder = folders_.Open(below, below);
    }
    if (folder && !header_.IsFolder)
        return archive.RARProcessFile(platform::kRarExtract, destination_, target, folder);
    const int skipped = archive.RARProcessFile(platform::kRarSkip, "", "", nullptr);
    return folder ? skipped : platform::kRarCannotCreate;
}

} // namespace

RarOutcome ExtractRarArchive(const std::string& destination, const std::string& path,
                             const std::string& password, RarExtractionObserver& observer,
                             const RarFilter& filter) {
    if (!platform::FileExists(path)) {
        ShowArchiveGone(path);
        return {};
    }
    return RarExtraction(destination, path, password, observer, filter).Run();
}

} // namespace archive
