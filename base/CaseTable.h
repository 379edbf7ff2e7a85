#pragma once

#include <cstddef>
#include <cstdint>

namespace base {

/// A run of code points, `step` apart, that all map to themselves plus `delta` (Unicode simple case mapping).
struct CaseRun {
    char32_t first;
    char32_t last;
    char32_t step;
    std::int32_t delta;
};

/// Runs by ascending code point.
extern const CaseRun kUpperRuns[];
extern const std::size_t kUpperRunsCount;
extern const CaseRun kLowerRuns[];
extern const std::size_t kLowerRunsCount;

} // namespace base
