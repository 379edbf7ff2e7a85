#pragma once

#include "platform/OutputFolder.h"
#include "platform/posix/files/TemporaryFile.h"

#include <fcntl.h>
#include <memory>
#include <string>

namespace platform {

/// A file written under a temporary name inside an open folder.
class NewFile final : public OutputFile {
  public:
    /// `folder` must stay open for the file's life.
    static std::unique_ptr<NewFile> Start(int folder, std::string hostName, base::SystemError& error);

    base::SystemError Write(std::span<const std::uint8_t> data) override;
    base::SystemError Commit(const FileTraits& traits) override;

  private:
    NewFile(int folder, std::string hostName)
        : folder_(folder), hostName_(std::move(hostName)), staged_(folder, "", O_WRONLY, 0666) {}

    void ApplyTraits(const FileTraits& traits) const;

    /// Takes the name, and replaces another file that has it.
    base::SystemError Replace();

    int folder_;
    std::string hostName_;
    TemporaryFile staged_;
};

} // namespace platform
