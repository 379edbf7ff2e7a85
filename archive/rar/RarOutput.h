#pragma once

#include "platform/OutputFolder.h"
#include "platform/Times.h"

#include <memory>
#include <optional>
#include <string>

namespace rar {

/// Begins the file `destName` in the open folder that contains it. Returns null when that fails.
std::unique_ptr<platform::OutputFile> BeginOutput(platform::OutputFolder* folder,
                                                  const std::string& destName);

/// Gives the complete file its name and traits. Returns a result code.
int CommitOutput(platform::OutputFile& file, const std::optional<platform::FileTime>& lastWrite,
                 bool executable);

} // namespace rar
