#pragma once

#include "Samples.h"

namespace bench {

/// The stored bytes of the first entry of an archive that has one entry.
Bytes FirstEntry(const Bytes& archive);

} // namespace bench
