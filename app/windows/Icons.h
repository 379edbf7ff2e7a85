#pragma once

#include <QIcon>

namespace app {

/// The program's icon `name` ("folder", "archive-zip", ...; resources/icons holds the drawings) in every size
/// that it is drawn in. Made once and kept. An icon without any size, and a warning, when there is none of
/// that name.
QIcon Icon(const char* name);

} // namespace app
