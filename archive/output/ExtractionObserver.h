#pragma once

#include <cstdint>

namespace output {

/// Interface that receives the progress of an extraction. The ZIP window implements it.
class ExtractionObserver {
  public:
    virtual ~ExtractionObserver() = default;

    /// Entry `entry` (from 1) of `count`, selected or not, is finished. The implementation shows the progress
    /// and lets window messages run. When it returns false, the extraction ends here; what has been written
    /// stays complete.
    virtual bool EntryDone(std::int32_t entry, std::int32_t count) = 0;

    /// The first number is how many bytes of the present entry, a large one, have been written; the second is
    /// its size.
    virtual void EntryProgress(std::uint64_t, std::uint64_t) {}
};

} // namespace output
