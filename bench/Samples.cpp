#include "Samples.h"

#include "Compare.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string_view>
#include <zlib.h>

namespace bench {

namespace {

namespace fs = std::filesystem;

/// The files below `folder` whose names end in one of `endings`, one after the other until `size` bytes are
/// there; from the first again when they are too few.
Bytes Concatenate(const fs::path& folder, const std::vector<std::string_view>& endings, std::size_t size) {
    std::vector<fs::path> paths;
    for (const auto& entry :
         fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied)) {
        const std::string name = entry.path().filename().string();
        const auto wanted = [&](std::string_view ending) { return name.ends_with(ending); };
        if (!entry.is_symlink() && entry.is_regular_file() && std::ranges::any_of(endings, wanted))
            paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    Require(!paths.empty(), "files below " + folder.string());
    Bytes bytes;
    for (std::size_t i = 0; bytes.size() < size; i = (i + 1) % paths.size()) {
        const Bytes file = ReadFile(paths[i].string());
        bytes.insert(bytes.end(), file.begin(), file.end());
    }
    bytes.resize(size);
    return bytes;
}

/// Rows of 24-bit pixels: slow gradients, hard-edged shapes and a little sensor noise.
Bytes Image(std::size_t size) {
    constexpr std::size_t kWidth = 2048;
    std::mt19937 random(24);
    Bytes bytes;
    bytes.reserve(size + 3);
    for (std::size_t pixel = 0; bytes.size() < size; pixel++) {
        const std::size_t x = pixel % kWidth;
        const std::size_t y = pixel / kWidth;
        const bool inShape = ((x / 256) + (y / 192)) % 3 == 0;
        const double shade =
            90 + 60 * std::sin(static_cast<double>(x) / 310) * std::cos(static_cast<double>(y) / 170);
        const auto noise = static_cast<int>(random() % 4);
        for (int channel = 0; channel < 3; channel++) {
            const int value = inShape ? 40 + 50 * channel : static_cast<int>(shade) + 20 * channel + noise;
            bytes.push_back(static_cast<std::uint8_t>(value));
        }
    }
    bytes.resize(size);
    return bytes;
}

/// A table of records that differ in a counter: long matches at one distance, broken by a few bytes.
Bytes Repetition(std::size_t size) {
    Bytes bytes;
    for (unsigned line = 0; bytes.size() < size; line++) {
        const std::string record =
            "record " + std::to_string(line / 16) +
            "; state: ready; owner: nobody; remarks: none so far; checked: never; size: 4096\n";
        bytes.insert(bytes.end(), record.begin(), record.end());
    }
    bytes.resize(size);
    return bytes;
}

/// Removed with all it holds when the program ends.
struct TemporaryFolder {
    fs::path path;

    TemporaryFolder() {
        std::string pattern = (fs::temp_directory_path() / "codecbench-XXXXXX").string();
        Require(mkdtemp(pattern.data()) != nullptr, "temporary folder");
        path = pattern;
    }

    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
};

} // namespace

std::vector<Sample> MakeSamples(std::size_t size) {
    return {{"text", Concatenate("/usr/include", {".h", ".hpp", ".tcc"}, size)},
            {"code", Concatenate("/usr/lib", {".so", ".so.0", ".so.1", ".so.2", ".so.3", ".so.6"}, size)},
            {"image", Image(size)},
            {"repetitive", Repetition(size)}};
}

Bytes DeflateByZlib(const Bytes& content, int level) {
    z_stream stream{};
    Require(deflateInit2(&stream, level, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY) == Z_OK, "deflateInit2");
    Bytes out(deflateBound(&stream, content.size()));
    stream.next_in = const_cast<Bytef*>(content.data());
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    Require(deflate(&stream, Z_FINISH) == Z_STREAM_END, "deflate");
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

std::string TemporaryFile(const std::string& name) {
    static const TemporaryFolder folder;
    return (folder.path / name).string();
}

Bytes ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    Bytes bytes(fs::file_size(path));
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    Require(file.good() || bytes.empty(), path);
    return bytes;
}

void WriteFile(const std::string& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    Require(file.good(), path);
}

} // namespace bench
