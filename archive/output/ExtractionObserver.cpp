#include "archive/output/ExtractionObserver.h"

#include <utility>

namespace output {

namespace {
ExtractionObserver* current = nullptr;
} // namespace

ExtractionObserver* Observer() {
    return current;
}

ExtractionObserver* SetObserver(ExtractionObserver* observer) {
    return std::exchange(current, observer);
}

} // namespace output
