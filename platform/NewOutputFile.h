#pragma once

#include "platform/OutputFolder.h"

namespace platform {

/// A file for an output folder that is written under a temporary name.
class NewOutputFile final : public OutputFile {
  public:
    NewOutputFile(NewFile file, EntryName name) : file_(std::move(file)), name_(std::move(name)) {}

    base::SystemError Write(std::span<const std::uint8_t> data) override { return file_.Write(data); }

    base::SystemError Commit(const FileTraits& traits) override {
        file_.SetTraits(traits);
        return file_.TakeName(name_, Replacing::kWritable, Durability::kLater);
    }

  private:
    NewFile file_;
    EntryName name_;
};

/// Writes the whole content of a file that has its own name already.
inline base::SystemError WriteAndKeep(NewFile file, std::span<const std::uint8_t> data,
                                      const std::optional<FileTimes>& times) {
    if (const base::SystemError error = file.Write(data))
        return error;
    file.SetTraits({.times = times});
    return file.Keep(Durability::kLater);
}

/// Writes a file in place of another one, under a temporary name until it is complete.
inline base::SystemError ReplaceWhole(OutputFolder& folder, std::string_view name,
                                      std::span<const std::uint8_t> data,
                                      const std::optional<FileTimes>& times) {
    base::SystemError error;
    const std::unique_ptr<OutputFile> file = folder.CreateFile(name, error);
    if (file == nullptr || (error = file->Write(data)))
        return error;
    return file->Commit({.times = times});
}

} // namespace platform
