#pragma once

#include "base/SystemError.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace base {

/// A step of long work. The counts are what has been done since the step before.
struct WorkStep {
    std::string_view path;     ///< what is worked on now, as it is shown: a path, or a name inside an archive
    std::uint64_t entries = 0; ///< files and folders that are finished
    std::uint64_t bytes = 0;
    std::uint64_t size = 0; ///< what `bytes` add up to in the end, where the work knows that; else 0
};

/// Interface that receives the progress of long work: packing, unpacking, copying or deleting.
class WorkObserver {
  public:
    virtual ~WorkObserver() = default;

    /// Called often, always on the thread that called for the work, so it may let window messages run. False
    /// stops the work, at the latest when the present file is finished: every file is then either complete or
    /// as it was before.
    virtual bool Proceed(const WorkStep& step) = 0;

    /// What could not be done, and why, in work that goes on with the other entries.
    virtual void Failed(const std::string& /*path*/, SystemError /*error*/) {}
};

} // namespace base
