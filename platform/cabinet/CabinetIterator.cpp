#include "platform/CabinetIterator.h"

#include "CabinetFormat.h"
#include "CabinetSession.h"
#include "FileIdentity.h"
#include "Utf8.h"
#include "platform/OutputFolder.h"
#include "platform/Times.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <vector>

namespace platform {

using cabinet::CabinetSession;
using cabinet::Entry;

namespace {

/// For the cabinets kept open beside the one in use.
constexpr std::size_t kMostSessionMemory = 24u << 20;
constexpr std::size_t kMostSessions = 64;

std::size_t Utf16Units(std::string_view text) {
    std::size_t units = 0;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t point = NextCodePoint(text, at);
        units += point != kNotUtf8 && point > 0xFFFF ? 2 : 1;
    }
    return units;
}

/// The stored time is local; a file whose time is not a date keeps the time of writing.
FileTraits TraitsOf(const Entry& entry) {
    FileTraits traits;
    FileTime local;
    if (DosDateTimeToFileTime(entry.date, entry.time, local)) {
        const FileTime utc = LocalFileTimeToFileTime(local);
        traits.times = FileTimes{utc, utc, utc};
    }
    traits.executable = (entry.attributes & cabinet::kAttributeExecute) != 0;
    return traits;
}

FILE_IN_CABINET_INFO InfoOf(const Entry& entry) {
    FILE_IN_CABINET_INFO info;
    info.NameInCabinet = entry.name;
    info.FileSize = entry.size;
    info.DosDate = entry.date;
    info.DosTime = entry.time;
    info.DosAttribs = entry.attributes;
    return info;
}

SystemError Write(CabinetSession& session, const Entry& entry, const FILE_IN_CABINET_INFO& info) {
    const std::string_view target = info.FullTargetName;
    const std::string_view name = target.substr(target.find_last_of("\\/") + 1);
    SystemError error;
    const std::unique_ptr<OutputFile> file = info.TargetFolder->CreateFile(name, error);
    if (!file)
        return error;
    error = session.ReadEntry(entry, [&](std::span<const std::uint8_t> data) { return file->Write(data); });
    return error ? error : file->Commit(TraitsOf(entry));
}

} // namespace

class CabinetIterator::Implementation {
  public:
    explicit Implementation(MszipBlockDecoder decoder) : decoder_(decoder) {}

    SystemError Iterate(const std::string& path, Callback callback, std::uintptr_t context,
                        std::string_view name);

  private:
    /// One iteration.
    struct Run {
        CabinetSession& session;
        Callback callback;
        std::uintptr_t context;
        bool askedForNext = false;
        bool aborted = false;

        SystemError Notify(std::uint32_t notification, void* param1) const {
            return {callback(context, notification, param1, 0)};
        }

        SystemError Visit(const Entry& entry);
        SystemError Extract(const Entry& entry, const FILE_IN_CABINET_INFO& info);
        SystemError AskForNext();
    };

    CabinetSession* Session(const std::string& path, SystemError& error);
    void Trim(const CabinetSession* inUse);

    MszipBlockDecoder decoder_;
    std::vector<std::unique_ptr<CabinetSession>> sessions_;
    std::uint64_t clock_ = 0;
};

SystemError CabinetIterator::Implementation::Run::Visit(const Entry& entry) {
    if (entry.continuedFromPrevious)
        return {};
    FILE_IN_CABINET_INFO info = InfoOf(entry);
    const std::uint32_t answer = callback(context, kNotifyFileInCabinet, &info, 0);
    aborted = answer == kFileOpAbort;
    if (answer != kFileOpDoIt || !info.TargetFolder ||
        Utf16Units(info.FullTargetName) >= kFullTargetNameUnits)
        return {};
    return Extract(entry, info);
}

SystemError CabinetIterator::Implementation::Run::Extract(const Entry& entry,
                                                          const FILE_IN_CABINET_INFO& info) {
    if (entry.continuesInNext) {
        if (const SystemError answer = AskForNext())
            return answer;
    }
    const SystemError error = Write(session, entry, info);
    FILEPATHS paths{info.FullTargetName, session.Path(), error.code};
    return Notify(kNotifyFileExtracted, &paths);
}

SystemError CabinetIterator::Implementation::Run::AskForNext() {
    if (askedForNext)
        return {};
    askedForNext = true;
    const cabinet::CabinetDirectory& directory = session.Directory();
    CABINET_INFO info{directory.NextCabinet(), directory.NextDisk(), directory.SetId(),
                      directory.CabinetNumber()};
    return Notify(kNotifyNeedNewCabinet, &info);
}

SystemError CabinetIterator::Implementation::Iterate(const std::string& path, Callback callback,
                                                     std::uintptr_t context, std::string_view name) {
    SystemError error;
    CabinetSession* session = Session(path, error);
    if (!session)
        return error;
    const std::vector<Entry>& entries = session->Directory().Entries();
    Run run{*session, callback, context};
    if (name.empty()) {
        for (std::size_t i = 0; i < entries.size() && !error && !run.aborted; ++i)
            error = run.Visit(entries[i]);
    } else {
        for (const std::size_t i : session->Directory().Find(name)) {
            if (!error && !run.aborted)
                error = run.Visit(entries[i]);
        }
    }
    if (!error && !run.aborted && session->Directory().HasNext())
        error = run.AskForNext();
    Trim(session);
    return error;
}

/// The session of a cabinet, opened anew when the file is another one than before.
CabinetSession* CabinetIterator::Implementation::Session(const std::string& path, SystemError& error) {
    const auto known =
        std::ranges::find_if(sessions_, [&](const auto& session) { return session->Path() == path; });
    const std::optional<FileIdentity> identity = IdentityOf(path, error);
    if (known != sessions_.end()) {
        if (identity && (*known)->Identity() == *identity) {
            (*known)->lastUse = ++clock_;
            return known->get();
        }
        sessions_.erase(known);
    }
    if (!identity)
        return nullptr;
    std::unique_ptr<CabinetSession> session = CabinetSession::Open(path, *identity, decoder_, error);
    if (!session)
        return nullptr;
    session->lastUse = ++clock_;
    sessions_.push_back(std::move(session));
    return sessions_.back().get();
}

/// Closes the cabinets that were not used for longest until the rest is small.
void CabinetIterator::Implementation::Trim(const CabinetSession* inUse) {
    const auto memory = [&] {
        return std::accumulate(sessions_.begin(), sessions_.end(), std::size_t{0},
                               [](std::size_t sum, const auto& session) { return sum + session->Memory(); });
    };
    while (sessions_.size() > 1 && (sessions_.size() > kMostSessions || memory() > kMostSessionMemory)) {
        const auto oldest = std::ranges::min_element(sessions_, {}, [&](const auto& session) {
            return session.get() == inUse ? ~0ull : session->lastUse;
        });
        sessions_.erase(oldest);
    }
}

CabinetIterator::CabinetIterator(MszipBlockDecoder decoder)
    : implementation_(std::make_unique<Implementation>(decoder)) {}

CabinetIterator::~CabinetIterator() = default;

SystemError CabinetIterator::Iterate(const std::string& cabinet, Callback callback, std::uintptr_t context,
                                     std::string_view name) {
    return implementation_->Iterate(cabinet, callback, context, name);
}

} // namespace platform
