#pragma once

#include <string>

class QWidget;

namespace ui {

/// The Help menu's commands.
class HelpCommands {
  public:
    /// `window` is the main window and outlives the commands.
    explicit HelpCommands(QWidget* window) : window_(window) {}

    /// Opens the document about the program in the language in use, or says that it is missing.
    void What();
    /// Opens the support page.
    void Online();
    void About();

  private:
    void Open(const std::string& document);

    QWidget* window_;
};

} // namespace ui
