#pragma once

#include "base/SystemError.h"
#include "platform/FileReader.h"

#include <cstdint>
#include <span>
#include <vector>

namespace platform {

/// Reads a file in large steps; made for reading mostly forward.
class BufferedInput {
  public:
    explicit BufferedInput(FileReader& file, std::size_t bufferSize = 65536)
        : file_(file), buffer_(bufferSize) {}

    std::uint64_t Position() const { return position_; }

    void Seek(std::uint64_t position) { position_ = position; }

    /// Reads up to out.size() bytes. Returns fewer at the end of the file, or before a read error.
    std::size_t ReadSome(std::span<std::uint8_t> out);

    /// Fills `out`. Returns kErrorInvalidData when the file ends before that, and kErrorReadFault when it
    /// cannot be read.
    base::SystemError Read(std::span<std::uint8_t> out);

    /// Whether bytes that the file had when it was opened could not be read.
    bool Faulted() const { return faulted_; }

  private:
    FileReader& file_;
    std::vector<std::uint8_t> buffer_;
    std::uint64_t start_ = 0; // of what the buffer holds
    std::size_t held_ = 0;
    std::uint64_t position_ = 0;
    bool faulted_ = false;
};

} // namespace platform
