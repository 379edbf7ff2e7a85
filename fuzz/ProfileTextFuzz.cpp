// Reads any bytes as an initialisation file, and checks that a value written is read back and nothing else
// changes.

#include "base/ProfileText.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace base;
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const std::string written = SetProfileValue(content, "Size", "Height", "8040");
    if (FindProfileValue(written, "Size", "Height") != "8040")
        std::abort();
    if (FindProfileValue(written, "Grid", "Width") != FindProfileValue(content, "Grid", "Width"))
        std::abort();
    if (SetProfileValue(written, "Size", "Height", "8040") != written)
        std::abort();
    return 0;
}
