#pragma once

#include "archive/codec/Crc32.h"
#include "archive/codec/TraditionalDecryption.h"
#include "archive/output/OpenFolders.h"
#include "archive/output/RepeatedMessages.h"
#include "archive/zip/ArchiveBytes.h"
#include "archive/zip/ArchiveEntry.h"
#include "archive/zip/ArchiveReader.h"
#include "archive/zip/EntryPieces.h"
#include "base/WorkObserver.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zip {

/// Whether an entry is a folder: it has no stored bytes and its name ends in "/".
bool IsFolderEntry(const ArchiveEntry& entry);

/// One extraction: the selected entries of an archive, in directory order, decrypted, decoded, checked and
/// written.
class ZipExtraction {
  public:
    /// `archive`, `entries` and `observer`, which may be null, outlive the extraction. `folder` is the
    /// target.
    ZipExtraction(platform::FileReader& archive, const std::vector<ArchiveEntry>& entries, std::string folder,
                  base::WorkObserver* observer);

    /// Extracts the entries whose position in `selection` is true. Returns the status of UnPack.
    std::int16_t Run(const EntrySelection& selection);

  private:
    /// Where an entry's stored bytes are in the file, as far as it holds them.
    struct StoredBytes {
        std::uint64_t offset = 0;
        std::size_t size = 0;
    };

    bool ExtractEntry(const ArchiveEntry& entry);
    void CreateFolder(const ArchiveEntry& entry);
    std::optional<StoredBytes> FindStored(const ArchiveEntry& entry);
    void ReadStored(const StoredBytes& stored);
    bool Decrypt(const ArchiveEntry& entry);
    void Decode(const ArchiveEntry& entry);
    void Check(const ArchiveEntry& entry, std::size_t size, std::uint32_t crc);
    void WriteEntry(const ArchiveEntry& entry);
    std::unique_ptr<platform::OutputFile> BeginLarge(const ArchiveEntry& entry, std::size_t size);
    bool CopyLarge(const ArchiveEntry& entry, const StoredBytes& stored);
    bool InflateLarge(const ArchiveEntry& entry);
    void WriteLarge(const ArchiveEntry& entry, EntryPieces& pieces);
    void Report(std::uint32_t textId);

    ArchiveBytes archive_;
    const std::vector<ArchiveEntry>& entries_;
    std::string folder_;
    base::WorkObserver* observer_;
    output::RepeatedMessages messages_;
    output::OpenFolders folders_;
    codec::Cls_CRC32 crc_;
    codec::Cls_Encrypt encrypt_;
    std::string password_;
    std::string_view entryInHand_; // name of the entry that reports are about
    std::int16_t status_ = kStatusDone;
};

} // namespace zip
