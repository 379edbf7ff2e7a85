#include "ProbeMessages.h"

namespace tools {

namespace {
constexpr std::size_t kPatience = 1000;
} // namespace

void ProbeMessages::Write(JsonWriter& json) const {
    json.Key("messages").OpenArray();
    for (const std::uint32_t id : ids_)
        json.Value(id);
    json.CloseArray();
}

int ProbeMessages::Show(const app::Message& message) {
    ids_.push_back(message.id);
    return message.flags == app::kMessageQuestion ? app::kAnswerYes : app::kAnswerOk;
}

bool ProbeMessages::ShowOfferingRest(const app::Message& message) {
    ids_.push_back(message.id);
    return ids_.size() >= kPatience;
}

std::optional<std::string> ProbeMessages::Ask(const std::string&, const std::string&, bool) {
    return password_;
}

} // namespace tools
