#pragma once

namespace base {

/// The Windows code page that belongs to a font character-set number; 1252 for a number without one.
int CodePageOfCharset(int charset);

} // namespace base
