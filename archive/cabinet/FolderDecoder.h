#pragma once

#include "base/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace cabinet {

/// Takes decoded bytes; what it answers ends the decoding.
using ByteSink = std::function<base::SystemError(std::span<const std::uint8_t>)>;

/// Decodes one folder from its start onwards.
class FolderDecoder {
  public:
    virtual ~FolderDecoder() = default;

    /// Decodes the next `count` bytes and hands them to `sink`, which is empty when they are only passed
    /// over. After a failure Position() is how much has been handed over and the decoder is of no more use.
    virtual base::SystemError Decode(std::uint64_t count, const ByteSink& sink) = 0;

    /// Bytes decoded so far.
    virtual std::uint64_t Position() const = 0;

    /// Bytes of memory, roughly.
    virtual std::size_t Memory() const = 0;
};

} // namespace cabinet
