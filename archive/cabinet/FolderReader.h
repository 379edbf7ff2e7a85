#pragma once

#include "archive/cabinet/CabinetDirectory.h"
#include "archive/cabinet/FolderDecoder.h"
#include "platform/BufferedInput.h"
#include "platform/ScratchFile.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace cabinet {

/// The scratch file that the folders of a cabinet share, each with a part of its own.
struct SharedScratch {
    std::unique_ptr<platform::ScratchFile> file;
    std::uint64_t used = 0;
    std::vector<std::uint8_t> buffer; ///< for what is read from it
};

/// Where the data of a cabinet comes from, and where what is decoded may be kept.
struct DataSource {
    platform::FileReader& file;
    platform::BufferedInput& input;
    std::size_t dataReserve;
    SharedScratch& scratch;
};

/// Reads any part of a folder. Parts that are asked for in order are decoded as they come. When a part is
/// skipped, everything decoded from there on is kept in a scratch file, so that no order of parts decodes the
/// folder more than twice.
class FolderReader {
  public:
    /// All that `source` names outlives this. `wasStarted` says that an earlier reader has begun the folder
    /// already.
    FolderReader(const DataSource& source, const Folder& folder, bool wasStarted)
        : source_(source), folder_(folder), wasStarted_(wasStarted) {}

    /// Hands `size` bytes from `offset` to `sink`.
    base::SystemError Read(std::uint64_t offset, std::uint64_t size, const ByteSink& sink);

    /// Memory that DropDecoder() would give back.
    std::size_t Memory() const { return decoder_ ? decoder_->Memory() : 0; }

    /// Frees the decoder. When the folder has had to be decoded from its start once more already, it is first
    /// decoded to its end into the scratch file, so that this never happens again.
    void DropDecoder();

    /// Whether anything is remembered that a new reader would have to find out again.
    bool HoldsAnything() const { return decoder_ || hasPart_ || deadEndError_; }

    /// When this was last read, on the owner's clock.
    std::uint64_t lastUse = 0;

  private:
    /// A stretch of the folder that the scratch file holds.
    struct Stretch {
        std::uint64_t from;
        std::uint64_t to;
    };

    base::SystemError Decode(std::uint64_t count, const ByteSink& sink, bool keep);
    base::SystemError DecodeKeeping(std::uint64_t count, const ByteSink& sink, bool keep);
    base::SystemError ReadKept(std::uint64_t offset, std::uint64_t size, const ByteSink& sink);
    const Stretch* KeptAt(std::uint64_t offset) const;
    void Restart();
    void StartKeeping();

    DataSource source_;
    Folder folder_;
    std::unique_ptr<FolderDecoder> decoder_;
    bool libraryOnly_ = false;
    bool wasStarted_;
    bool hasPart_ = false; // of the scratch file, from scratchBase_
    std::uint64_t scratchBase_ = 0;
    std::vector<Stretch> kept_; // in order; what is decoded next can only lie behind the last
    bool keepsAll_ = false;
    std::uint64_t deadEnd_ = ~std::uint64_t{0}; // decoding from the start ends here, with deadEndError_
    base::SystemError deadEndError_;
};

} // namespace cabinet
