#include "archive/zip/ArchiveState.h"

namespace archive {

namespace {
ArchiveState state;
} // namespace

ArchiveState& State() {
    return state;
}

} // namespace archive
