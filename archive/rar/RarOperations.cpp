#include "archive/rar/RarOperations.h"

#include "archive/rar/RarMessages.h"
#include "platform/FindFiles.h"

namespace archive {

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
bool ListEntry(platform::RarArchive& archive, const RarFile& file, RarListObserver& observer) {
    observer.RarFileFound(file);
    const int result = archive.RARProcessFile(platform::kRarSkip, "", "", nullptr);
    if (result == platform::kRarSuccess)
        state.entryNames += file.name + "\r\n";
    return result == platform::kRarSuccess || !ShowSkipStop(result);
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

RarListing ListRarArchive(const std::string& path, const std::string& password, RarListObserver& observer) {
    state = {.archive = path};
    platform::RAROpenArchiveData data{
        .ArcName = path, .OpenMode = platform::kRarOpenList, .CmtBufSize = kCommentRoom};
    const auto archive = platform::TheRarLibrary().RAROpenArchive(data);
    if (!archive)
        return ShowOpenStop(data.OpenResult, path) ? RarListing::kEndProgram : RarListing::kDone;
    if (!password.empty())
        archive->RARSetPassword(password);

    // One moment for all rows of the archive.
    state.time = LocalWriteTime(path);
    state.timeText = observer.TimeText(state.time);
    platform::RARHeaderData header;
    int result = archive->RARReadHeader(header);
    for (std::int32_t entry = 1; result == platform::kRarSuccess; ++entry) {
        if (!ListEntry(*archive, {entry, header.FileName, header.UnpSize}, observer))
            return RarListing::kEndProgram;
        result = archive->RARReadHeader(header);
    }
    return ShowHeaderStop(result) ? RarListing::kEndProgram : RarListing::kDone;
}

bool CheckRarResult(int code, const platform::RARHeaderData& header) {
    RepeatedMessages once;
    return ReportRarResult(once, code, header);
}

} // namespace archive
