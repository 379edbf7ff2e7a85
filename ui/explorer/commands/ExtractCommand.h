#pragma once

#include "archive/zip/ArchiveFront.h"
#include "ui/explorer/commands/ArchiveDialogs.h"
#include "ui/explorer/list/FileListAccess.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ui {

/// The Extract command: opens the window that belongs to the selected archives, then lists the folder again
/// and selects what was extracted. One belongs to the main window and lives as long.
class ExtractCommand {
  public:
    ExtractCommand(FileListAccess& files, ArchiveDialogs& dialogs) : files_(files), dialogs_(dialogs) {}

    /// Runs to the end, windows included. Does nothing when it runs already.
    void Run();

  private:
    enum class Route { kNone, kCab, kZip, kRar };

    /// What a run has learnt of its archives.
    struct Selection {
        std::string archives;    ///< full paths, each followed by CR LF
        std::string resultName;  ///< ZIP: what to select afterwards
        bool hasSeveral = false; ///< ZIP: whether the last archive holds two or more entries
    };

    static Route RouteOf(std::string_view path);
    static Route ChooseRoute(const std::vector<std::string>& paths);
    std::optional<Selection> Collect(const std::vector<std::string>& paths, Route route);
    void Inspect(const std::string& path, Selection& selection);
    void Show(Route route, const std::string& archives);
    void SelectResult(const Selection& selection);
    void SelectExtracted(const std::vector<std::string>& archives, Route route);
    static std::vector<std::string> RarResults(const std::string& archive);
    void Extract();

    FileListAccess& files_;
    ArchiveDialogs& dialogs_;
    zip::Cls_GetFileType front_;
    bool isRunning_ = false;
};

} // namespace ui
