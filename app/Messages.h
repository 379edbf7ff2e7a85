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

/// Interface through which every layer shows messages and asks the user. One implementation is in use at a
/// time: that of the windows, or one that records (tests, tools).
class MessageDoor {
  public:
    virtual ~MessageDoor() = default;

    /// Shows a message and waits. Returns the number of the button that was pressed (kAnswer...).
    virtual int Show(const Message& message) = 0;

    /// Shows a message of a kind that may come many times, with a second button that has the rest of its kind
    /// told at once, in one message at the end. Returns true when the user pressed that button.
    virtual bool ShowOfferingRest(const Message& message) = 0;

    /// Asks for one line of text. Returns nothing when the user cancels. With `hidden` the text is masked
    /// while it is typed.
    virtual std::optional<std::string> Ask(const std::string& prompt, const std::string& caption,
                                           bool hidden) = 0;
};

/// The implementation in use. There is always one; at first it is one that shows nothing and returns OK or
/// Yes, and nothing for a prompt.
MessageDoor& Messages();

/// Replaces the implementation and returns the one before; null puts back the one that shows nothing. The
/// caller keeps ownership, and the implementation must live as long as it is in use.
MessageDoor* SetMessages(MessageDoor* door);

/// The program's title, which is the title of a message that has none of its own.
std::string ProgramTitle();

/// Shows the language text `id`, with the owner's name put in. Its title is the text `titleId`, or the
/// program's title when that is 0. Returns the number of the button that was pressed.
int ShowText(std::uint32_t id, std::uint32_t titleId, unsigned flags);

/// Shows "Error: " and a description under the title IDS_ERROR_TITLE.
void ShowError(const std::string& description);

/// The same under the program's title, for failures before the texts are loaded or while they are freed.
void ShowErrorUnderProgramTitle(const std::string& description);

} // namespace app
