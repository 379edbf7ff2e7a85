#pragma once

#include "archive/rar/RarLibrary.h"
#include "platform/FileReader.h"

#include <functional>
#include <memory>

namespace rar {

/// The program's own reader. It reads the archive's blocks itself, copies stored entries and has a library
/// unpack the others. For what it cannot unpack it returns kRarBadData: encrypted entries, dictionaries over
/// 64 MB and, in format 4, solid entries and entries of packers before 2.9.
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
