#pragma once

#include "support/HostFiles.h"
#include "support/TestDir.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace tests {

#ifdef _WIN32
inline FILE* OpenPipe(const char* command, const char* mode) {
    return ::_popen(command, mode);
}

inline int ClosePipe(FILE* pipe) {
    return ::_pclose(pipe);
}
#else
inline FILE* OpenPipe(const char* command, const char* mode) {
    return ::popen(command, mode);
}

inline int ClosePipe(FILE* pipe) {
    return ::pclose(pipe);
}
#endif

/// What one start of the program told.
struct ProbeResult {
    std::map<std::string, std::string> values;
    std::vector<std::string> messages; ///< "flags|title|text", in order

    std::string operator[](const std::string& key) const {
        const auto found = values.find(key);
        return found == values.end() ? "(not told)" : found->second;
    }
};

/// A drive E: with a program folder of its own, E:\Tools\Pellarion, ready to start from: the program file and
/// the text libraries of this build. `settings` is its settings file; without any there is none.
class ProgramFolder {
  public:
    explicit ProgramFolder(std::optional<std::string_view> settings = std::nullopt)
        : runtime_("XDG_RUNTIME_DIR", dir_.HostC().string()) {
        std::filesystem::create_directories(Host());
        LinkProgram();
        for (const char* library : {"langfile0409.dll", "lic0409.dll", "langfile0407.dll", "lic0407.dll"})
            Put(std::string(PROGRAM_DIR) + "/" + library, library);
        if (settings)
            dir_.MakeFile("Tools/Pellarion/setting.ini", *settings);
    }

    TestDir& Dir() { return dir_; }

    std::filesystem::path Host(std::string_view name = "") const {
        return dir_.Host("Tools/Pellarion") / name;
    }

    std::filesystem::path TempFolder() const { return dir_.HostC() / "Pellarion" / "temp"; }

    /// Puts a copy of a file into the program folder, in place of one of that name.
    void Put(const std::filesystem::path& source, std::string_view name) const {
        std::filesystem::copy_file(source, Host(name), std::filesystem::copy_options::overwrite_existing);
    }

    /// For the host's shell.
    std::string Command(std::string_view arguments) const {
#ifdef _WIN32
        return "\"" + Host(kProgram).string() + "\" " + std::string(arguments);
#else
        return "'" + Host(kProgram).string() + "' " + std::string(arguments);
#endif
    }

    /// Starts the program, waits for its end and returns what it told. A program that does not end well tells
    /// no "ended".
    ProbeResult Start(std::string_view arguments = "") const {
        std::string output;
        FILE* pipe = OpenPipe(Command(arguments).c_str(), "r");
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
            output += static_cast<char>(c);
        ProbeResult result = Parse(output);
        if (ClosePipe(pipe) == 0)
            result.values["ended"] = "well";
        return result;
    }

    static ProbeResult Parse(const std::string& output) {
        ProbeResult result;
        std::istringstream lines(output);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t equals = line.find('=');
            if (line.starts_with("message="))
                result.messages.push_back(line.substr(equals + 1));
            else if (equals != std::string::npos)
                result.values[line.substr(0, equals)] = line.substr(equals + 1);
        }
        return result;
    }

#ifdef _WIN32
    static constexpr char kProgram[] = "pellarion.exe";
#else
    static constexpr char kProgram[] = "pellarion";
#endif

  private:
    // A link, where the disk allows it: program files with debug information are large.
    void LinkProgram() const {
        std::error_code error;
        std::filesystem::create_hard_link(STARTUP_PROBE, Host(kProgram), error);
        if (error)
            Put(STARTUP_PROBE, kProgram);
    }

    TestDir dir_;
    ScopedVariable runtime_;
};

} // namespace tests
