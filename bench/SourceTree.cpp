#include "SourceTree.h"

#include "Compare.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargest = 200'000;

constexpr std::array<std::string_view, 14> kEndings{".h",  ".hpp", ".c",    ".cpp",   ".py", ".pm",   ".pl",
                                                    ".js", ".css", ".html", ".cmake", ".sh", ".json", ".txt"};

using SizedFile = std::pair<fs::path, std::size_t>;

void AddFiles(std::vector<SizedFile>& files, const fs::path& folder) {
    std::error_code none;
    if (!fs::is_directory(folder, none))
        return;
    for (const auto& entry :
         fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_symlink() || !entry.is_regular_file() ||
            std::ranges::none_of(kEndings, [&](auto ending) { return name.ends_with(ending); }))
            continue;
        if (const auto size = entry.file_size(); size > 0 && size <= kLargest)
            files.emplace_back(entry.path(), size);
    }
}

} // namespace

std::size_t MakeSourceTree(const fs::path& folder, std::size_t count, std::size_t meanSize) {
    std::vector<SizedFile> files;
    for (const char* source : {"/usr/include", "/usr/lib", "/usr/share"})
        AddFiles(files, source);
    std::ranges::sort(files);
    Require(files.size() > 100, "text files of the system");
    std::size_t total = 0;
    std::size_t made = 0;
    for (std::size_t round = 0; made < count; ++round) {
        for (const auto& [path, size] : files) {
            // Large files while the mean is low, small ones while it is high.
            if (made == count || (total > made * meanSize && size > meanSize) ||
                (total < made * meanSize && size < meanSize / 4))
                continue;
            const fs::path target = folder / ("tree" + std::to_string(round)) / path.relative_path();
            fs::create_directories(target.parent_path());
            fs::copy_file(path, target);
            total += size;
            ++made;
        }
    }
    return total;
}

} // namespace bench
