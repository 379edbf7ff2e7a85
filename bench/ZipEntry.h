#pragma once

#include "archive/codec/ByteBuffer.h"

#include <string>

namespace bench {

/// The stored bytes of the first entry of an archive that has one entry, read from the file once, as the ZIP
/// reader does.
codec::ByteBuffer ReadFirstEntry(const std::string& path);

} // namespace bench
