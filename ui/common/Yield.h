#pragma once

namespace ui {

/// Lets pending window messages run, as long work does after each of its items. It may be called for every
/// item: it does something only when 8 milliseconds have passed since the last time. Handlers that run
/// meanwhile may themselves yield; beyond a few levels they get nothing, so that no chain of clicks can pile
/// up work without end.
void Yield();

/// The same without waiting for the 8 milliseconds, for moments that must be seen (a window that has just
/// been shown).
void YieldNow();

} // namespace ui
