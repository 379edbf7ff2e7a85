#include "archive/rar/RarMessages.h"

#include "app/Messages.h"
#include "app/Texts.h"

#include <array>

namespace rar {

namespace {

constexpr std::uint32_t kTitleErrors = 301;
constexpr std::uint32_t kTitleWarnings = 300;

constexpr std::uint32_t kTextArchiveGone = 528;

/// Texts of the codes kRarNoMemory to kRarBufferTooSmall.
constexpr std::uint32_t kFirstFailureText = 518 + kRarNoMemory;

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
    case kRarNoMemory:
        return ShowPlainStop("Not enough memory");
    case kRarBadData:
        return ShowPlainStop(archive + ": archive header broken");
    case kRarNotRar:
        return ShowPlainStop(archive + " is not RAR archive");
    case kRarCannotOpen:
        return ShowPlainStop("Cannot open " + archive);
    default:
        return false;
    }
}

bool ShowSkipStop(int code) {
    if (!Between(code, kRarBadData, kRarWriteError))
        return false;
    const auto place = static_cast<std::size_t>(code - kRarBadData);
    app::ShowText(kSkipTexts.at(place), kTitleErrors, app::kMessageError);
    return true;
}

bool ShowHeaderStop(int code) {
    return code == kRarBadData && ShowPlainStop("File header broken");
}

void ShowArchiveGone(const std::string& archive) {
    output::RepeatedMessages().Report(kTextArchiveGone, kTitleWarnings, {}, "\n" + archive);
}

bool ReportRarResult(output::RepeatedMessages& messages, int code, const RARHeaderData& header) {
    if (!Between(code, kRarNoMemory, kRarBufferTooSmall))
        return true;
    std::string suffix;
    if (Between(code, kRarNotRar, kRarCannotOpen))
        suffix = "\n" + header.ArcName;
    else if (Between(code, kRarCannotCreate, kRarWriteError))
        suffix = "\n" + header.FileName;
    const auto text = kFirstFailureText + static_cast<std::uint32_t>(code - kRarNoMemory);
    messages.Report(text, kTitleWarnings, header.FileName.empty() ? header.ArcName : header.FileName, suffix);
    return code == kRarCannotCreate || code == kRarWriteError || code == kRarBufferTooSmall;
}

} // namespace rar
