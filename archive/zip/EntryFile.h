#pragma once

#include "archive/output/OpenFolders.h"
#include "platform/OutputFolder.h"
#include "platform/Times.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zip {

/// "\" when the current folder contains one, otherwise "/".
std::string DetectPathSeparator();

/// The folder part of `path`, ending in the separator, in upper case; the current folder when there is no
/// separator in it. The separators of `path` itself are made uniform.
std::string FolderOfPath(std::string& path);

/// Local date and time of an entry's MS-DOS words; 1 January 1601, 00:00:00 when they are no valid date.
platform::SystemTime DosDateTimeToDate(std::uint16_t date, std::uint16_t time);

/// The times that a file made from an entry is written with; nothing when the words are both 0 or no valid
/// date.
std::optional<platform::FileTimes> EntryTimes(std::uint16_t date, std::uint16_t time);

/// The times of a file made from an entry: created and written when the MS-DOS words say, accessed now. False
/// when the words are no valid date.
bool SetEntryTimesFromDos(platform::FileTimes& times, std::uint16_t date, std::uint16_t time);

/// Puts `name` behind `folder`, which gets a last separator when it has none.
std::string JoinEntryPath(std::string& folder, std::string_view name);

/// Makes the folder entry `name`, which must be safe (OutputPathRule.h), in the target `folder`, with its
/// parents, all in their own letter case. False after a failure; message IDS_FOLDER_NOT_MADE was shown then.
bool CreateEntryFolder(output::OpenFolders& folders, std::string_view name, std::string& folder);

/// Writes the bytes of one entry as the file `name`, which must be safe (OutputPathRule.h), in the target
/// `folder` (the one that `folders` was made for). Makes missing folders, with names in upper case. Replaces
/// a file of that name once the new one is complete. Sets the time of the MS-DOS words unless both are 0 or
/// they are no valid date. Returns 0 when the file is written. After any other value nothing of it remains.
int WriteEntryFile(output::OpenFolders& folders, std::string_view name, std::string& folder,
                   std::span<const std::uint8_t> data, std::uint16_t date, std::uint16_t time);

/// Begins the file that WriteEntryFile would write, for content that comes in pieces. Null when that fails;
/// nothing is shown and no file made then. The file must be done with before `folders` is used again.
std::unique_ptr<platform::OutputFile> BeginEntryFile(output::OpenFolders& folders, std::string_view name,
                                                     std::string& folder);

} // namespace zip
