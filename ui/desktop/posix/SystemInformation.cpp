#include "ui/desktop/SystemInformation.h"

#include <QProcess>
#include <QStandardPaths>

#include <algorithm>
#include <array>

namespace ui {
namespace {

struct Candidate {
    const char* program;
    const char* argument; ///< empty: none
};

/// What the desktops have for it, the more telling first.
constexpr std::array<Candidate, 6> kCandidates{{{"kinfocenter", ""},
                                                {"hardinfo2", ""},
                                                {"hardinfo", ""},
                                                {"gnome-control-center", "info-overview"},
                                                {"mate-system-monitor", "--show-system-tab"},
                                                {"cinnamon-settings", "info"}}};

bool Start(const Candidate& candidate) {
    const QString program = QStandardPaths::findExecutable(QLatin1String(candidate.program));
    if (program.isEmpty())
        return false;
    const QString argument = QLatin1String(candidate.argument);
    return QProcess::startDetached(program, argument.isEmpty() ? QStringList() : QStringList(argument));
}

} // namespace

bool StartSystemInformation() {
    return std::ranges::any_of(kCandidates, Start);
}

} // namespace ui
