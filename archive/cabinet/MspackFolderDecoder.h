#pragma once

#include "archive/cabinet/CabinetDirectory.h"
#include "archive/cabinet/FolderDecoder.h"
#include "platform/FileReader.h"

#include <memory>

namespace cabinet {

/// Decodes a folder of any method with libmspack. The library sees a cabinet that holds this folder alone, so
/// each folder has its own decoder and position, and nothing is read twice.
class MspackFolderDecoder final : public FolderDecoder {
  public:
    /// `file` outlives the decoder.
    MspackFolderDecoder(platform::FileReader& file, const Folder& folder, std::size_t dataReserve);
    ~MspackFolderDecoder() override;
    MspackFolderDecoder(const MspackFolderDecoder&) = delete;
    MspackFolderDecoder& operator=(const MspackFolderDecoder&) = delete;

    base::SystemError Decode(std::uint64_t count, const ByteSink& sink) override;

    std::uint64_t Position() const override { return position_; }

    std::size_t Memory() const override { return memory_; }

  private:
    struct Library;

    base::SystemError DecodeSlice(std::uint32_t count, const ByteSink& sink);

    std::unique_ptr<Library> library_;
    std::uint64_t position_ = 0;
    std::size_t memory_;
};

} // namespace cabinet
