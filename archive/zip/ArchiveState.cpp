#include "archive/zip/ArchiveState.h"

namespace zip {

namespace {
ArchiveState state;
} // namespace

ArchiveState& State() {
    return state;
}

} // namespace zip
