#include "archive/rar/RarAdaptor.h"

#include "archive/rar/RarOutput.h"
#include "archive/rar/RarUnpacker.h"
#include "archive/rar/RarVolumes.h"
#include "archive/rar/RarWalk.h"

#include <new>

namespace rar {

namespace {

class AdaptedArchive final : public RarArchive {
  public:
    AdaptedArchive(const RAROpenArchiveData& data, RarAdaptor::OpenFile open)
        : volumes_(data.ArcName, std::move(open)), walk_(volumes_, data.OpenMode == kRarOpenList),
          unpacker_(volumes_) {}

    int Open() { return walk_.Open(); }

    void RARSetPassword(const std::string&) override {} // what is encrypted is not read

    void RARSetCallback(RarDataCallback callback) override { callback_ = std::move(callback); }

    int RARReadHeader(RARHeaderData& header) override;
    int RARProcessFile(int operation, const std::string& destFolder, const std::string& destName,
                       platform::OutputFolder* folder) override;

    int RARCloseArchive() override { return kRarSuccess; }

  private:
    int Process(int operation, const std::string& destName, platform::OutputFolder* folder);
    int Unpack(platform::OutputFile* file);

    RarVolumes volumes_;
    RarWalk walk_;
    RarUnpacker unpacker_;
    Entry entry_;
    RarDataCallback callback_;
};

int AdaptedArchive::RARReadHeader(RARHeaderData& header) {
    try {
        const int result = walk_.Next(entry_);
        if (result != kRarSuccess)
            return result;
        unpacker_.Meet(walk_.Format(), entry_);
    } catch (const std::bad_alloc&) {
        return kRarNoMemory;
    }
    header.ArcName = entry_.archive;
    header.FileName = entry_.header.name;
    header.UnpSize = entry_.header.size;
    header.IsFolder = entry_.header.folder;
    return kRarSuccess;
}

int AdaptedArchive::RARProcessFile(int operation, const std::string& /*destFolder*/,
                                   const std::string& destName, platform::OutputFolder* folder) {
    try {
        return Process(operation, destName, folder);
    } catch (const std::bad_alloc&) {
        return kRarNoMemory;
    }
}

int AdaptedArchive::Process(int operation, const std::string& destName, platform::OutputFolder* folder) {
    // Cut data stops nobody who skips it: the next header tells.
    if (operation == kRarSkip)
        return entry_.obstacle == kRarBadData ? kRarSuccess : entry_.obstacle;
    if (entry_.header.folder || entry_.header.link)
        return operation == kRarTest ? kRarSuccess : kRarCannotCreate;
    if (operation == kRarTest)
        return Unpack(nullptr);
    const std::unique_ptr<platform::OutputFile> file = BeginOutput(folder, destName);
    if (!file)
        return kRarCannotCreate;
    const int result = Unpack(file.get());
    const EntryHeader& header = entry_.header;
    return result == kRarSuccess ? CommitOutput(*file, header.lastWrite, header.executable) : result;
}

int AdaptedArchive::Unpack(platform::OutputFile* file) {
    if (entry_.obstacle != kRarSuccess)
        return entry_.obstacle;
    return unpacker_.Unpack([&](Bytes bytes) {
        if (file && file->Write(bytes))
            return kRarWriteError;
        return callback_ && !callback_(bytes) ? kRarBadData : kRarSuccess;
    });
}

} // namespace

std::unique_ptr<RarArchive> RarAdaptor::RAROpenArchive(RAROpenArchiveData& data) {
    try {
        auto archive = std::make_unique<AdaptedArchive>(data, open_);
        data.OpenResult = archive->Open();
        if (data.OpenResult == kRarSuccess)
            return archive;
    } catch (const std::bad_alloc&) {
        data.OpenResult = kRarNoMemory;
    }
    return nullptr;
}

} // namespace rar
