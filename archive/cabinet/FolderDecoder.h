#pragma once

#include "base/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace cabinet {

/// Receives decoded bytes. An error that it returns ends the decoding.
using ByteSink = std::function<base::SystemError(std::span<const std::uint8_t>)>;

/// Decodes one folder from its start onwards.
class FolderDecoder {
  public:
    virtual ~FolderDecoder() = default;

    /// Decodes the next `count` bytes and passes them to `sink`. With an empty `sink` the bytes are only
    /// skipped. After a failure Position() tells how many bytes were passed on, and the decoder cannot be
    /// used any more.
    virtual base::SystemError Decode(std::uint64_t count, const ByteSink& sink) = 0;

    /// Bytes decoded so far.
    virtual std::uint64_t Position() const = 0;

    /// Bytes of memory, roughly.
    virtual std::size_t Memory() const = 0;
};

} // namespace cabinet
