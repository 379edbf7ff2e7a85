#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Number of the system ANSI code page: 65001 under a UTF-8 locale, else the Windows code-page number.
/// On Linux `PELLARION_ANSI_CODEPAGE` overrides it.
int AnsiCodePage();

/// Chooses the legacy code page for stored bytes that are not UTF-8, for the case that the ANSI code page is
/// UTF-8. `charset` is a font character-set number (0 = Western, 134 = simplified Chinese, 204 = Cyrillic).
void SetLegacyCharset(int charset);

/// Stored ANSI bytes as UTF-8. Every byte sequence gives a text: bytes without a meaning become "?" (U+003F).
/// NUL bytes are kept.
std::string AnsiToUtf8(std::string_view bytes);

/// A piece of one of this program's small text files as UTF-8. They are written as UTF-8, but what an editor
/// or a system with another code page has put there is read as ANSI bytes where it is not UTF-8.
std::string FileTextToUtf8(std::string_view bytes);

/// Text as ANSI bytes; a character that the code page lacks becomes "?".
std::string Utf8ToAnsi(std::string_view text);

/// `text` without what follows its first `maxAnsiBytes` ANSI bytes; no character is split.
std::string CutToAnsiBytes(std::string_view text, std::size_t maxAnsiBytes);

} // namespace platform
