#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// One of two ways to the same result. `prepare` is not timed.
struct Side {
    std::string name;
    std::function<void()> run;
    std::function<void()> prepare = [] {};
};

/// What a run costs: the time that passes, or the processor time of this process and of the programs that it
/// ran to their end. The latter is for sides of one thread each: it does not care what else the machine does.
enum class Clock { kWall, kProcessor };

/// Median seconds of both sides.
struct Times {
    double ours;
    double peers;
};

/// Runs both sides in turn, as Compare does, and prints nothing.
Times Measure(const Side& ours, const Side& peer, Clock clock);

/// Runs both sides in turn, each at least nine times after a first run that does not count, and prints the
/// speed of both at `bytes` per run, by their median times, and the line
///
///     RATIO <what> vs <peer> <peer's time divided by ours>
///
/// Above 1 is better for us. A faster peer is still compared run by run, so that a slow moment of the machine
/// meets both.
void Compare(const std::string& what, std::size_t bytes, const Side& ours, const Side& peer,
             Clock clock = Clock::kWall);

double Median(std::vector<double> values);

/// Ends the program when `good` is false: a wrong result has no speed.
void Require(bool good, const std::string& what);

} // namespace bench
