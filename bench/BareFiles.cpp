#include "BareFiles.h"

#include "Compare.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace bench {

namespace fs = std::filesystem;

BareFiles::BareFiles(const std::string& folder) {
    std::vector<fs::path> paths{folder};
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_directory())
            paths.push_back(entry.path());
    for (const fs::path& path : paths) {
        Folder& made = folders_.emplace_back(Folder{path.lexically_relative(folder).string(), {}});
        for (const auto& entry : fs::directory_iterator(path))
            if (entry.is_regular_file()) {
                made.files.push_back({entry.path().filename().string(), entry.file_size()});
                largest_ = std::max(largest_, made.files.back().size);
            }
    }
}

void BareFiles::Make(const std::string& folder) const {
    const std::vector<char> zeros(largest_);
    constexpr timespec kTimes[] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
    for (const Folder& made : folders_) {
        const std::string path = folder + "/" + made.path;
        ::mkdir(path.c_str(), 0777); // the first is there
        const int parent = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        Require(parent >= 0, path);
        for (const File& file : made.files) {
            const int out =
                ::openat(parent, file.name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            Require(out >= 0 && ::write(out, zeros.data(), file.size) == static_cast<ssize_t>(file.size) &&
                        ::futimens(out, kTimes) == 0 && ::close(out) == 0,
                    file.name);
        }
        ::close(parent);
    }
}

} // namespace bench
