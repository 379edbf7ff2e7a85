#pragma once

namespace base {

/// The Windows code page that goes with a font character-set number; 1252 for one that has none of its own.
int CodePageOfCharset(int charset);

} // namespace base
