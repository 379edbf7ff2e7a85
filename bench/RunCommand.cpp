#include "RunCommand.h"

#include "Compare.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace bench {

namespace {

pid_t Start(const std::vector<std::string>& words) {
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
    Require(failed == 0, words[0]);
    return child;
}

/// Most memory that a living process has held so far, in bytes; 0 when it has ended.
std::size_t PeakOf(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::stoul(line.substr(6)) * 1024;
    return 0;
}

} // namespace

void RunCommand(const std::vector<std::string>& words) {
    const pid_t child = Start(words);
    int status = 0;
    Require(waitpid(child, &status, 0) == child && status == 0, words[0]);
}

std::size_t MemoryOf(const std::vector<std::string>& words) {
    // What the system tells of an ended process counts the memory of the one that started it, too.
    const pid_t child = Start(words);
    std::size_t peak = 0;
    int status = 0;
    pid_t ended = 0;
    while ((ended = waitpid(child, &status, WNOHANG)) == 0) {
        peak = std::max(peak, PeakOf(child));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    Require(ended == child && status == 0, words[0]);
    return peak;
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
