#include "ZipEntry.h"

#include "Compare.h"

namespace bench {

namespace {

std::size_t Number(const Bytes& bytes, std::size_t at, std::size_t size) {
    std::size_t value = 0;
    for (std::size_t i = size; i-- > 0;)
        value = value << 8 | bytes.at(at + i);
    return value;
}

} // namespace

Bytes FirstEntry(const Bytes& archive) {
    // The end record without a comment, the central header for the size, the local header for the start.
    Require(archive.size() > 22, "archive size");
    const std::size_t central = Number(archive, archive.size() - 22 + 16, 4);
    Require(Number(archive, central, 4) == 0x02014B50, "central header");
    const std::size_t size = Number(archive, central + 20, 4);
    const std::size_t start = 30 + Number(archive, 26, 2) + Number(archive, 28, 2);
    const auto first = archive.begin() + static_cast<std::ptrdiff_t>(start);
    return {first, first + static_cast<std::ptrdiff_t>(size)};
}

} // namespace bench
