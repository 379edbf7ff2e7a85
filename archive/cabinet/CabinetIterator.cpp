#include "archive/cabinet/CabinetIterator.h"

#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/CabinetSession.h"
#include "base/Utf8.h"
#include "platform/FileReader.h"
#include "platform/OutputFolder.h"
#include "platform/Times.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <span>
#include <vector>

namespace cabinet {

namespace {

/// For the cabinets kept open beside the one in use.
constexpr std::size_t kMostSessionMemory = 24u << 20;
constexpr std::size_t kMostSessions = 64;

std::size_t Utf16Units(std::string_view text) {
    std::size_t units = 0;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t point = base::NextCodePoint(text, at);
        units += point != base::kNotUtf8 && point > 0xFFFF ? 2 : 1;
    }
    return units;
}

/// The stored time is local; a file whose time is not a date keeps the time of writing.
platform::FileTraits TraitsOf(const Entry& entry) {
    platform::FileTraits traits;
    platform::FileTime local;
    if (platform::DosDateTimeToFileTime(entry.date, entry.time, local)) {
        const platform::FileTime utc = platform::LocalFileTimeToFileTime(local);
        traits.times = platform::FileTimes{utc, utc, utc};
    }
    traits.executable = (entry.attributes & kAttributeExecute) != 0;
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

/// What is done with the decoded bytes of one file.
using Take = std::function<base::SystemError(std::span<const std::uint8_t>)>;

base::SystemError Write(CabinetSession& session, const Entry& entry, const FILE_IN_CABINET_INFO& info,
                        const Take& progress) {
    const std::string_view target = info.FullTargetName;
    const std::string_view name = target.substr(target.find_last_of("\\/") + 1);
    base::SystemError error;
    const std::unique_ptr<platform::OutputFile> file = info.TargetFolder->CreateFile(name, error);
    if (!file)
        return error;
    error = session.ReadEntry(entry, [&](std::span<const std::uint8_t> data) {
        const base::SystemError failure = file->Write(data);
        return failure ? failure : progress(data);
    });
    return error ? error : file->Commit(TraitsOf(entry));
}

base::SystemError Compare(CabinetSession& session, const Entry& entry, const FILE_IN_CABINET_INFO& info,
                          const Take& progress) {
    base::SystemError error;
    const std::unique_ptr<platform::FileReader> file = platform::FileReader::Open(info.FullTargetName, error);
    if (!file || file->Size() != entry.size)
        return {base::kErrorCrc};
    std::vector<std::uint8_t> written;
    std::uint64_t position = 0;
    return session.ReadEntry(entry, [&](std::span<const std::uint8_t> data) {
        written.resize(data.size());
        const std::size_t count = file->ReadAt(position, written);
        position += count;
        return count == data.size() && std::ranges::equal(written, data) ? progress(data)
                                                                         : base::SystemError{base::kErrorCrc};
    });
}

} // namespace

class CabinetIterator::Implementation {
  public:
    base::SystemError Iterate(const std::string& path, Callback callback, std::uintptr_t context,
                              std::string_view name);

  private:
    /// One iteration.
    struct Run {
        CabinetSession& session;
        Callback callback;
        std::uintptr_t context;
        bool askedForNext = false;
        bool aborted = false;

        base::SystemError Notify(std::uint32_t notification, void* param1) const {
            return {callback(context, notification, param1, 0)};
        }

        base::SystemError Visit(const Entry& entry);
        base::SystemError Extract(const Entry& entry, const FILE_IN_CABINET_INFO& info, std::uint32_t answer);
        Take Progress(const Entry& entry) const;
        base::SystemError AskForNext();
    };

    CabinetSession* Session(const std::string& path, base::SystemError& error);
    void Trim(const CabinetSession* inUse);

    std::vector<std::unique_ptr<CabinetSession>> sessions_;
    std::uint64_t clock_ = 0;
};

base::SystemError CabinetIterator::Implementation::Run::Visit(const Entry& entry) {
    if (entry.continuedFromPrevious)
        return {};
    FILE_IN_CABINET_INFO info = InfoOf(entry);
    const std::uint32_t answer = callback(context, kNotifyFileInCabinet, &info, 0);
    aborted = answer == kFileOpAbort;
    const bool isWritten =
        answer == kFileOpDoIt && info.TargetFolder && Utf16Units(info.FullTargetName) < kFullTargetNameUnits;
    return isWritten || answer == kFileOpCompare ? Extract(entry, info, answer) : base::SystemError{};
}

base::SystemError CabinetIterator::Implementation::Run::Extract(const Entry& entry,
                                                                const FILE_IN_CABINET_INFO& info,
                                                                std::uint32_t answer) {
    if (entry.continuesInNext) {
        if (const base::SystemError failure = AskForNext())
            return failure;
    }
    const auto work = answer == kFileOpCompare ? Compare : Write;
    const base::SystemError error = work(session, entry, info, Progress(entry));
    FILEPATHS paths{info.FullTargetName, session.Path(), error.code};
    return Notify(kNotifyFileExtracted, &paths);
}

/// Notifies now and then of what was done of a large file.
Take CabinetIterator::Implementation::Run::Progress(const Entry& entry) const {
    constexpr std::uint64_t kStep = 1u << 20;
    return [this, progress = FILE_PROGRESS{entry.name, 0, entry.size}](
               std::span<const std::uint8_t> data) mutable -> base::SystemError {
        progress.Done += data.size();
        if (progress.Done < kStep)
            return {};
        const base::SystemError answer = Notify(kNotifyFileProgress, &progress);
        progress.Done = 0;
        return answer;
    };
}

base::SystemError CabinetIterator::Implementation::Run::AskForNext() {
    if (askedForNext)
        return {};
    askedForNext = true;
    const CabinetDirectory& directory = session.Directory();
    CABINET_INFO info{directory.NextCabinet(), directory.NextDisk(), directory.SetId(),
                      directory.CabinetNumber()};
    return Notify(kNotifyNeedNewCabinet, &info);
}

base::SystemError CabinetIterator::Implementation::Iterate(const std::string& path, Callback callback,
                                                           std::uintptr_t context, std::string_view name) {
    base::SystemError error;
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
CabinetSession* CabinetIterator::Implementation::Session(const std::string& path, base::SystemError& error) {
    const auto known =
        std::ranges::find_if(sessions_, [&](const auto& session) { return session->Path() == path; });
    if (known != sessions_.end()) {
        if ((*known)->IsCurrent()) {
            (*known)->lastUse = ++clock_;
            return known->get();
        }
        sessions_.erase(known);
    }
    std::unique_ptr<CabinetSession> session = CabinetSession::Open(path, error);
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

CabinetIterator::CabinetIterator() : implementation_(std::make_unique<Implementation>()) {}

CabinetIterator::~CabinetIterator() = default;

base::SystemError CabinetIterator::Iterate(const std::string& cabinet, Callback callback,
                                           std::uintptr_t context, std::string_view name) {
    return implementation_->Iterate(cabinet, callback, context, name);
}

} // namespace cabinet
