#include "app/ApplicationState.h"
#include "app/Startup.h"
#include "app/Texts.h"
#include "fakes/RecordingMessages.h"
#include "platform/Files.h"

#include <cstdlib>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

// Starts up as the program does, with no windows, and tells what came of it in lines of key and value:
//   startup_probe [hold] [throw] [<id>...]
// An id is one of the language library, or with an "x" before it one of the second text library. With "hold"
// it stays after start-up until its input ends.

namespace {

class ThrowingMessages : public fakes::RecordingMessages {
  public:
    int Show(const app::Message&) override { throw std::runtime_error("a message box that fails"); }
};

void Tell(std::string_view key, std::string_view value) {
    std::cout << key << '=' << value << '\n';
}

std::string_view NameOf(app::StartupOutcome outcome) {
    switch (outcome) {
    case app::StartupOutcome::kRun:
        return "run";
    case app::StartupOutcome::kSecondCopy:
        return "second copy";
    case app::StartupOutcome::kStopped:
        return "stopped";
    case app::StartupOutcome::kFailed:
        break;
    }
    return "failed";
}

void TellCopies(std::string_view key) {
    std::string copies;
    for (const std::string_view name : {"oxlic_", "ox_langfile"}) {
        const std::string file = std::string(name) + app::Application().LanguageId + ".dll";
        if (platform::FileExists(std::string(app::kTempFolder) + file))
            copies += (copies.empty() ? "" : " ") + file;
    }
    Tell(key, copies);
}

void TellText(const std::string& argument) {
    const bool isExtra = argument.starts_with('x');
    const auto id =
        static_cast<std::uint32_t>(std::strtoul(argument.c_str() + (isExtra ? 1 : 0), nullptr, 10));
    Tell(argument, app::WithUserName(isExtra ? app::LoadExtraText(id) : app::LoadText(id)));
}

} // namespace

int main(int argc, char** argv) {
    const bool throws = argc > 1 && std::string_view(argv[1]) == "throw";
    const std::unique_ptr<fakes::RecordingMessages> door =
        throws ? std::make_unique<ThrowingMessages>() : std::make_unique<fakes::RecordingMessages>();
    const fakes::RecordingMessages& messages = *door;
    const app::StartupOutcome outcome = app::RunStartup();
    for (const app::Message& message : messages.shown)
        Tell("message", std::to_string(message.flags) + "|" + message.title + "|" + message.text);
    const app::ApplicationState& state = app::Application();
    Tell("language", state.LanguageId);
    Tell("charset", state.CharsetCode);
    Tell("owner", state.OwnerName);
    TellCopies("copies");
    bool hold = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "hold")
            hold = true;
        else if (argument != "throw")
            TellText(argument);
    }
    Tell("outcome", NameOf(outcome));
    std::cout.flush();
    while (hold && std::cin.get() != std::char_traits<char>::eof()) {
    }
    if (outcome == app::StartupOutcome::kRun) {
        app::StartupShutdown();
        TellCopies("copies after");
    }
    return 0;
}
