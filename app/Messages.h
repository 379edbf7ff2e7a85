#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace app {

// Flags of a message box, with the platform's numbers.
inline constexpr unsigned kMessagePlain = 0;
inline constexpr unsigned kMessageError = 16;
inline constexpr unsigned kMessageQuestion = 36; ///< Yes and No
inline constexpr unsigned kMessageWarning = 48;
inline constexpr unsigned kMessageInformation = 64;

inline constexpr int kAnswerOk = 1;
inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;

/// One message as it is put to the user. `id` is the text's id in the language library, 0 for a text that has
/// none.
struct Message {
    std::uint32_t id = 0;
    std::string text;
    unsigned flags = kMessagePlain;
    std::string title;
};

/// The way to the user: message boxes and prompts. One stands behind it at a time: the windows' own, or one
/// that records (tests, tools).
class MessageDoor {
  public:
    virtual ~MessageDoor() = default;

    /// Shows a message and waits; answers the button pressed (kAnswer...).
    virtual int Show(const Message& message) = 0;

    /// Shows a message of a kind that may come many times, with a second button that takes the rest of its
    /// kind all at once. True when the user chose that.
    virtual bool ShowOfferingRest(const Message& message) = 0;

    /// Asks for one line of text; nothing when the user cancels. `hidden` masks what is typed.
    virtual std::optional<std::string> Ask(const std::string& prompt, const std::string& caption,
                                           bool hidden) = 0;
};

/// The door in use; there is always one (at first one that shows nothing and answers OK, Yes or nothing).
MessageDoor& Messages();

/// Puts another door in place and returns the one before; null puts the silent one back. The caller keeps
/// ownership and the door outlives its use.
MessageDoor* SetMessages(MessageDoor* door);

/// The program's title: what a message without a title of its own carries.
std::string ProgramTitle();

/// Shows the language text `id`, owner's name put in, under the title text `titleId`, or under the program's
/// title when that is 0. Answers the button pressed.
int ShowText(std::uint32_t id, std::uint32_t titleId, unsigned flags);

/// Shows "Error: " and a description under the title IDS_ERROR_TITLE.
void ShowError(const std::string& description);

/// The same under the program's title: for what fails before the texts are there, or while they go.
void ShowErrorUnderProgramTitle(const std::string& description);

} // namespace app
