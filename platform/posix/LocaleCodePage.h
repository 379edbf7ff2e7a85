#pragma once

namespace platform {

/// The code page of the user's locale, in which the host writes names; 65001 for UTF-8 and for the "C"
/// locale.
int LocaleCodePage();

} // namespace platform
