#include "ui/desktop/FontPreload.h"

namespace ui {

// The system keeps its fonts ready for every program.
FontPreload::FontPreload() = default;

FontPreload::~FontPreload() = default;

} // namespace ui
