#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace app {

/// Copies the language library to the working folder on the fixed drive and loads the copy. A failure is
/// shown as "Error: " with the system's description; after it every text of the library is empty.
void LoadLanguageLibrary();
void LoadExtraTextLibrary();

/// Frees the library and deletes its temporary copy; errors are ignored.
void FreeLanguageLibrary();
void FreeExtraTextLibrary();

/// The text with this id, at most 382 ANSI bytes, cut before its first NUL; empty when there is none.
std::string LoadText(std::uint32_t id);
std::string LoadExtraText(std::uint32_t id);

/// `text` with every "%username", in any letter case, replaced by the owner's name.
std::string WithUserName(std::string_view text);

/// `text` with every "%s" or "%S" replaced by the product's display name.
std::string WithProductName(std::string_view text);

/// The working folder on the fixed drive, "C:\Pellarion\", and its folder for temporary copies.
inline constexpr std::string_view kWorkFolder = "C:\\Pellarion\\";
inline constexpr std::string_view kTempFolder = "C:\\Pellarion\\temp\\";

} // namespace app
