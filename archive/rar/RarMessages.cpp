#include "archive/rar/RarMessages.h"

#include "app/Messages.h"
#include "app/Texts.h"

#include <array>

namespace archive {

namespace {

constexpr std::uint32_t kTitleErrors = 301;
constexpr std::uint32_t kTitleWarnings = 300;

constexpr std::uint32_t kTextArchiveGone = 528;

/// Texts of the codes kRarNoMemory to kRarBufferTooSmall.
constexpr std::uint32_t kFirstFailureText = 518 + platform::kRarNoMemory;

/// Texts of a skip that fails, for the codes kRarBadData to kRarWriteError.
constexpr std::array<std::uint32_t, 8> kSkipTexts{553, 547, 546, 549, 548, 550, 551, 552};

/// Always true, for the callers' sake.
bool ShowPlainStop(const std::string& text) {
    app::Messages().Show(
        {.id = 0, .text = text, .flags = app::kMessageError, .title = app::LoadText(kTitleErrors)});
    return true;
}

bool Between(int code, int first, int last) {
    return code >= first && code <= last;
}

} // namespace

bool ShowOpenStop(int code, const std::string& archive) {
    switch (code) {
    case platform::kRarNoMemory:
        return ShowPlainStop("Not enough memory");
    case platform::kRarBadData:
        return ShowPlainStop(archive + ": archive header broken");
    case platform::kRarNotRar:
        return ShowPlainStop(archive + " is not RAR archive");
    case platform::kRarCannotOpen:
        return ShowPlainStop("Cannot open " + archive);
    default:
        return false;
    }
}

bool ShowSkipStop(int code) {
    if (!Between(code, platform::kRarBadData, platform::kRarWriteError))
        return false;
    const auto place = static_cast<std::size_t>(code - platform::kRarBadData);
    app::ShowText(kSkipTexts.at(place), kTitleErrors, app::kMessageError);
    return true;
}

bool ShowHeaderStop(int code) {
    return code == platform::kRarBadData && ShowPlainStop("File header broken");
}

void ShowArchiveGone(const std::string& archive) {
    RepeatedMessages().Report(kTextArchiveGone, kTitleWarnings, {}, "\n" + archive);
}

bool ReportRarResult(RepeatedMessages& messages, int code, const platform::RARHeaderData& header) {
    if (!Between(code, platform::kRarNoMemory, platform::kRarBufferTooSmall))
        return true;
    std::string suffix;
    if (Between(code, platform::kRarNotRar, platform::kRarCannotOpen))
        suffix = "\n" + header.ArcName;
    else if (Between(code, platform::kRarCannotCreate, platform::kRarWriteError))
        suffix = "\n" + header.FileName;
    const auto text = kFirstFailureText + static_cast<std::uint32_t>(code - platform::kRarNoMemory);
    messages.Report(text, kTitleWarnings, header.FileName.empty() ? header.ArcName : header.FileName, suffix);
    return code == platform::kRarCannotCreate || code == platform::kRarWriteError ||
           code == platform::kRarBufferTooSmall;
}

} // namespace archive
