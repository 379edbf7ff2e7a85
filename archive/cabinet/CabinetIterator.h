#pragma once

#include "base/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace platform {
class OutputFolder;
}

namespace cabinet {

/// Notifications of a cabinet iteration.
inline constexpr std::uint32_t kNotifyFileInCabinet = 0x11;  ///< param1: FILE_IN_CABINET_INFO
inline constexpr std::uint32_t kNotifyNeedNewCabinet = 0x12; ///< param1: CABINET_INFO
inline constexpr std::uint32_t kNotifyFileExtracted = 0x13;  ///< param1: FILEPATHS
/// Another part of a large file is done. param1: FILE_PROGRESS. This program's own.
inline constexpr std::uint32_t kNotifyFileProgress = 0x101;

/// Return values for kNotifyFileInCabinet.
inline constexpr std::uint32_t kFileOpAbort = 0; ///< end the iteration here, which is no failure
inline constexpr std::uint32_t kFileOpDoIt = 1;  ///< extract it to FullTargetName
inline constexpr std::uint32_t kFileOpSkip = 2;
/// Compare it with the file at FullTargetName; one that is missing or differs is notified as extracted with
/// kErrorCrc. This program's own.
inline constexpr std::uint32_t kFileOpCompare = 3;

/// Return value for every other notification: go on. Any other number ends the iteration with that error.
inline constexpr std::uint32_t kNoError = 0;

/// Room of FullTargetName in UTF-16 units, its NUL included.
inline constexpr std::size_t kFullTargetNameUnits = 260;

/// A file that the iteration has come to.
struct FILE_IN_CABINET_INFO {
    std::string NameInCabinet; ///< UTF-8; folders in it end in backslashes
    std::uint32_t FileSize = 0;
    std::uint16_t DosDate = 0;
    std::uint16_t DosTime = 0;
    std::uint16_t DosAttribs = 0;
    /// Set by a callback that returns kFileOpDoIt or kFileOpCompare: where the file goes. A file whose target
    /// does not fit into kFullTargetNameUnits is skipped.
    std::string FullTargetName;
    /// Set by the callback: the open folder that FullTargetName lies in. It stays open until the next
    /// notification.
    platform::OutputFolder* TargetFolder = nullptr;
};

/// What became of a file that was to be extracted.
struct FILEPATHS {
    std::string Target; ///< FullTargetName
    std::string Source; ///< the cabinet
    std::uint32_t Win32Error = 0;
};

/// Progress of the file that is being extracted or compared. When the callback returns anything but kNoError,
/// the iteration ends with that error and nothing of the file remains.
struct FILE_PROGRESS {
    std::string_view NameInCabinet;
    std::uint64_t Done = 0; ///< bytes, since the last such notification
    std::uint64_t Size = 0; ///< of the file
};

/// The cabinet that continues the set.
struct CABINET_INFO {
    std::string CabinetFile;
    std::string DiskName;
    std::uint16_t SetId = 0;
    std::uint16_t CabinetNumber = 0; ///< of the cabinet that is open, from 0
};

/// Goes through the files of cabinets. Opened cabinets, and how far their folders are decoded, are kept
/// between calls as long as the files on disk do not change and the iterator lives. Extracting all files one
/// by one, in any order, therefore costs little more than extracting them in one iteration.
class CabinetIterator {
  public:
    /// `context`, the notification, and its two parameters; the second is not used by any of the three.
    using Callback = std::uint32_t (*)(std::uintptr_t context, std::uint32_t notification, void* param1,
                                       std::uintptr_t param2);

    CabinetIterator();
    ~CabinetIterator();
    CabinetIterator(const CabinetIterator&) = delete;
    CabinetIterator& operator=(const CabinetIterator&) = delete;

    /// Goes through the files of a cabinet in cabinet order and calls `callback` on this thread. Files that
    /// began in an earlier cabinet of a set are not notified. With a `name` that is not empty, only files of
    /// that name, in any letter case, are notified; the others cost no time.
    ///
    /// A file to be extracted is written under a temporary name and renamed when it is complete and its time
    /// is set. The callback is then notified of the result, and its return value decides whether the
    /// iteration goes on.
    ///
    /// Returns the error that ended the iteration: kErrorFileNotFound or kErrorPathNotFound (the cabinet is
    /// missing, or the next cabinet of a set that a file continues in), kErrorInvalidData (not a cabinet, cut
    /// off, or data that cannot be decoded), kErrorCrc (a wrong checksum), kErrorReadFault, or the error of
    /// writing a file.
    base::SystemError Iterate(const std::string& cabinet, Callback callback, std::uintptr_t context,
                              std::string_view name = {});

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace cabinet
