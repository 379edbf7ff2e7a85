#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tools {

enum class ProbeVerb { kList, kTest, kExtract, kPack };

/// What the command line asks of the probe.
struct ProbeCommand {
    ProbeVerb verb = ProbeVerb::kList;
    std::string archive; ///< host path; what is packed, for pack
    std::string folder;  ///< host path; not for list and test
    std::string format;  ///< "zip", "cab" or "rar"
    std::optional<std::string> password;
    std::optional<std::vector<std::int32_t>> entries; ///< numbers from 1; nothing: all
};

/// Reads the arguments behind the program's name. Nothing when they are wrong, with `fault` saying how.
std::optional<ProbeCommand> ParseProbeCommand(const std::vector<std::string>& arguments, std::string& fault);

} // namespace tools
