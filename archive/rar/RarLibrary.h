#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace platform {
class OutputFolder;
}

namespace rar {

// Result codes of the RAR library.
inline constexpr int kRarSuccess = 0;
inline constexpr int kRarEndOfArchive = 10;
inline constexpr int kRarNoMemory = 11;
inline constexpr int kRarBadData = 12;
inline constexpr int kRarNotRar = 13; ///< not a RAR archive, or its header is damaged
inline constexpr int kRarUnknownFormat = 14;
inline constexpr int kRarCannotOpen = 15; ///< the archive, or the volume that it goes on in
inline constexpr int kRarCannotCreate = 16;
inline constexpr int kRarCannotClose = 17;
inline constexpr int kRarReadError = 18;
inline constexpr int kRarWriteError = 19;
inline constexpr int kRarBufferTooSmall = 20;

// Open modes.
inline constexpr unsigned kRarOpenList = 0;    ///< to read headers
inline constexpr unsigned kRarOpenExtract = 1; ///< to test and extract

// Operations on the entry whose header was read last.
inline constexpr int kRarSkip = 0;
inline constexpr int kRarTest = 1;
inline constexpr int kRarExtract = 2;

/// The open-archive record.
struct RAROpenArchiveData {
    std::string ArcName; ///< full path
    unsigned OpenMode = kRarOpenList;
    std::size_t CmtBufSize = 0;   ///< room for the archive's comment; 0: it is not wanted
    int OpenResult = kRarSuccess; ///< returned; kRarSuccess when the archive was opened
};

/// The header record of one entry.
struct RARHeaderData {
    std::string ArcName{};  ///< the archive, or the volume of it, that holds the entry
    std::string FileName{}; ///< UTF-8, as stored, with backslashes between folders
    std::uint64_t UnpSize = 0;
    bool IsFolder = false;
};

/// Receives the content of an entry that is tested or extracted, piece by piece. When it returns false, the
/// operation ends there with a failure.
using RarDataCallback = std::function<bool(std::span<const std::uint8_t> piece)>;

/// An open archive. Its entries are met in archive order: RARReadHeader and RARProcessFile take turns.
class RarArchive {
  public:
    virtual ~RarArchive() = default;

    virtual void RARSetPassword(const std::string& password) = 0;

    virtual void RARSetCallback(RarDataCallback callback) = 0;

    /// Goes on to the next entry. kRarEndOfArchive behind the last one, kRarBadData where the archive is
    /// damaged or cut off; there is no entry then.
    virtual int RARReadHeader(RARHeaderData& header) = 0;

    /// Skips, tests or extracts the entry. The other parameters matter for kRarExtract alone: `destFolder`
    /// ends in a backslash, `destName` is that folder with the entry's name behind it, and `folder` is the
    /// open folder that contains `destName`. The file is written under a temporary name. When it is complete
    /// and its time is set, it takes its own name and replaces another file of that name. After a failure
    /// nothing is left behind. Links and folders are not made and return kRarCannotCreate; the caller makes
    /// the folders.
    virtual int RARProcessFile(int operation, const std::string& destFolder, const std::string& destName,
                               platform::OutputFolder* folder) = 0;

    /// Closes the archive, which must not be used afterwards. Destruction closes it too.
    virtual int RARCloseArchive() = 0;
};

/// What reads RAR archives.
class RarLibrary {
  public:
    virtual ~RarLibrary() = default;

    /// Opens an archive; null, with data.OpenResult set, when it cannot be read.
    virtual std::unique_ptr<RarArchive> RAROpenArchive(RAROpenArchiveData& data) = 0;
};

/// The RAR extraction library where the user has it, beside the program or where the system looks for
/// libraries; else the program's own reader. `PELLARION_RAR_LIBRARY` names another file for it, as the host
/// writes paths; set but empty, it chooses the program's own reader.
RarLibrary& TheRarLibrary();

} // namespace rar
