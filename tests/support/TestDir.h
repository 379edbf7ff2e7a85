#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <stdlib.h>
#include <string>
#include <string_view>

namespace tests {

#ifdef _WIN32
inline void SetVariable(const char* name, const char* value) {
    ::_putenv_s(name, value);
}
#else
inline void SetVariable(const char* name, const char* value) {
    if (*value == '\0')
        ::unsetenv(name);
    else
        ::setenv(name, value, 1);
}
#endif

/// Sets an environment variable for its own life; an empty value is as good as none.
class ScopedVariable {
  public:
    ScopedVariable(std::string name, const std::string& value) : name_(std::move(name)) {
        if (const char* before = ::getenv(name_.c_str()))
            before_ = before;
        SetVariable(name_.c_str(), value.c_str());
    }

    ~ScopedVariable() { SetVariable(name_.c_str(), before_.c_str()); }

    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

  private:
    std::string name_;
    std::string before_;
};

/// A temporary folder that is, for its life, the whole world of the program: drive C: (fixed) and drive E:
/// (removable) are its subfolders "c" and "e". Everything is removed at the end.
class TestDir {
  public:
    TestDir() : root_(MakeRoot()), drives_("PELLARION_DRIVES", DriveTable()) {
        std::filesystem::create_directory(root_ / "c");
        std::filesystem::create_directory(root_ / "e");
    }

    ~TestDir() {
        std::error_code ignored;
#ifdef _WIN32
        // There a protected file is not deleted, and a long path needs its prefix.
        root_ = L"\\\\?\\" + root_.wstring();
        for (auto entry = std::filesystem::recursive_directory_iterator(root_, ignored); entry != end(entry);
             entry.increment(ignored))
            std::filesystem::permissions(*entry, std::filesystem::perms::all, ignored);
#endif
        std::filesystem::remove_all(root_, ignored);
    }

    TestDir(const TestDir&) = delete;
    TestDir& operator=(const TestDir&) = delete;

    /// "E:\" + `relative`; slashes are turned round.
    static std::string Path(std::string_view relative = "") {
        std::string path = "E:\\" + std::string(relative);
        for (char& c : path)
            c = c == '/' ? '\\' : c;
        return path;
    }

    /// The same place as the host names it; `relative` is UTF-8 and has forward slashes.
    std::filesystem::path Host(std::string_view relative = "") const {
        return relative.empty() ? root_ / "e" : root_ / "e" / std::u8string(relative.begin(), relative.end());
    }

    /// The host folder that is drive C:.
    std::filesystem::path HostC() const {
        return root_ / "c";
    }

    /// Writes a file on E:, making its folders; returns its path in the program's form.
    std::string MakeFile(std::string_view relative, std::string_view content = "") const {
        std::filesystem::create_directories(Host(relative).parent_path());
        std::ofstream file(Host(relative), std::ios::binary);
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
        if (!file.flush())
            throw std::runtime_error("cannot write " + Host(relative).string());
        return Path(relative);
    }

    /// Makes a folder on E: with all above it; returns its path in the program's form.
    std::string MakeFolder(std::string_view relative) const {
        std::filesystem::create_directories(Host(relative));
        return Path(relative);
    }

    /// Content of a file on E:; nothing when it cannot be read.
    std::optional<std::string> Read(std::string_view relative) const {
        std::ifstream file(Host(relative), std::ios::binary);
        if (!file || std::filesystem::is_directory(Host(relative)))
            return std::nullopt;
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    /// Whether an entry of that name is on E:, be it a link that leads nowhere.
    bool Exists(std::string_view relative) const {
        return std::filesystem::symlink_status(Host(relative)).type() !=
               std::filesystem::file_type::not_found;
    }

    /// How many entries the folder `relative` on E: holds.
    std::size_t Count(std::string_view relative = "") const {
        const auto entries = std::filesystem::directory_iterator(Host(relative));
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

  private:
    static std::filesystem::path MakeRoot() {
        static std::atomic<unsigned> counter{0};
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        const std::filesystem::path place = std::filesystem::temp_directory_path();
        for (;;) {
            std::filesystem::path root =
                place / ("pellarion-test-" + std::to_string(now) + "-" + std::to_string(counter++));
            if (std::filesystem::create_directory(root)) // false when another test was quicker
                return root;
        }
    }

    std::string DriveTable() const {
        return "C=fixed:" + (root_ / "c").string() + ";E=removable:" + (root_ / "e").string();
    }

    std::filesystem::path root_;
    ScopedVariable drives_;
};

} // namespace tests
