#pragma once

namespace base {

/// How work that may be stopped ended. What failed, and why, has been told when it happened: to the work's
/// observer, or by a message.
enum class Outcome {
    kDone,    ///< all of it
    kFailed,  ///< not all of it could be done
    kStopped, ///< by the observer
};

} // namespace base
