#pragma once

#include "archive/rar/RarBlock.h"

#include <string>

namespace rar {

/// Name of a format 4 header, in UTF-8 with backslashes between folders: bytes of the system code page ...
std::string PlainName(Bytes name);

/// ... or, where the header says that it holds Unicode, UTF-8, or bytes with a NUL and a packed form of the
/// UTF-16 name behind them.
std::string UnicodeName(Bytes name);

/// A stored name with backslashes between folders.
std::string WithBackslashes(std::string name);

} // namespace rar
