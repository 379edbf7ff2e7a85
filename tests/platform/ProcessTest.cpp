#include "platform/Process.h"

#include "platform/SpecialFolders.h"
#include "support/TestDir.h"

#include <array>
#include <csignal>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace platform;
using tests::ScopedVariable;
using tests::TestDir;

/// Another process. It prints what PreviousInstanceRuns() returns and then lives until it is ended.
class Copy {
  public:
    Copy() {
        std::array<int, 2> answer{};
        EXPECT_EQ(::pipe(answer.data()), 0);
        process_ = ::fork();
        if (process_ == 0) {
            const char previous = PreviousInstanceRuns() ? 'y' : 'n';
            if (::write(answer[1], &previous, 1) == 1)
                ::pause();
            ::_exit(0);
        }
        EXPECT_EQ(::read(answer[0], &answer_, 1), 1);
        ::close(answer[0]);
        ::close(answer[1]);
    }

    ~Copy() {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }

    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

    bool FoundPrevious() const { return answer_ == 'y'; }

  private:
    pid_t process_ = 0;
    char answer_ = 0;
};

TEST(Process, SecondCopyIsToldOfTheFirst) {
    const TestDir dir;
    const ScopedVariable cache("XDG_CACHE_HOME", dir.Host("not/yet").string());
    for (const std::string& runtimeFolder : {dir.Host().string(), std::string()}) {
        const ScopedVariable runtime("XDG_RUNTIME_DIR", runtimeFolder);
        {
            const Copy first;
            EXPECT_FALSE(first.FoundPrevious());
            EXPECT_TRUE(Copy().FoundPrevious());
            EXPECT_TRUE(Copy().FoundPrevious()) << "a copy that was turned away has claimed nothing";
        }
        EXPECT_FALSE(Copy().FoundPrevious()) << "a copy that was killed leaves its place";
    }
}

TEST(Process, ProgramFolderIsThatOfThisTest) {
    const std::string self = std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
    {
        const ScopedVariable drives("PELLARION_DRIVES", "E=removable:" + self);
        EXPECT_EQ(ProgramFolder(), "E:") << "no last backslash, even for a root";
    }
    const ScopedVariable drives("PELLARION_DRIVES", "C=fixed:/");
    EXPECT_EQ(ProgramFolder(), "C:" + TestDir::Path(self).substr(3));
}

TEST(Process, SystemFacts) {
    EXPECT_GE(GetVersionRecord().major, 3U);
    EXPECT_EQ(GetVersionRecord().platformId, 0U) << "not the NT family";
    EXPECT_EQ(ProgramString(998), "Pellarion");
    EXPECT_TRUE(ProgramString(1000).starts_with("https://"));
    EXPECT_EQ(ProgramString(999), "");
    if (::geteuid() == 0) {
        EXPECT_TRUE(IsNTAdmin());
    }
}

TEST(Process, UserWithoutPrivilegesIsNoAdministrator) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the super-user can become another user";
    const pid_t child = ::fork();
    if (child == 0) {
        // 65534 is nobody; no supplementary groups.
        const gid_t nobody = 65534;
        const bool became = ::setgroups(1, &nobody) == 0 && ::setgid(nobody) == 0 && ::setuid(nobody) == 0;
        ::_exit(became && !IsNTAdmin() ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

TEST(SpecialFolders, FollowTheUsersSettings) {
    const TestDir dir;
    const ScopedVariable home("HOME", dir.Host("home").string());
    const ScopedVariable config("XDG_CONFIG_HOME", dir.Host("home/config").string());
    dir.MakeFolder("home");
    EXPECT_EQ(GetSpecialFolderPath(kCsidlDesktopDirectory), "E:\\home") << "a user without a desktop";
    dir.MakeFolder("home/Desktop");
    EXPECT_EQ(GetSpecialFolderPath(kCsidlDesktopDirectory), "E:\\home\\Desktop");
    dir.MakeFolder("home/Schreibtisch");
    dir.MakeFolder("docs");
    dir.MakeFile("home/config/user-dirs.dirs", "# comment\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"
                                               "XDG_DOCUMENTS_DIR=\"" +
                                                   dir.Host("docs").string() + "\"\nXDG_MUSIC_DIR=\n");
    EXPECT_EQ(GetSpecialFolderPath(kCsidlDesktopDirectory), "E:\\home\\Schreibtisch");
    EXPECT_EQ(GetSpecialFolderPath(kCsidlPersonal), "E:\\docs");
    EXPECT_EQ(GetSpecialFolderPath(4711), "");
}

} // namespace
