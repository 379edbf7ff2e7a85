#include "app/Messages.h"

#include "app/TextIds.h"
#include "app/Texts.h"
#include "platform/Process.h"

namespace app {

namespace {

constexpr unsigned kButtonsYesNo = 4;
constexpr unsigned kButtonsMask = 0x0F;

class SilentMessages final : public MessageDoor {
  public:
    int Show(const Message& message) override {
        return (message.flags & kButtonsMask) == kButtonsYesNo ? kAnswerYes : kAnswerOk;
    }

    bool ShowOfferingRest(const Message&) override { return false; }

    std::optional<std::string> Ask(const std::string&, const std::string&, bool) override {
        return std::nullopt;
    }
};

SilentMessages silentDoor;
MessageDoor* currentDoor = &silentDoor;

} // namespace

MessageDoor& Messages() {
    return *currentDoor;
}

MessageDoor* SetMessages(MessageDoor* door) {
    MessageDoor* before = currentDoor;
    currentDoor = door ? door : &silentDoor;
    return before;
}

int ShowText(std::uint32_t id, std::uint32_t titleId, unsigned flags) {
    return Messages().Show({.id = id,
                            .text = WithUserName(LoadText(id)),
                            .flags = flags,
                            .title = titleId == 0 ? ProgramTitle() : LoadText(titleId)});
}

void ShowError(const std::string& description) {
    Messages().Show({.id = 0,
                     .text = "Error: " + description,
                     .flags = kMessageError,
                     .title = LoadText(IDS_ERROR_TITLE)});
}

void ShowErrorUnderProgramTitle(const std::string& description) {
    Messages().Show(
        {.id = 0, .text = "Error: " + description, .flags = kMessageError, .title = ProgramTitle()});
}

std::string ProgramTitle() {
    constexpr std::uint32_t kProductName = 998;
    return platform::ProgramString(kProductName);
}

} // namespace app
