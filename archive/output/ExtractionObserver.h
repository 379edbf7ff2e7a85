#pragma once

#include <cstdint>

namespace output {

/// Is told of the progress of an extraction, by the thread that runs it. The ZIP dialog is one.
class ExtractionObserver {
  public:
    virtual ~ExtractionObserver() = default;

    /// Entry `entry` (from 1) of `count`, selected or not, has been dealt with. The observer shows the
    /// progress and lets window messages run. Answers false to end the extraction here; what is written stays
    /// whole.
    virtual bool EntryDone(std::int32_t entry, std::int32_t count) = 0;

    /// So many bytes of a large entry, the one in hand, have been written, of so many.
    virtual void EntryProgress(std::uint64_t, std::uint64_t) {}
};

} // namespace output
