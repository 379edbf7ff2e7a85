#include "archive/rar/RarBinding.h"

#include "archive/rar/RarName4.h"
#include "archive/rar/RarOutput.h"
#include "archive/rar/RarRecords.h"
#include "base/Utf8.h"
#include "platform/CodePage.h"
#include "platform/HostPath.h"
#include "platform/OutputFolder.h"
#include "platform/SharedLibrary.h"
#include "platform/Times.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace rar {

namespace {

/// The library's calls. Those without which the records fall short may be missing.
struct Calls {
    explicit Calls(const platform::SharedLibrary& library)
        : open(library.Find<OpenCall>("RAROpenArchive")),
          setPassword(library.Find<PasswordCall>("RARSetPassword")),
          readHeader(library.Find<HeaderCall>("RARReadHeader")),
          processFile(library.Find<ProcessCall>("RARProcessFile")),
          close(library.Find<CloseCall>("RARCloseArchive")),
          readHeaderEx(library.Find<HeaderCallEx>("RARReadHeaderEx")),
          setCallback(library.Find<CallbackCall>("RARSetCallback")) {}

    bool AreThere() const { return open && setPassword && readHeader && processFile && close; }

    OpenCall* open;
    PasswordCall* setPassword;
    HeaderCall* readHeader;
    ProcessCall* processFile;
    CloseCall* close;
    HeaderCallEx* readHeaderEx; ///< may be null
    CallbackCall* setCallback;  ///< may be null
};

int KnownCode(int code) {
    return code >= kRarSuccess && code <= kLastKnownCode ? code : kRarBadData;
}

template <std::size_t Size>
std::string TextOf(const char (&field)[Size]) {
    return platform::AnsiToUtf8(
        {field, static_cast<std::size_t>(std::find(field, field + Size, '\0') - field)});
}

/// Wide characters are UTF-16 units on one system and code points on the other.
template <std::size_t Size>
std::string TextOfWide(const wchar_t* field) {
    const wchar_t* end = std::find(field, field + Size, L'\0');
    if constexpr (sizeof(wchar_t) == sizeof(char16_t))
        return base::Utf8FromUtf16(std::u16string(field, end));
    std::string text;
    std::for_each(field, end, [&](wchar_t c) {
        const auto point = static_cast<char32_t>(c);
        base::AppendUtf8(text, point < 0xD800 || (point > 0xDFFF && point <= 0x10FFFF) ? point : U'?');
    });
    return text;
}

/// What the records tell of an entry beside its name.
struct EntryFacts {
    std::uint64_t size = 0;
    bool folder = false;
    bool link = false;
    std::optional<platform::FileTime> lastWrite;
};

template <typename Record>
EntryFacts FactsOf(const Record& record) {
    constexpr unsigned kTypeMask = 0xF000;
    constexpr unsigned kTypeLink = 0xA000;
    EntryFacts facts;
    facts.size = record.UnpSize;
    // The flag of a folder was part of the dictionary's size once, which is all set for a folder.
    facts.folder = (record.Flags & kFlagsOldFolder) == kFlagsOldFolder ||
                   ((record.Flags & kFlagFolder) != 0 && record.UnpSize == 0);
    facts.link = record.HostOS == kHostUnix && (record.FileAttr & kTypeMask) == kTypeLink;
    platform::FileTime local;
    if (platform::DosDateTimeToFileTime(static_cast<std::uint16_t>(record.FileTime >> 16),
                                        static_cast<std::uint16_t>(record.FileTime), local))
        facts.lastWrite = platform::LocalFileTimeToFileTime(local);
    return facts;
}

class BoundArchive final : public RarArchive {
  public:
    BoundArchive(const Calls& calls, LibraryHandle handle, std::string path)
        : calls_(calls), handle_(handle), path_(std::move(path)) {
        if (calls_.setCallback)
            calls_.setCallback(handle_, OnEvent, reinterpret_cast<std::intptr_t>(this));
    }

    ~BoundArchive() override { BoundArchive::RARCloseArchive(); }

    BoundArchive(const BoundArchive&) = delete;
    BoundArchive& operator=(const BoundArchive&) = delete;

    void RARSetPassword(const std::string& password) override {
        calls_.setPassword(handle_, platform::Utf8ToAnsi(password).data());
    }

    void RARSetCallback(RarDataCallback callback) override { callback_ = std::move(callback); }

    int RARReadHeader(RARHeaderData& header) override;
    int RARProcessFile(int operation, const std::string& destFolder, const std::string& destName,
                       platform::OutputFolder* folder) override;
    int RARCloseArchive() override;

  private:
    static int OnEvent(unsigned event, std::intptr_t user, std::intptr_t first, std::intptr_t second);
    int Read(RARHeaderData& header);
    int ReadEx(RARHeaderData& header);
    int Process(int operation, const std::string& destFolder, const std::string& destName);
    int ExtractByData(const std::string& destFolder, const std::string& destName,
                      platform::OutputFolder* folder);

    const Calls& calls_;
    LibraryHandle handle_;
    std::string path_;
    EntryFacts entry_;
    RarDataCallback callback_;
    // While an entry is extracted.
    platform::OutputFile* file_ = nullptr;
    std::uint64_t written_ = 0;
    bool writeFailed_ = false;
};

int BoundArchive::OnEvent(unsigned event, std::intptr_t user, std::intptr_t first, std::intptr_t second) {
    auto& self = *reinterpret_cast<BoundArchive*>(user);
    if (event == kEventNextVolume || event == kEventNextVolumeWide)
        return second == kVolumeFound ? kEventGoOn : kEventStop;
    if (event != kEventData)
        return kEventStop; // a password is asked for, or something new
    const std::span piece(reinterpret_cast<const std::uint8_t*>(first), static_cast<std::size_t>(second));
    self.written_ += piece.size();
    self.writeFailed_ = self.file_ && self.file_->Write(piece);
    return self.writeFailed_ || (self.callback_ && !self.callback_(piece)) ? kEventStop : kEventGoOn;
}

int BoundArchive::RARReadHeader(RARHeaderData& header) {
    const int result = KnownCode(calls_.readHeaderEx ? ReadEx(header) : Read(header));
    if (result != kRarSuccess)
        return result;
    header.FileName = WithBackslashes(std::move(header.FileName));
    header.ArcName = platform::PathFromHost(header.ArcName);
    if (header.ArcName.empty())
        header.ArcName = path_;
    header.UnpSize = entry_.size;
    header.IsFolder = entry_.folder;
    return kRarSuccess;
}

int BoundArchive::Read(RARHeaderData& header) {
    HeaderRecord record{};
    const int result = calls_.readHeader(handle_, &record);
    entry_ = FactsOf(record);
    header.ArcName = TextOf(record.ArcName);
    header.FileName = TextOf(record.FileName);
    return result;
}

int BoundArchive::ReadEx(RARHeaderData& header) {
    HeaderRecordEx record{};
    const int result = calls_.readHeaderEx(handle_, &record);
    entry_ = FactsOf(record);
    entry_.size |= std::uint64_t{record.UnpSizeHigh} << 32;
    entry_.folder = (record.Flags & kFlagFolder) != 0;
    entry_.link = entry_.link || record.RedirType != 0;
    if (record.MtimeLow != 0 || record.MtimeHigh != 0)
        entry_.lastWrite = platform::FileTime{record.MtimeLow | std::uint64_t{record.MtimeHigh} << 32};
    header.ArcName = TextOf(record.ArcName);
    header.FileName = TextOfWide<std::size(record.FileNameW)>(record.FileNameW);
    return result;
}

int BoundArchive::RARProcessFile(int operation, const std::string& destFolder, const std::string& destName,
                                 platform::OutputFolder* folder) {
    if (operation != kRarExtract)
        return Process(operation, destFolder, destName);
    if (entry_.folder || entry_.link) {
        const int skipped = Process(kRarSkip, "", "");
        return skipped == kRarSuccess ? kRarCannotCreate : skipped;
    }
    // A library without the callback writes the file itself.
    return calls_.setCallback ? ExtractByData(destFolder, destName, folder)
                              : Process(kRarExtract, destFolder, destName);
}

int BoundArchive::Process(int operation, const std::string& destFolder, const std::string& destName) {
    std::string folder = platform::LibraryPathOf(destFolder);
    std::string name = platform::LibraryPathOf(destName);
    return KnownCode(calls_.processFile(handle_, operation, folder.data(), name.data()));
}

/// Has the library test the entry and pass on its bytes, which are then written as everywhere in this
/// program.
int BoundArchive::ExtractByData(const std::string& destFolder, const std::string& destName,
                                platform::OutputFolder* folder) {
    const std::unique_ptr<platform::OutputFile> output = BeginOutput(folder, destName);
    file_ = output.get();
    written_ = 0;
    writeFailed_ = false;
    const int result = Process(file_ ? kRarTest : kRarSkip, destFolder, destName);
    file_ = nullptr;
    if (writeFailed_)
        return kRarWriteError;
    if (result != kRarSuccess)
        return result;
    if (!output)
        return kRarCannotCreate;
    return written_ == entry_.size ? CommitOutput(*output, entry_.lastWrite, false) : kRarBadData;
}

int BoundArchive::RARCloseArchive() {
    if (!handle_)
        return kRarSuccess;
    return KnownCode(calls_.close(std::exchange(handle_, nullptr)));
}

class BoundLibrary final : public RarLibrary {
  public:
    explicit BoundLibrary(std::unique_ptr<platform::SharedLibrary> library)
        : library_(std::move(library)), calls_(*library_) {}

    bool IsWhole() const { return calls_.AreThere(); }

    std::unique_ptr<RarArchive> RAROpenArchive(RAROpenArchiveData& data) override {
        const std::string path = platform::LibraryPathOf(data.ArcName);
        std::vector<char> comment(data.CmtBufSize);
        OpenRecord record{.ArcName = path.c_str(),
                          .OpenMode = data.OpenMode,
                          .OpenResult = 0,
                          .CmtBuf = comment.empty() ? nullptr : comment.data(),
                          .CmtBufSize = static_cast<unsigned>(comment.size()),
                          .CmtSize = 0,
                          .CmtState = 0};
        const LibraryHandle handle = calls_.open(&record);
        data.OpenResult = KnownCode(static_cast<int>(record.OpenResult));
        if (handle)
            return std::make_unique<BoundArchive>(calls_, handle, data.ArcName);
        if (data.OpenResult == kRarSuccess)
            data.OpenResult = kRarCannotOpen;
        return nullptr;
    }

  private:
    std::unique_ptr<platform::SharedLibrary> library_;
    Calls calls_;
};

} // namespace

std::unique_ptr<RarLibrary> BindRarLibrary(const std::string& file) {
    std::unique_ptr<platform::SharedLibrary> loaded = platform::SharedLibrary::Load(file);
    if (!loaded)
        return nullptr;
    auto library = std::make_unique<BoundLibrary>(std::move(loaded));
    return library->IsWhole() ? std::move(library) : nullptr;
}

} // namespace rar
