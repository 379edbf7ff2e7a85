#pragma once

#include "platform/OutputPathRule.h"

namespace archive {

using platform::StaysInTarget;

} // namespace archive
