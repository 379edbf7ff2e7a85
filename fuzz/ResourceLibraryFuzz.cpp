// Reads any bytes as a text library and asks for strings of the first blocks and the last.

#include "base/PeStringTable.h"

#include <cstddef>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto table = base::PeStringTable::Read({reinterpret_cast<const char*>(data), size});
    for (std::uint32_t id = 0; table && id < 64; ++id)
        table->Find(id);
    if (table)
        table->Find(0xFFFF);
    return 0;
}
