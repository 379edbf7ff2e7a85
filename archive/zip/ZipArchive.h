#pragma once

#include "archive/zip/ArchiveReader.h"
#include "archive/zip/ZipDirectory.h"

#include <memory>

namespace zip {

/// Reader of ZIP archives on one disk, with 32-bit sizes. Fills the archive state of the process.
class Cls_Zip final : public ArchiveReader {
  public:
    /// Reads the directory of the archive. Always returns 0; ArchiveLoaded tells whether one was found.
    std::int16_t Get_Contents(const std::string& fileName) override;

    /// Extracts the selected entries of the loaded archive into `folder`; the archive file is opened anew.
    /// Faults of an entry are shown (IDS_DAMAGED_DATA, IDS_FOLDER_NOT_MADE, IDS_NO_LOCAL_HEADER and the four
    /// after it), and the extraction goes on with the next entry.
    ///
    /// Returns 0 when done. Returns -1 when the password is missing or wrong (IDS_WRONG_PASSWORD) or when the
    /// observer stopped the extraction. Returns -10 when nothing is loaded, when `selection` does not have
    /// one position more than there are entries, when the archive cannot be opened any more, or when the last
    /// entry that decided the status has a method that is refused.
    std::int16_t UnPack(const EntrySelection& selection, const std::string& folder,
                        base::WorkObserver* observer) override;

    std::int16_t Pack() override { return kStatusDone; }

    bool CanUnpack() const override { return true; }

    std::int32_t FileCount() const override;
    std::string FileName(std::int32_t entry) const override;
    std::string CommentsFile(std::int32_t entry) const override;
    std::string CommentsPack() const override;
    bool IsDir(std::int32_t entry) const override;
    std::string Method(std::int32_t entry) const override;
    std::int32_t CRC32(std::int32_t entry) const override;
    std::int32_t Compressed_Size(std::int32_t entry) const override;
    std::int32_t UnCompressed_Size(std::int32_t entry) const override;
    bool Encrypted(std::int32_t entry) const override;
    platform::SystemTime FileDateTime(std::int32_t entry) const override;
    std::string SystemMadeBy(std::int32_t entry) const override;
    std::string VersionMadeBy(std::int32_t entry) const override;
    std::string SystemNeeded(std::int32_t entry) const override;
    std::string VersionNeeded(std::int32_t entry) const override;

  private:
    bool EntryIndexInvalid(std::int32_t entry) const;
    const ArchiveEntry* Find(std::int32_t entry) const;

    std::shared_ptr<const ZipDirectory> directory_; // shared with an extraction that runs while messages do
};

} // namespace zip
