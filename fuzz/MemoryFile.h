#pragma once

#include "platform/StagedFile.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace fuzz {

/// A file in memory, for reading and writing.
class MemoryFile final : public platform::StagedFile {
  public:
    explicit MemoryFile(std::vector<std::uint8_t> initial = {}) : bytes(std::move(initial)) {}

    std::uint64_t Size() const override { return bytes.size(); }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        if (offset >= bytes.size())
            return 0;
        const std::size_t count = std::min<std::size_t>(buffer.size(), bytes.size() - offset);
        std::memcpy(buffer.data(), bytes.data() + offset, count);
        return count;
    }

    base::SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) override {
        bytes.resize(std::max<std::size_t>(bytes.size(), offset + data.size()));
        std::copy(data.begin(), data.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
        return {};
    }

    base::SystemError Flush() override { return {}; }

    base::SystemError Commit() override { return {}; }

    std::vector<std::uint8_t> bytes;
};

} // namespace fuzz
