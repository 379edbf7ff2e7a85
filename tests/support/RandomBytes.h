#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

namespace support {

using Random = std::mt19937;

inline std::size_t Below(Random& random, std::size_t end) {
    return random() % end;
}

/// Kinds of content that lead a compressor to different streams.
enum class Content { kNoise, kText, kRuns, kFewValues };

inline std::vector<std::uint8_t> RandomContent(Random& random, Content content, std::size_t size) {
    static constexpr std::string_view kWords[] = {"cabinet ", "folder ",   "of the ", "archive",
                                                  "\r\n",     "drive E: ", "0x90 "};
    std::vector<std::uint8_t> bytes;
    while (bytes.size() < size) {
        const auto any = static_cast<std::uint8_t>(random());
        switch (content) {
        case Content::kNoise:
            bytes.push_back(any);
            break;
        case Content::kText: {
            const std::string_view word = kWords[any % std::size(kWords)];
            bytes.insert(bytes.end(), word.begin(), word.end());
            break;
        }
        case Content::kRuns:
            bytes.insert(bytes.end(), 1 + Below(random, 2000), any);
            break;
        case Content::kFewValues:
            bytes.push_back(any < 200 ? static_cast<std::uint8_t>(140 + any % 6) : any);
            break;
        }
    }
    bytes.resize(size);
    return bytes;
}

} // namespace support
