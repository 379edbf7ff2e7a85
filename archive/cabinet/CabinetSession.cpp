#include "archive/cabinet/CabinetSession.h"

namespace cabinet {
namespace {

/// For all decoders of one cabinet: eight of the largest LZX windows, or hundreds of MSZIP folders.
constexpr std::size_t kMostDecoderMemory = 20u << 20;

} // namespace

CabinetSession::CabinetSession(std::string path, std::unique_ptr<platform::FileReader> file)
    : path_(std::move(path)), file_(std::move(file)), input_(*file_) {}

std::unique_ptr<CabinetSession> CabinetSession::Open(const std::string& path, base::SystemError& error) {
    std::unique_ptr<platform::FileReader> file = platform::FileReader::Open(path, error);
    if (!file)
        return nullptr;
    std::unique_ptr<CabinetSession> session(new CabinetSession(path, std::move(file)));
    error = session->directory_.Read(*session->file_);
    return error ? nullptr : std::move(session);
}

base::SystemError CabinetSession::ReadEntry(const Entry& entry, const ByteSink& sink) {
    if (entry.continuedFromPrevious || entry.continuesInNext)
        return {base::kErrorFileNotFound}; // the rest lies in a cabinet that is not here
    FolderReader& reader = Reader(entry.folder);
    const std::size_t before = reader.Memory();
    const base::SystemError error = reader.Read(entry.offset, entry.size, sink);
    decoderMemory_ += reader.Memory() - before;
    DropDecoders(reader);
    return error;
}

FolderReader& CabinetSession::Reader(std::uint16_t folder) {
    const DataSource source{*file_, input_, directory_.DataReserve(), scratch_};
    started_.resize(directory_.Folders().size());
    FolderReader& reader =
        readers_.try_emplace(folder, source, directory_.Folders()[folder], started_[folder]).first->second;
    started_[folder] = true;
    reader.lastUse = ++clock_;
    return reader;
}

/// The readers that were not used for longest give up their decoders while there are too many.
void CabinetSession::DropDecoders(const FolderReader& inUse) {
    while (decoderMemory_ > kMostDecoderMemory) {
        auto oldest = readers_.end();
        for (auto at = readers_.begin(); at != readers_.end(); ++at) {
            if (&at->second != &inUse && at->second.Memory() > 0 &&
                (oldest == readers_.end() || at->second.lastUse < oldest->second.lastUse))
                oldest = at;
        }
        if (oldest == readers_.end())
            break;
        decoderMemory_ -= oldest->second.Memory();
        oldest->second.DropDecoder();
        if (!oldest->second.HoldsAnything())
            readers_.erase(oldest);
    }
}

} // namespace cabinet
