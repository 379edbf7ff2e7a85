#pragma once

#include "base/WorkObserver.h"

#include <cstdint>
#include <string>

namespace cabinet {

inline constexpr std::int32_t kCabModeFolder = 1; ///< pack a folder and everything below it
inline constexpr std::int32_t kCabModeFile = 2;   ///< pack one file

/// Why a cabinet was not made. The number is the call's status.
enum class CabFailure : std::int16_t {
    kNone = 0,
    kCannotRead = 1,   ///< a file or folder of the source; `error` says why
    kLink = 2,         ///< cabinets hold no links
    kSpecialFile = 3,  ///< nor devices, pipes and sockets
    kEmptyFolder = 4,  ///< nor folders without files
    kName = 5,         ///< a name that a cabinet cannot hold, or that could not be unpacked on every system
    kFileTooLarge = 6, ///< over 0x7FFF8000 bytes
    kTooManyFiles = 7, ///< over 65,535
    kCabinetTooLarge = 8, ///< over 4 GiB
    kChanged = 9,         ///< the source changed while it was packed
    kCannotWrite = 10,    ///< the cabinet; `error` says why
    kReadBack = 11,       ///< the cabinet does not give back what was packed
    kStopped = 12,        ///< by the observer
    kWrongCall = 13,      ///< a mode that does not exist
};

/// How a call of CabCompress ended.
struct CabReport {
    CabFailure failure = CabFailure::kNone;
    std::string path;        ///< the file or folder that was the reason; UTF-8, for people to read
    base::SystemError error; ///< where the system refused something

    /// One English sentence that names the path and the reason; empty for success.
    std::string Description() const;
};

/// Packs a folder or a file into the cabinet `cabinetName` in the folder `destination` (which ends in a
/// backslash). `source` is the folder with a last backslash, or the file. Names in the cabinet are those
/// below the folder, or the file's own name. `status` is set to 0 when the cabinet is complete under its
/// name, on the medium, and has been read back and found equal to the source, which is then still the same as
/// when it was packed. For anything else it is set to the failure's number: nothing is left behind, and a
/// cabinet that was there before is unchanged. Uses all processors; the cabinet does not depend on how many
/// there are. Memory stays below 64 MB. `observer`, if any, is called several times a second; the bytes of a
/// step were packed or compared, and its size is those of both. When it stops the packing, nothing is left
/// behind.
CabReport CabCompress(std::int32_t mode, const std::string& destination, const std::string& cabinetName,
                      const std::string& source, std::int16_t& status,
                      base::WorkObserver* observer = nullptr);

} // namespace cabinet
