#include "RepeatedMessages.h"

#include "app/core/Messages.h"
#include "app/core/Texts.h"

#include <algorithm>
#include <string>

namespace archive {

namespace {

constexpr std::uint32_t kTextAndMore = 601; // "%n" stands for the count
constexpr std::uint64_t kPlainReports = 2;

app::Message StopMessage(std::uint32_t id, std::uint32_t titleId) {
    return {id, app::WithUserName(app::LoadText(id)), app::kMessageError, app::LoadText(titleId)};
}

std::string AndMore(std::uint64_t count) {
    std::string text = app::WithUserName(app::LoadText(kTextAndMore));
    if (const auto at = text.find("%n"); at != std::string::npos)
        text.replace(at, 2, std::to_string(count));
    return text;
}

} // namespace

void RepeatedMessages::Report(std::uint32_t id, std::uint32_t titleId) {
    auto kind = std::ranges::find(kinds_, id, &Kind::id);
    if (kind == kinds_.end())
        kind = kinds_.insert(kinds_.end(), Kind{id, titleId});
    if (kind->silent) {
        ++kind->counted;
        return;
    }
    if (kind->shown++ < kPlainReports)
        app::Messages().Show(StopMessage(id, titleId));
    else
        kind->silent = app::Messages().ShowOfferingRest(StopMessage(id, titleId));
}

bool RepeatedMessages::IsSilent(std::uint32_t id) const {
    const auto kind = std::ranges::find(kinds_, id, &Kind::id);
    return kind != kinds_.end() && kind->silent;
}

void RepeatedMessages::Finish() {
    for (const Kind& kind : kinds_) {
        if (kind.counted == 0)
            continue;
        app::Message message = StopMessage(kind.id, kind.titleId);
        message.text += "\n" + AndMore(kind.counted);
        app::Messages().Show(message);
    }
    kinds_.clear();
}

} // namespace archive
