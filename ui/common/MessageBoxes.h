#pragma once

#include "app/Messages.h"

namespace ui {

/// The app::MessageDoor of the windows: message boxes and prompts that look like the platform's, modal over
/// the active window.
class MessageBoxes : public app::MessageDoor {
  public:
    int Show(const app::Message& message) override;
    bool ShowOfferingRest(const app::Message& message) override;
    std::optional<std::string> Ask(const std::string& prompt, const std::string& caption,
                                   bool hidden) override;
};

} // namespace ui
