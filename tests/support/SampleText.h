#pragma once

#include <cstdint>
#include <string>

namespace tests {

/// Text that packs well but not to nothing, and differs by `seed`.
inline std::string SampleText(std::size_t size, unsigned seed = 1) {
    std::string text;
    std::uint32_t state = seed * 2654435761u + 1;
    while (text.size() < size) {
        state = state * 1664525u + 1013904223u;
        text += "word" + std::to_string(state >> 20) + ((state >> 8 & 15) == 0 ? "\n" : " ");
    }
    text.resize(size);
    return text;
}

} // namespace tests
