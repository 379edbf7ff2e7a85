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

/// Answers to kNotifyFileInCabinet.
inline constexpr std::uint32_t kFileOpAbort = 0; ///< end the iteration here, which is no failure
inline constexpr std::uint32_t kFileOpDoIt = 1;  ///< extract it to FullTargetName
inline constexpr std::uint32_t kFileOpSkip = 2;
/// Compare it with the file at FullTargetName; one that is missing or differs is notified as extracted with
/// kErrorCrc. This program's own.
inline constexpr std::uint32_t kFileOpCompare = 3;

/// Answer to every other notification: go on. Any other number ends the iteration with it.
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
    /// Set by the callback that answers kFileOpDoIt or kFileOpCompare: where the file goes. One that does not
    /// fit into kFullTargetNameUnits makes the file skipped.
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

/// How far the file in hand is. Any answer but kNoError ends the iteration with it, and nothing of the file
/// remains.
struct FILE_PROGRESS {
    std::uint64_t Done = 0; ///< bytes
    std::uint64_t Size = 0;
};

/// The cabinet that continues the set.
struct CABINET_INFO {
    std::string CabinetFile;
    std::string DiskName;
    std::uint16_t SetId = 0;
    std::uint16_t CabinetNumber = 0; ///< of the cabinet that is open, from 0
};

/// Iterates over the files of cabinets. The cabinets it has opened, and how far their folders are decoded,
/// are kept between calls for as long as the files on disk stay the same and the iterator lives, so that
/// extracting all files one by one, in any order, costs little more than extracting them in one iteration.
class CabinetIterator {
  public:
    /// `context`, the notification, and its two parameters; the second is not used by any of the three.
    using Callback = std::uint32_t (*)(std::uintptr_t context, std::uint32_t notification, void* param1,
                                       std::uintptr_t param2);

    CabinetIterator();
    ~CabinetIterator();
    CabinetIterator(const CabinetIterator&) = delete;
    CabinetIterator& operator=(const CabinetIterator&) = delete;

    /// Goes through the files of a cabinet in cabinet order, calling `callback` on this thread. Files that
    /// began in an earlier cabinet of a set are not notified. With a `name` that is not empty only files of
    /// that name, in any letter case, are notified; this costs nothing for the others. A file to be extracted
    /// is written under a temporary name and renamed when it is complete and its time set; what becomes of it
    /// is notified, and the callback's answer decides whether the iteration goes on. Fails with the error of
    /// what went wrong: kErrorFileNotFound or kErrorPathNotFound (missing, also the next cabinet of a set
    /// that a file continues in), kErrorInvalidData (not a cabinet, cut off, or data that cannot be decoded),
    /// kErrorCrc (a checksum), kErrorReadFault, or what the writing of a file answered.
    base::SystemError Iterate(const std::string& cabinet, Callback callback, std::uintptr_t context,
                              std::string_view name = {});

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace cabinet
