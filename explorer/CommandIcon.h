#pragma once

#include <QIcon>

namespace explorer {

/// Icon of a command or a node by name.
QIcon CommandIcon(const char* name);

} // namespace explorer
