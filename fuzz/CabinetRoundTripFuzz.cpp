// Packs files that the input describes, has the cabinet checked as every cabinet is, and reads it with the
// program's own reader.

#include "MemoryFile.h"
#include "archive/cabinet/CabinetCheck.h"
#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/CabinetWriter.h"
#include "archive/cabinet/FolderReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>

namespace {

using namespace platform;
using fuzz::MemoryFile;

using Contents = std::map<std::string, std::vector<std::uint8_t>>;

class MemoryInput final : public cabinet::PackInput {
  public:
    explicit MemoryInput(const std::vector<std::uint8_t>& content) : rest_(content) {}

    base::SystemError Read(std::span<std::uint8_t> buffer, std::size_t& count) override {
        count = std::min(buffer.size(), rest_.size());
        std::copy_n(rest_.begin(), count, buffer.begin());
        rest_ = rest_.subspan(count);
        return {};
    }

    bool IsUnchanged() const override { return true; }

  private:
    std::span<const std::uint8_t> rest_;
};

class MemorySource final : public cabinet::PackSource {
  public:
    explicit MemorySource(const Contents& contents) : contents_(contents) {}

    cabinet::CabReport List(std::vector<cabinet::PackEntry>& entries, std::size_t /*most*/) override {
        for (const auto& [name, content] : contents_) {
            cabinet::PackEntry entry;
            entry.name = name;
            entry.identity.size = content.size();
            entry.attributes = 0x20;
            entries.push_back(entry);
        }
        return {};
    }

    std::unique_ptr<cabinet::PackInput> OpenFile(const cabinet::PackEntry& entry,
                                                 cabinet::CabReport& /*report*/) const override {
        return std::make_unique<MemoryInput>(contents_.at(entry.name));
    }

    std::string PathOf(const std::string& name) const override { return name; }

  private:
    const Contents& contents_;
};

/// Five bytes say how long a file is and how it repeats what follows in the input.
Contents ContentsFrom(std::span<const std::uint8_t> input) {
    Contents contents;
    while (input.size() >= 5 && contents.size() < 6) {
        const std::size_t size = static_cast<std::size_t>(input[0]) << 9 | input[1];
        const std::size_t period = 1 + (static_cast<std::size_t>(input[2]) << 8 | input[3]);
        const std::uint8_t step = input[4];
        input = input.subspan(5);
        std::vector<std::uint8_t> content(size);
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t at = i % period;
            content[i] =
                static_cast<std::uint8_t>((at < input.size() ? input[at] : at) + step * (i / period));
        }
        contents["folder\\file" + std::to_string(contents.size())] = std::move(content);
    }
    return contents;
}

void ReadBack(MemoryFile& file, const Contents& contents) {
    cabinet::CabinetDirectory directory;
    if (directory.Read(file) || directory.Entries().size() != contents.size())
        std::abort();
    platform::BufferedInput input(file);
    cabinet::SharedScratch scratch;
    cabinet::FolderReader reader({file, input, 0, scratch}, directory.Folders()[0], false);
    for (const cabinet::Entry& entry : directory.Entries()) {
        std::vector<std::uint8_t> content;
        const base::SystemError error =
            reader.Read(entry.offset, entry.size, [&](std::span<const std::uint8_t> data) {
                content.insert(content.end(), data.begin(), data.end());
                return base::SystemError{};
            });
        if (error || content != contents.at(entry.name))
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Contents contents = ContentsFrom({data, size});
    if (contents.empty())
        return 0;
    MemorySource source(contents);
    std::vector<cabinet::PackEntry> entries;
    source.List(entries, cabinet::kMostFiles);
    cabinet::PackPlan plan;
    if (plan.Make(std::move(entries)).failure != cabinet::CabFailure::kNone)
        std::abort();
    MemoryFile file;
    cabinet::ProgressMeter progress(nullptr);
    if (cabinet::WriteCabinet(plan, source, file, progress).failure != cabinet::CabFailure::kNone ||
        cabinet::CheckCabinet(plan, source, file, progress).failure != cabinet::CabFailure::kNone)
        std::abort();
    ReadBack(file, contents);
    return 0;
}
