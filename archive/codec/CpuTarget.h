#pragma once

#include <cstdlib>
#include <cstring>

// Processor facts for code that exists in several versions. Everything below the one #if is meant to be used
// only under PELLARION_X86_64; other processors use the portable versions.
#if defined(__x86_64__) && defined(__GNUC__)
#define PELLARION_X86_64 1
#else
#define PELLARION_X86_64 0
#endif

namespace codec {

/// Whether faster versions than the portable ones may be used at all. The environment variable
/// PELLARION_CPU=portable forbids them, to tell a fault of the fast code from a fault of the data.
inline bool FastCodeAllowed() {
    const char* choice = std::getenv("PELLARION_CPU");
    return choice == nullptr || std::strcmp(choice, "portable") != 0;
}

} // namespace codec
