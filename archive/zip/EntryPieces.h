#pragma once

#include "archive/codec/Crc32.h"
#include "archive/output/ExtractionObserver.h"
#include "platform/OutputFolder.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace zip {

/// Writes a large entry to its file piece by piece, so that it is never held whole in memory. After a failed
/// write, further pieces are only counted and checked.
class EntryPieces {
  public:
    /// `crc` and `observer`, which may be null, outlive this; `crc` is used by nothing else meanwhile.
    /// `expected` bytes are the whole entry, for the observer.
    EntryPieces(std::unique_ptr<platform::OutputFile> file, codec::Cls_CRC32& crc, std::size_t expected,
                output::ExtractionObserver* observer);

    void Take(std::span<const std::uint8_t> piece);

    std::size_t Size() const { return size_; }

    std::uint32_t Crc() const { return crc_.CRC32(); }

    /// Ends the file. False when it or a piece could not be written; nothing of it remains then.
    bool Commit(const std::optional<platform::FileTimes>& times);

  private:
    std::unique_ptr<platform::OutputFile> file_;
    codec::Cls_CRC32& crc_;
    std::size_t expected_;
    output::ExtractionObserver* observer_;
    std::size_t size_ = 0;
    bool failed_ = false;
};

} // namespace zip
