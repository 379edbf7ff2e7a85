#pragma once

#include "archive/codec/Crc32.h"
#include "base/WorkObserver.h"
#include "platform/OutputFolder.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace zip {

/// Writes a large entry to its file piece by piece, so that it is never held whole in memory. After a failed
/// write, further pieces are only counted and checked.
class EntryPieces {
  public:
    /// `crc` and `observer`, which may be null, outlive this; `crc` is used by nothing else meanwhile.
    /// `name`, whose text outlives this too, and `expected`, the size of the whole entry, are for the observer.
    /// It cannot stop the work here: the entry is finished first.
    EntryPieces(std::unique_ptr<platform::OutputFile> file, codec::Cls_CRC32& crc, std::string_view name,
                std::size_t expected, base::WorkObserver* observer);

    void Take(std::span<const std::uint8_t> piece);

    std::size_t Size() const { return size_; }

    std::uint32_t Crc() const { return crc_.CRC32(); }

    /// Ends the file. False when it or a piece could not be written; nothing of it remains then.
    bool Commit(const std::optional<platform::FileTimes>& times);

  private:
    std::unique_ptr<platform::OutputFile> file_;
    codec::Cls_CRC32& crc_;
    std::string_view name_;
    std::size_t expected_;
    base::WorkObserver* observer_;
    std::size_t size_ = 0;
    bool failed_ = false;
};

} // namespace zip
