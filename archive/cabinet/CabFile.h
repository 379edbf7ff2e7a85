#pragma once

#include "archive/cabinet/CabinetIterator.h"
#include "base/WorkObserver.h"
#include "platform/Times.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace output {
class OpenFolders;
}

namespace cabinet {

/// Error number of an operation that was cancelled.
inline constexpr std::uint32_t kCabErrorCancelled = 1223;

/// Outcome of an operation on a cabinet: done, or the error that it raised.
struct CabResult {
    std::uint32_t number = 0;
    std::string description; ///< as it is shown; empty when done

    explicit operator bool() const { return number == 0; }
};

/// Lists the files of a cabinet and extracts them, one by one or all. Cabinets stay open between calls, to
/// make the next calls quick, and are closed with the object. An event handler must not start another
/// operation.
class CabFile {
  public:
    CabFile();
    ~CabFile();
    CabFile(const CabFile&) = delete;
    CabFile& operator=(const CabFile&) = delete;

    /// Full path of the cabinet; it must be set before any operation and stays set.
    std::string CabName;

    /// A file of the cabinet: its name without its folder; its folder, ending in a backslash, or empty at the
    /// top; its size; its date and time as stored, 1 January 1601 when it has none.
    std::function<void(const std::string& name, const std::string& folder, std::uint32_t size,
                       const platform::SystemTime& time)>
        FileFound;

    /// A file, by its full name inside the cabinet, is about to be extracted, unless `cancel` is set.
    std::function<void(const std::string& fullName, bool& cancel)> BeforeExtract;

    /// A file was written at `path`.
    std::function<void(const std::string& path)> AfterExtract;

    /// Called while a large file is extracted or compared, with its size; null: nobody is told. When it stops
    /// the operation, that ends with kCabErrorCancelled and nothing of the file remains.
    base::WorkObserver* Observer = nullptr;

    /// Raises FileFound for every file, or only for the first one of the name `fileFilter`, in any letter
    /// case.
    CabResult GetInfo(const std::string& fileFilter);

    /// Extracts every file, or those of the full name `fileFilter` in any letter case, to the target that the
    /// naming source gives it (see CabTargetPath). A file whose target would leave the destination, or is too
    /// long, and a file whose folder cannot be made, are skipped. Ends at the first file that cannot be
    /// extracted.
    CabResult Extract(const std::string& fileFilter, const std::string& destination,
                      const std::string& namingSource);

    /// Where Extract puts the file of this full name; empty when it skips it.
    std::string TargetOf(const std::string& fullName, const std::string& destination,
                         const std::string& namingSource) const;

    /// Decodes the files of this full name once more and compares them with what Extract wrote. Fails at the
    /// first that is missing or differs; succeeds when there is none.
    CabResult Compare(const std::string& fileFilter, const std::string& destination,
                      const std::string& namingSource);

    /// Handles one notification of the iteration in the mode `context` and returns the value for it. For
    /// CabIterateCallback.
    std::uint32_t OnNotification(std::uintptr_t context, std::uint32_t notification, void* param1,
                                 std::uintptr_t param2);

  private:
    CabResult Iterate(std::uintptr_t mode);
    CabResult Begin(const std::string& fileFilter);
    std::uint32_t OnProgress(const FILE_PROGRESS& progress) const;
    std::uint32_t OnFileInCabinet(std::uintptr_t mode, FILE_IN_CABINET_INFO& info);
    std::uint32_t List(const std::string& name, const FILE_IN_CABINET_INFO& info) const;
    std::uint32_t Prepare(const std::string& name, FILE_IN_CABINET_INFO& info);
    platform::OutputFolder* MakeFolderTree(const std::string& folder);

    CabinetIterator iterator_;
    std::string fileFilter_;
    std::string destination_;
    std::string namingSource_;
    std::unique_ptr<output::OpenFolders> folders_;
    std::string foldersRoot_; // the destination that folders_ stands for
};

} // namespace cabinet
