#include "Peers.h"

#include "RunCommand.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace bench {

namespace {

constexpr int kTries = 3;

double Seconds(const Side& side) {
    side.prepare();
    const auto start = std::chrono::steady_clock::now();
    side.run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

void EmptyFolder(const std::string& folder) {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
}

Side ProgramSide(const std::string& name, const std::vector<std::string>& words, const std::string& cleaned) {
    const auto prepare = [cleaned] {
        if (!cleaned.empty())
            EmptyFolder(cleaned);
    };
    return {name, [words] { RunCommand(words); }, prepare};
}

Side QuickestOf(const std::vector<Side>& peers) {
    std::vector<Side> installed;
    std::ranges::copy_if(peers, std::back_inserter(installed),
                         [](const Side& peer) { return HasCommand(peer.name); });
    Require(!installed.empty(), "none of the peers is installed");
    std::vector<double> best(installed.size(), 1e9);
    for (int run = 0; run < kTries; ++run) {
        for (std::size_t i = 0; i < installed.size(); ++i)
            best[i] = std::min(best[i], Seconds(installed[i]));
    }
    return installed[static_cast<std::size_t>(std::ranges::min_element(best) - best.begin())];
}

} // namespace bench
