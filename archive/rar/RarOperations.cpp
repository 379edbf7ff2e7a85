#include "archive/rar/RarOperations.h"

#include "archive/rar/RarMessages.h"
#include "platform/FindFiles.h"

namespace rar {

namespace {

constexpr std::size_t kCommentRoom = 16384;

/// Of the archive listed last.
struct RarState {
    std::string archive;
    std::string entryNames{};
    platform::SystemTime time{};
    std::string timeText{};
};

RarState state;

platform::SystemTime LocalWriteTime(const std::string& path) {
    const auto found = platform::FindEntry(path);
    return platform::FileTimeToSystemTime(
        platform::FileTimeToLocalFileTime(found ? found->lastWrite : platform::FileTime{}));
}

/// Whether the listing goes on.
bool ListEntry(RarArchive& archive, const RarFile& file, RarListObserver& observer) {
    observer.RarFileFound(file);
    const int result = archive.RARProcessFile(kRarSkip, "", "", nullptr);
    if (result == kRarSuccess)
        state.entryNames += file.name + "\r\n";
    return result == kRarSuccess || !ShowSkipStop(result);
}

} // namespace

const std::string& CurrentRarArchive() {
    return state.archive;
}

const std::string& RarEntryNames() {
    return state.entryNames;
}

const platform::SystemTime& RarArchiveTime() {
    return state.time;
}

const std::string& RarArchiveTimeText() {
    return state.timeText;
}

base::Outcome ListRarArchive(const std::string& path, const std::string& password,
                             RarListObserver& observer) {
    state = {.archive = path};
    RAROpenArchiveData data{.ArcName = path, .OpenMode = kRarOpenList, .CmtBufSize = kCommentRoom};
    const auto archive = TheRarLibrary().RAROpenArchive(data);
    if (!archive)
        return ShowOpenStop(data.OpenResult, path) ? base::Outcome::kFailed : base::Outcome::kDone;
    if (!password.empty())
        archive->RARSetPassword(password);

    // One moment for all rows of the archive.
    state.time = LocalWriteTime(path);
    state.timeText = observer.TimeText(state.time);
    RARHeaderData header;
    int result = archive->RARReadHeader(header);
    for (std::int32_t entry = 1; result == kRarSuccess; ++entry) {
        if (!ListEntry(*archive, {entry, header.FileName, header.UnpSize}, observer))
            return base::Outcome::kFailed;
        result = archive->RARReadHeader(header);
    }
    return ShowHeaderStop(result) ? base::Outcome::kFailed : base::Outcome::kDone;
}

bool CheckRarResult(int code, const RARHeaderData& header) {
    output::RepeatedMessages once;
    return ReportRarResult(once, code, header);
}

} // namespace rar
