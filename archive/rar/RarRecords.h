#pragma once

#include <cstddef>
#include <cstdint>

namespace rar {

// The records and calls of the RAR library, as its documentation gives them: text in the system's code page,
// members without gaps between them.

#pragma pack(push, 1)

struct OpenRecord {
    const char* ArcName;
    unsigned OpenMode;
    unsigned OpenResult;
    char* CmtBuf;
    unsigned CmtBufSize;
    unsigned CmtSize;
    unsigned CmtState;
};

struct HeaderRecord {
    char ArcName[260];
    char FileName[260];
    unsigned Flags;
    unsigned PackSize;
    unsigned UnpSize;
    unsigned HostOS;
    unsigned FileCRC;
    unsigned FileTime;
    unsigned UnpVer;
    unsigned Method;
    unsigned FileAttr;
    char* CmtBuf;
    unsigned CmtBufSize;
    unsigned CmtSize;
    unsigned CmtState;
};

/// With longer names, in wide characters too, and sizes beyond 4 GiB. Newer libraries fill more of it.
struct HeaderRecordEx {
    char ArcName[1024];
    wchar_t ArcNameW[1024];
    char FileName[1024];
    wchar_t FileNameW[1024];
    unsigned Flags;
    unsigned PackSize;
    unsigned PackSizeHigh;
    unsigned UnpSize;
    unsigned UnpSizeHigh;
    unsigned HostOS;
    unsigned FileCRC;
    unsigned FileTime;
    unsigned UnpVer;
    unsigned Method;
    unsigned FileAttr;
    char* CmtBuf;
    unsigned CmtBufSize;
    unsigned CmtSize;
    unsigned CmtState;
    unsigned DictSize;
    unsigned HashType;
    char Hash[32];
    unsigned RedirType;
    wchar_t* RedirName;
    unsigned RedirNameSize;
    unsigned DirTarget;
    unsigned MtimeLow;
    unsigned MtimeHigh;
    unsigned Reserved[1020];
};

#pragma pack(pop)

static_assert(sizeof(void*) != 8 || (sizeof(OpenRecord) == 36 && sizeof(HeaderRecord) == 576));
static_assert(offsetof(HeaderRecord, CmtBuf) == 2 * 260 + 9 * 4);
static_assert(offsetof(HeaderRecordEx, CmtBuf) == 2 * 1024 * (1 + sizeof(wchar_t)) + 11 * 4);

using LibraryHandle = void*;

extern "C" {
using OpenCall = LibraryHandle(OpenRecord*);
using PasswordCall = void(LibraryHandle, char*);
using HeaderCall = int(LibraryHandle, HeaderRecord*);
using HeaderCallEx = int(LibraryHandle, HeaderRecordEx*);
using ProcessCall = int(LibraryHandle, int operation, char* folder, char* name);
using CloseCall = int(LibraryHandle);
using EventFunction = int(unsigned event, std::intptr_t user, std::intptr_t first, std::intptr_t second);
using CallbackCall = void(LibraryHandle, EventFunction*, std::intptr_t user);
}

// Events of the callback.
inline constexpr unsigned kEventNextVolume = 0;
inline constexpr unsigned kEventData = 1; ///< first: where the bytes are, second: how many
inline constexpr unsigned kEventNextVolumeWide = 3;
inline constexpr std::intptr_t kVolumeFound = 1; ///< second, of a volume event: it is told, not asked for

// Return values for an event.
inline constexpr int kEventGoOn = 1;
inline constexpr int kEventStop = -1;

// Header flags.
inline constexpr unsigned kFlagFolder = 0x20;
inline constexpr unsigned kFlagsOldFolder = 0xE0;

inline constexpr unsigned kHostUnix = 3;

/// Codes above this one came with later libraries: a password that is missing or wrong, a reference that
/// cannot be followed.
inline constexpr int kLastKnownCode = 20;

} // namespace rar
