#include "archive/output/RepeatedMessages.h"

#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "base/Letters.h"

#include <algorithm>
#include <string>

namespace output {

namespace {

constexpr std::uint64_t kPlainReports = 2;

/// The end of an entry's name, short enough for a message box.
std::string Shown(std::string_view entry) {
    constexpr std::size_t kMost = 120;
    if (entry.size() <= kMost)
        return std::string(entry);
    std::string_view end = entry.substr(entry.size() - kMost);
    // Never from the middle of a character (UTF-8).
    while (!end.empty() && (static_cast<unsigned char>(end.front()) & 0xC0) == 0x80)
        end.remove_prefix(1);
    return "..." + std::string(end);
}

app::Message StopMessage(std::uint32_t id, std::uint32_t titleId, std::string_view entry,
                         std::string_view suffix) {
    const std::string text = app::WithUserName(app::LoadText(id));
    return {id, base::ReplaceNoCase(text, "%entry", Shown(entry)).append(suffix), app::kMessageError,
            app::LoadText(titleId)};
}

std::string AndMore(std::uint64_t count) {
    std::string text = app::WithUserName(app::LoadText(IDS_AND_MORE));
    if (const auto at = text.find("%n"); at != std::string::npos)
        text.replace(at, 2, std::to_string(count));
    return text;
}

} // namespace

void RepeatedMessages::Report(std::uint32_t id, std::uint32_t titleId, std::string_view entry,
                              std::string_view suffix) {
    auto kind = std::ranges::find(kinds_, id, &Kind::id);
    if (kind == kinds_.end())
        kind = kinds_.insert(kinds_.end(), Kind{.id = id, .titleId = titleId});
    if (kind->silent) {
        ++kind->counted;
        kind->lastEntry = entry;
        kind->lastSuffix = suffix;
        return;
    }
    if (kind->shown++ < kPlainReports)
        app::Messages().Show(StopMessage(id, titleId, entry, suffix));
    else
        kind->silent = app::Messages().ShowOfferingRest(StopMessage(id, titleId, entry, suffix));
}

bool RepeatedMessages::IsSilent(std::uint32_t id) const {
    const auto kind = std::ranges::find(kinds_, id, &Kind::id);
    return kind != kinds_.end() && kind->silent;
}

void RepeatedMessages::Finish() {
    for (const Kind& kind : kinds_) {
        if (kind.counted == 0)
            continue;
        app::Message message = StopMessage(kind.id, kind.titleId, kind.lastEntry, kind.lastSuffix);
        if (kind.counted > 1)
            message.text += "\n" + AndMore(kind.counted - 1);
        app::Messages().Show(message);
    }
    kinds_.clear();
}

} // namespace output
