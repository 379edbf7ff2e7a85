#include "archive/rar/RarMessages.h"

#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"

#include <array>

namespace rar {

namespace {

// The texts of the codes kRarNoMemory to kRarBufferTooSmall are numbered as the codes are.
static_assert(IDS_RAR_BUFFER_TOO_SMALL - IDS_RAR_NO_MEMORY == kRarBufferTooSmall - kRarNoMemory);

/// Texts of a skip that fails, for the codes kRarBadData to kRarWriteError.
constexpr std::array<std::uint32_t, 8> kSkipTexts{IDS_RAR_STOP_BAD_DATA,       IDS_RAR_STOP_NOT_RAR,
                                                  IDS_RAR_STOP_UNKNOWN_FORMAT, IDS_RAR_STOP_CANNOT_OPEN,
                                                  IDS_RAR_STOP_CANNOT_CREATE,  IDS_RAR_STOP_CANNOT_CLOSE,
                                                  IDS_RAR_STOP_READ_ERROR,     IDS_RAR_STOP_WRITE_ERROR};

/// Always true, for the callers' sake.
bool ShowPlainStop(const std::string& text) {
    app::Messages().Show(
        {.id = 0, .text = text, .flags = app::kMessageError, .title = app::LoadText(IDS_ERROR_TITLE)});
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
    app::ShowText(kSkipTexts.at(place), IDS_ERROR_TITLE, app::kMessageError);
    return true;
}

bool ShowHeaderStop(int code) {
    return code == kRarBadData && ShowPlainStop("File header broken");
}

void ShowArchiveGone(const std::string& archive) {
    output::RepeatedMessages().Report(IDS_RAR_ARCHIVE_GONE, IDS_WARNING_TITLE, {}, "\n" + archive);
}

bool ReportRarResult(output::RepeatedMessages& messages, int code, const RARHeaderData& header) {
    if (!Between(code, kRarNoMemory, kRarBufferTooSmall))
        return true;
    std::string suffix;
    if (Between(code, kRarNotRar, kRarCannotOpen))
        suffix = "\n" + header.ArcName;
    else if (Between(code, kRarCannotCreate, kRarWriteError))
        suffix = "\n" + header.FileName;
    const auto text = static_cast<std::uint32_t>(IDS_RAR_NO_MEMORY + (code - kRarNoMemory));
    messages.Report(text, IDS_WARNING_TITLE, header.FileName.empty() ? header.ArcName : header.FileName,
                    suffix);
    return code == kRarCannotCreate || code == kRarWriteError || code == kRarBufferTooSmall;
}

} // namespace rar
