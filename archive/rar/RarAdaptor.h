#pragma once

#include "archive/rar/RarLibrary.h"
#include "platform/FileReader.h"

#include <functional>
#include <memory>

namespace rar {

/// The program's own reader: walks the archive's blocks itself, copies what is stored and has a library
/// unpack the rest. What it cannot unpack (what is encrypted, solid entries and packers before 2.9 of format
/// 4, dictionaries over 64 MB) answers kRarBadData.
class RarAdaptor final : public RarLibrary {
  public:
    using OpenFile = std::function<std::unique_ptr<platform::FileReader>(const std::string& path,
                                                                         base::SystemError& error)>;

    /// `open` reads the archive's files.
    explicit RarAdaptor(OpenFile open = platform::FileReader::Open) : open_(std::move(open)) {}

    std::unique_ptr<RarArchive> RAROpenArchive(RAROpenArchiveData& data) override;

  private:
    OpenFile open_;
};

} // namespace rar
