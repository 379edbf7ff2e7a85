#include "archive/cabinet/CabFile.h"

#include "archive/cabinet/CabErrors.h"
#include "archive/cabinet/CabFilesCallback.h"
#include "archive/cabinet/CabTargetPath.h"
#include "archive/output/OpenFolders.h"
#include "base/Letters.h"

#include <algorithm>

namespace cabinet {

namespace {

constexpr std::uintptr_t kModeList = 1;
constexpr std::uintptr_t kModeExtract = 2;
constexpr std::uintptr_t kModeCompare = 4;
constexpr std::size_t kLongestNameRead = 512;

CabResult Raise(std::uint32_t number, std::string description) {
    return {number, std::move(description)};
}

/// The name up to its first NUL, and at most kLongestNameRead bytes of it.
std::string NameOf(const FILE_IN_CABINET_INFO& info) {
    const std::size_t end = info.NameInCabinet.find('\0');
    return info.NameInCabinet.substr(0, std::min(end, kLongestNameRead));
}

bool MayBeMissingFolder(std::uint32_t number) {
    return number == base::kErrorFileNotFound || number == base::kErrorPathNotFound;
}

} // namespace

CabFile::CabFile() = default;

CabFile::~CabFile() {
    if (CurrentCabFile() == this)
        SetCurrentCabFile(nullptr);
}

CabResult CabFile::Begin(const std::string& fileFilter) {
    fileFilter_ = fileFilter;
    return CabName.empty() ? Raise(kCabErrorNoName, CabObjectErrorText(kCabErrorNoName)) : CabResult{};
}

CabResult CabFile::GetInfo(const std::string& fileFilter) {
    const CabResult begun = Begin(fileFilter);
    return begun ? Iterate(kModeList) : begun;
}

std::string CabFile::TargetOf(const std::string& fullName, const std::string& destination,
                              const std::string& namingSource) const {
    const CabTarget target = CabTargetPath(CabName, destination, namingSource, fullName);
    return StaysBelowRoot(target) ? target.Path() : std::string();
}

CabResult CabFile::Compare(const std::string& fileFilter, const std::string& destination,
                           const std::string& namingSource) {
    destination_ = destination;
    namingSource_ = namingSource;
    const CabResult begun = Begin(fileFilter);
    return begun ? Iterate(kModeCompare) : begun;
}

CabResult CabFile::Extract(const std::string& fileFilter, const std::string& destination,
                           const std::string& namingSource) {
    if (CabResult begun = Begin(fileFilter); !begun)
        return begun;
    destination_ = destination;
    namingSource_ = namingSource;
    const bool foldersWereOpen = folders_ != nullptr;
    CabResult result = Iterate(kModeExtract);
    if (foldersWereOpen && MayBeMissingFolder(result.number)) {
        // A folder that was kept open may have been deleted since the last call.
        folders_.reset();
        result = Iterate(kModeExtract);
    }
    return result;
}

CabResult CabFile::Iterate(std::uintptr_t mode) {
    SetCurrentCabFile(this);
    const base::SystemError error = iterator_.Iterate(CabName, CabIterateCallback, mode, fileFilter_);
    return error ? Raise(error.code, CabErrorText(error.code)) : CabResult{};
}

std::uint32_t CabFile::OnNotification(std::uintptr_t context, std::uint32_t notification, void* param1,
                                      std::uintptr_t /*param2*/) {
    if (notification == kNotifyFileInCabinet)
        return OnFileInCabinet(context, *static_cast<FILE_IN_CABINET_INFO*>(param1));
    if (notification == kNotifyFileExtracted) {
        const auto& paths = *static_cast<const FILEPATHS*>(param1);
        if (paths.Win32Error == kNoError && context == kModeExtract && AfterExtract)
            AfterExtract(paths.Target);
        return paths.Win32Error;
    }
    if (notification == kNotifyFileProgress)
        return OnProgress(*static_cast<const FILE_PROGRESS*>(param1));
    return kNoError; // no further cabinet is supplied
}

std::uint32_t CabFile::OnProgress(const FILE_PROGRESS& progress) const {
    const bool goesOn =
        !Observer || Observer->Proceed({progress.NameInCabinet, 0, progress.Done, progress.Size});
    return goesOn ? kNoError : kCabErrorCancelled;
}

std::uint32_t CabFile::OnFileInCabinet(std::uintptr_t mode, FILE_IN_CABINET_INFO& info) {
    const std::string name = NameOf(info);
    if (!fileFilter_.empty() && !base::EqualsNoCase(fileFilter_, name))
        return kFileOpSkip;
    if (mode == kModeList)
        return List(name, info);
    if (mode == kModeExtract)
        return Prepare(name, info);
    info.FullTargetName = TargetOf(name, destination_, namingSource_);
    return kFileOpCompare;
}

std::uint32_t CabFile::List(const std::string& name, const FILE_IN_CABINET_INFO& info) const {
    platform::FileTime fileTime;
    platform::DosDateTimeToFileTime(info.DosDate, info.DosTime, fileTime);
    const std::size_t nameStart = name.find_last_of('\\') + 1;
    if (FileFound)
        FileFound(name.substr(nameStart), name.substr(0, nameStart), info.FileSize,
                  platform::FileTimeToSystemTime(fileTime));
    return fileFilter_.empty() ? kFileOpSkip : kFileOpAbort;
}

std::uint32_t CabFile::Prepare(const std::string& name, FILE_IN_CABINET_INFO& info) {
    bool cancel = false;
    if (BeforeExtract)
        BeforeExtract(name, cancel);
    if (cancel)
        return kFileOpSkip;
    const CabTarget target = CabTargetPath(CabName, destination_, namingSource_, name);
    if (!StaysBelowRoot(target))
        return kFileOpSkip;
    if (!folders_ || foldersRoot_ != target.root) {
        folders_ = std::make_unique<output::OpenFolders>(target.root);
        foldersRoot_ = target.root;
    }
    std::string path = target.Path();
    info.TargetFolder = MakeFolderTree(path.substr(0, path.find_last_of("\\/") + 1));
    info.FullTargetName = std::move(path);
    return info.TargetFolder ? kFileOpDoIt : kFileOpSkip;
}

/// Opens the folder, below the destination, and makes each level of it that is missing.
platform::OutputFolder* CabFile::MakeFolderTree(const std::string& folder) {
    if (platform::OutputFolder* last = folders_->Last(folder))
        return last;
    return folders_->CreateFolderPath(folder, folder);
}

} // namespace cabinet
