#pragma once

#include "archive/cabinet/CabinetDirectory.h"
#include "archive/cabinet/FolderReader.h"
#include "platform/BufferedInput.h"
#include "platform/FileReader.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace cabinet {

/// An open cabinet: its directory and how far its folders are decoded.
class CabinetSession {
  public:
    /// Opens the cabinet at `path`. Returns null and sets `error` on failure.
    static std::unique_ptr<CabinetSession> Open(const std::string& path, base::SystemError& error);

    const std::string& Path() const { return path_; }

    /// Whether the file on disk is still the one that was opened.
    bool IsCurrent() const { return file_->IsUnchanged(); }

    const CabinetDirectory& Directory() const { return directory_; }

    /// Hands the decoded bytes of an entry to `sink`, which must not throw.
    base::SystemError ReadEntry(const Entry& entry, const ByteSink& sink);

    /// Bytes of memory, roughly.
    std::size_t Memory() const { return directory_.Memory() + decoderMemory_; }

    /// When this was last used, on the owner's clock.
    std::uint64_t lastUse = 0;

  private:
    CabinetSession(std::string path, std::unique_ptr<platform::FileReader> file);

    FolderReader& Reader(std::uint16_t folder);
    void DropDecoders(const FolderReader& inUse);

    std::string path_;
    std::unique_ptr<platform::FileReader> file_;
    platform::BufferedInput input_;
    CabinetDirectory directory_;
    SharedScratch scratch_;
    std::map<std::uint16_t, FolderReader> readers_;
    std::vector<bool> started_; // by folder
    std::size_t decoderMemory_ = 0;
    std::uint64_t clock_ = 0;
};

} // namespace cabinet
