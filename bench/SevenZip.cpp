#include "SevenZip.h"

#include "Compare.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

void RunSevenZip(const std::vector<std::string>& arguments) {
    std::vector<std::string> words = {"7zz"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    words.push_back("-mmt=1");
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failed = posix_spawnp(&child, "7zz", &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    Require(failed == 0 && waitpid(child, &status, 0) == child && status == 0, "7zz " + arguments.front());
}

} // namespace bench
