#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

using Bytes = std::vector<std::uint8_t>;

/// Content to decode.
struct Sample {
    std::string name;
    Bytes bytes;
};

/// The four kinds of content, each of `size` bytes: source text and machine code of this machine's own
/// system, an image and repetition made by formula. Files are taken in the order of their paths.
std::vector<Sample> MakeSamples(std::size_t size);

/// A raw Deflate stream of the content, by zlib.
Bytes DeflateByZlib(const Bytes& content, int level);

/// A file of a temporary folder that goes when the program ends.
std::string TemporaryFile(const std::string& name);

Bytes ReadFile(const std::string& path);
void WriteFile(const std::string& path, const Bytes& bytes);

} // namespace bench
