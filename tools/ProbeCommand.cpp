#include "ProbeCommand.h"

#include "base/Letters.h"

#include <charconv>
#include <cstdint>
#include <fstream>
#include <string_view>

namespace tools {

namespace {

std::optional<std::vector<std::int32_t>> ParseEntries(std::string_view text) {
    std::vector<std::int32_t> entries;
    for (;;) {
        const std::size_t end = text.find(',');
        const std::string_view item = text.substr(0, end);
        std::int32_t number = 0;
        const auto [rest, error] = std::from_chars(item.data(), item.data() + item.size(), number);
        if (error != std::errc() || rest != item.data() + item.size() || number < 1)
            return std::nullopt;
        entries.push_back(number);
        if (end == text.npos)
            return entries;
        text.remove_prefix(end + 1);
    }
}

/// By what the file begins with; one that begins with nothing known, by its name.
std::string FormatOf(const std::string& archive) {
    std::string start(4, '\0');
    std::ifstream(archive, std::ios::binary).read(start.data(), static_cast<std::streamsize>(start.size()));
    if (start == "MSCF")
        return "cab";
    if (start == "Rar!")
        return "rar";
    if (start.starts_with("PK"))
        return "zip";
    if (base::EndsWithNoCase(archive, ".cab"))
        return "cab";
    return base::EndsWithNoCase(archive, ".rar") ? "rar" : "zip";
}

/// Takes one option with its value into `command`; false when it is not a good one.
bool TakeOption(ProbeCommand& command, std::string_view option, const std::string& value) {
    if (option == "--format") {
        command.format = value;
        return value == "zip" || value == "cab" || value == "rar";
    }
    if (command.verb == ProbeVerb::kExtract && option == "--password") {
        command.password = value;
        return true;
    }
    if (command.verb == ProbeVerb::kExtract && option == "--entries") {
        command.entries = ParseEntries(value);
        return command.entries.has_value();
    }
    return false;
}

} // namespace

std::optional<ProbeCommand> ParseProbeCommand(const std::vector<std::string>& arguments, std::string& fault) {
    ProbeCommand command;
    const std::string verb = arguments.empty() ? "" : arguments[0];
    if (verb == "extract") {
        command.verb = ProbeVerb::kExtract;
    } else if (verb == "test") {
        command.verb = ProbeVerb::kTest;
    } else if (verb == "pack") {
        command.verb = ProbeVerb::kPack;
    } else if (verb != "list") {
        fault = "the first word is list, test, extract or pack";
        return std::nullopt;
    }
    std::vector<std::string> paths;
    for (std::size_t at = 1; at < arguments.size(); ++at) {
        if (!arguments[at].starts_with("--")) {
            paths.push_back(arguments[at]);
            continue;
        }
        const std::string& option = arguments[at];
        if (++at == arguments.size() || !TakeOption(command, option, arguments[at])) {
            fault = "not understood: " + option;
            return std::nullopt;
        }
    }
    const bool takesOne = command.verb == ProbeVerb::kList || command.verb == ProbeVerb::kTest;
    if (paths.size() != (takesOne ? 1u : 2u)) {
        fault = verb + (takesOne ? " takes one archive" : " takes two paths");
        return std::nullopt;
    }
    command.archive = paths[0];
    if (paths.size() == 2)
        command.folder = paths[1];
    if (command.format.empty())
        command.format = FormatOf(command.archive);
    if (command.verb == ProbeVerb::kTest && command.format != "rar") {
        fault = "only RAR archives have a test of their own";
        return std::nullopt;
    }
    return command;
}

} // namespace tools
