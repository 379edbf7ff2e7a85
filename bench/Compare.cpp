#include "Compare.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace bench {

namespace {

constexpr int kRuns = 9;

double Seconds(const Side& side) {
    side.prepare();
    const auto start = std::chrono::steady_clock::now();
    side.run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

void Compare(const std::string& what, std::size_t bytes, const Side& ours, const Side& peer) {
    Seconds(ours);
    Seconds(peer);
    std::vector<double> ourTimes;
    std::vector<double> peerTimes;
    for (int run = 0; run < kRuns; run++) {
        ourTimes.push_back(Seconds(ours));
        peerTimes.push_back(Seconds(peer));
    }
    const double our = Median(ourTimes);
    const double their = Median(peerTimes);
    const double megabytes = static_cast<double>(bytes) / 1e6;
    std::printf("%-24s %9.1f MB/s %-10s %9.1f MB/s %s\n", what.c_str(), megabytes / our, ours.name.c_str(),
                megabytes / their, peer.name.c_str());
    std::printf("RATIO %s vs %s %.2f\n", what.c_str(), peer.name.c_str(), their / our);
    std::fflush(stdout);
}

void Require(bool good, const std::string& what) {
    if (good)
        return;
    std::fprintf(stderr, "%s: wrong result\n", what.c_str());
    std::exit(1);
}

} // namespace bench
