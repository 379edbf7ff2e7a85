#pragma once

#include "archive/cabinet/CabinetDirectory.h"
#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/FolderDecoder.h"
#include "platform/BufferedInput.h"

#include <vector>

namespace cabinet {

/// Decodes an MSZIP folder block by block with our own Deflate decoder. It takes only blocks
/// without a fault. At the first other block it fails, with Position() at the start of the block, and another
/// decoder must decide what that block is.
class MszipFolderDecoder final : public FolderDecoder {
  public:
    /// `input` is shared with other decoders of the cabinet and outlives this one.
    MszipFolderDecoder(platform::BufferedInput& input, const Folder& folder, std::size_t dataReserve);

    base::SystemError Decode(std::uint64_t count, const ByteSink& sink) override;

    std::uint64_t Position() const override { return position_; }

    std::size_t Memory() const override { return window_.size() + sizeof *this; }

  private:
    bool HasRoom() const;
    void StartOver();
    bool DecodeBlock();

    platform::BufferedInput& input_;
    std::size_t dataReserve_;
    std::uint64_t nextBlock_; // where it is stored
    std::uint32_t blocksLeft_;
    // History, some blocks, and room that the decoder may write over.
    std::vector<std::uint8_t> window_;
    std::size_t history_ = 0;        // decoded bytes before end_ that a block may reach back to
    std::size_t taken_ = kBlockSize; // in the window: handed over so far
    std::size_t end_ = kBlockSize;   // in the window: decoded so far
    std::uint64_t position_ = 0;
};

} // namespace cabinet
