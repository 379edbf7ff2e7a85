#include "RunCommand.h"

#include "Compare.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

std::size_t RunCommand(const std::vector<std::string>& words) {
    std::vector<std::string> copies = words;
    std::vector<char*> pointers;
    for (std::string& word : copies)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failed = posix_spawnp(&child, pointers[0], &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    Require(failed == 0 && wait4(child, &status, 0, &usage) == child && status == 0, words[0]);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

bool HasCommand(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((std::filesystem::path(folder) / name).c_str(), X_OK) == 0)
            return true;
    return false;
}

} // namespace bench
