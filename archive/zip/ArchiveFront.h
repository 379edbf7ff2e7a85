#pragma once

#include "archive/zip/ArchiveReader.h"

#include <memory>

namespace zip {

/// The archive front: decides whether a file is an archive that a reader understands and forwards to that
/// reader. Every entry member gives the empty value while nothing is loaded.
class Cls_GetFileType {
  public:
    Cls_GetFileType();
    ~Cls_GetFileType();

    /// Looks at the first two bytes of the file and has the ZIP reader load a file that starts with "PK".
    /// Returns -1 for an empty name and -2 for a file that is not ZIP. Otherwise returns 0, whatever the
    /// reader did; FileCount tells whether it found entries.
    std::int16_t Get_Contents(const std::string& fileName);

    /// Extracts the selected entries into `folder`; 0 when nothing is loaded. See Cls_Zip::UnPack. `observer`
    /// may be null; the caller keeps it.
    std::int16_t UnPack(const EntrySelection& selection, const std::string& folder,
                        base::WorkObserver* observer = nullptr);

    std::int16_t Pack() { return 0; }

    bool CanUnpack() const;
    std::int32_t FileCount() const;
    std::string FileName(std::int32_t entry) const;
    std::string CommentsFile(std::int32_t entry) const;
    std::string CommentsPack() const;
    bool IsDir(std::int32_t entry) const;
    std::string Method(std::int32_t entry) const;
    std::int32_t CRC32(std::int32_t entry) const;
    std::int32_t Compressed_Size(std::int32_t entry) const;
    std::int32_t UnCompressed_Size(std::int32_t entry) const;
    bool Encrypted(std::int32_t entry) const;
    platform::SystemTime FileDateTime(std::int32_t entry) const;
    std::string SystemMadeBy(std::int32_t entry) const;
    std::string VersionMadeBy(std::int32_t entry) const;
    std::string SystemNeeded(std::int32_t entry) const;
    std::string VersionNeeded(std::int32_t entry) const;

  private:
    const ArchiveReader* Reader() const;

    std::unique_ptr<ArchiveReader> zip_; // created on first need, then kept
    ArchiveReader* reader_ = nullptr;    // zip_ while an archive is loaded
};

} // namespace zip
