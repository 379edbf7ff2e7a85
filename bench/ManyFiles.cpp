#include "ManyFiles.h"

#include "Compare.h"

#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace bench {

void MakeManyFiles(const std::string& folder, int count) {
    static constexpr const char* kWords[] = {"Invoice", "letter", "Holiday", "draft", "Meeting",
                                             "notes",   "Garden", "scan",    "Über",  "report"};
    static constexpr const char* kExtensions[] = {"txt", "pdf", "jpg", "png", "doc",  "odt", "xls",
                                                  "csv", "zip", "cab", "rar", "html", "cpp", "h",
                                                  "mp3", "avi", "xml", "log", "enc",  "bak"};
    std::filesystem::create_directory(folder);
    std::uint32_t state = 1;
    const auto random = [&state](std::uint32_t below) {
        state = state * 1'664'525 + 1'013'904'223;
        return static_cast<std::uint32_t>((std::uint64_t{state} * below) >> 32);
    };
    for (int number = 0; number < count; ++number) {
        const std::string name = std::string(kWords[random(10)]) + ' ' + kWords[random(10)] + ' ' +
                                 std::to_string(number) + '.' + kExtensions[random(20)];
        const int file = ::open((folder + '/' + name).c_str(), O_CREAT | O_WRONLY | O_EXCL, 0644);
        const timespec times[2] = {{}, {1'000'000'000 + static_cast<time_t>(random(700'000'000)), 0}};
        Require(file >= 0 && ::ftruncate(file, static_cast<off_t>(random(50'000'000))) == 0 &&
                    ::futimens(file, times) == 0,
                "making " + name);
        ::close(file);
    }
}

} // namespace bench
