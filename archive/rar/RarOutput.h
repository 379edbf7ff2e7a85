#pragma once

#include "platform/OutputFolder.h"
#include "platform/Times.h"

#include <memory>
#include <optional>
#include <string>

namespace platform::rar {

/// Begins the file `destName` in the open folder that it lies in; null when that fails.
std::unique_ptr<OutputFile> BeginOutput(OutputFolder* folder, const std::string& destName);

/// Gives the complete file its name and traits; a result code.
int CommitOutput(OutputFile& file, const std::optional<FileTime>& lastWrite, bool executable);

} // namespace platform::rar
