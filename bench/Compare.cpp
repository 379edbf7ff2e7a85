#include "Compare.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <time.h>
#include <vector>

namespace bench {

namespace {

constexpr int kRuns = 9;

double Now(Clock clock) {
    if (clock == Clock::kWall) {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration<double>(now).count();
    }
    timespec own{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    rusage children{};
    getrusage(RUSAGE_CHILDREN, &children);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return static_cast<double>(own.tv_sec) + static_cast<double>(own.tv_nsec) / 1e9 +
           seconds(children.ru_utime) + seconds(children.ru_stime);
}

double Seconds(const Side& side, Clock clock) {
    side.prepare();
    const double start = Now(clock);
    side.run();
    return Now(clock) - start;
}

} // namespace

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Times Measure(const Side& ours, const Side& peer, Clock clock) {
    Seconds(ours, clock);
    Seconds(peer, clock);
    std::vector<double> ourTimes;
    std::vector<double> peerTimes;
    for (int run = 0; run < kRuns; run++) {
        ourTimes.push_back(Seconds(ours, clock));
        peerTimes.push_back(Seconds(peer, clock));
    }
    return {Median(ourTimes), Median(peerTimes)};
}

void Compare(const std::string& what, std::size_t bytes, const Side& ours, const Side& peer, Clock clock) {
    const auto [our, their] = Measure(ours, peer, clock);
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
