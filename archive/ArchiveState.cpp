#include "archive/ArchiveState.h"

namespace archive {

ArchiveState& State() {
    static ArchiveState state;
    return state;
}

} // namespace archive
