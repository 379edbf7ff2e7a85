#include "archive/cabinet/ProgressMeter.h"

namespace cabinet {
namespace {

constexpr std::chrono::milliseconds kPause{20};

} // namespace

void ProgressMeter::SetFile(const std::string& name) {
    const std::lock_guard lock(mutex_);
    file_ = name;
}

bool ProgressMeter::Tell() {
    if (stopped_)
        return false;
    const auto now = std::chrono::steady_clock::now();
    if (!observer_ || now - last_ < kPause)
        return true;
    std::string file;
    {
        const std::lock_guard lock(mutex_);
        file = file_;
    }
    stopped_ = !observer_->Proceed({file, 0, done_.exchange(0), total_});
    last_ = std::chrono::steady_clock::now();
    return !stopped_;
}

} // namespace cabinet
