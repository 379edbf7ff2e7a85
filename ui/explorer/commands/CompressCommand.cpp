#include "ui/explorer/commands/CompressCommand.h"

#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "base/Letters.h"
#include "ui/common/FileWork.h"
#include "ui/common/ReportWindow.h"
#include "ui/common/ShellDelete.h"
#include "ui/common/WindowTexts.h"
#include "ui/common/Yield.h"
#include "ui/explorer/commands/CabPacking.h"
#include "ui/explorer/commands/FileSearch.h"
#include "ui/explorer/commands/PackingWindow.h"
#include "ui/explorer/list/FileListAccess.h"
#include "ui/explorer/list/FileListModel.h"
#include "ui/explorer/list/ListView.h"
#include "ui/explorer/list/RowSelection.h"
#include "ui/explorer/tree/Navigator.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace ui {
namespace {

constexpr std::uint32_t kNoRefusal = 0;

constexpr std::string_view kCabinetExtension = ".cab";

/// Shows the packing in its notice and lets window messages run, with which the user may stop it.
class PackingObserver final : public base::WorkObserver {
  public:
    PackingObserver(frmMsgCompress& notice, const bool& isStopWanted)
        : notice_(notice), isStopWanted_(isStopWanted) {}

    bool Proceed(const base::WorkStep& step) override {
        notice_.ShowStep(step);
        YieldNow();
        return !notice_.IsStopped() && !isStopWanted_;
    }

  private:
    frmMsgCompress& notice_;
    const bool& isStopWanted_;
};

constexpr std::string_view kSuiteFolder = "program";
constexpr std::string_view kSuiteLauncher = "startdeck.exe";
constexpr std::size_t kDriveRootLength = 3;
constexpr qsizetype kTooLongPath = 252;

bool IsOfTheSuite(const std::string& path) {
    const std::string below = base::ToLower(path.substr(std::min(path.size(), kDriveRootLength)));
    return below.starts_with(kSuiteFolder) || below == kSuiteLauncher;
}

/// The message for what is never packed, or none.
std::uint32_t RefusalOf(const std::string& path, std::uint64_t size) {
    if (base::EndsWithNoCase(path, ".enc"))
        return IDS_FILE_ENCRYPTED;
    if (IsOfTheSuite(path))
        return IDS_NEEDED_IN_PLACE;
    if (ToWindow(path).size() >= kTooLongPath)
        return IDS_PATH_TOO_LONG;
    if (size == 0 && !IsFolder(path))
        return IDS_FILE_EMPTY;
    return kNoRefusal;
}

} // namespace

void CompressCommand::Run() {
    const CommandRun run(on_);
    if (!run.IsFirst())
        return;
    cabinets_.clear();
    hasChangedFolder_ = false;
    const std::vector<Source> sources = SelectedSources();
    Next next = sources.empty() ? Next::kEndWithoutRefresh : Next::kGoOn;
    for (std::size_t i = 0; i < sources.size() && next == Next::kGoOn; ++i)
        next = Handle(sources[i]);
    if (next != Next::kEndWithoutRefresh || on_.isStopWanted)
        ShowCabinets();
}

std::vector<CompressCommand::Source> CompressCommand::SelectedSources() const {
    std::vector<Source> sources;
    for (const int row : on_.list.SelectedRows())
        sources.push_back({on_.files.FullPath(row), on_.files.Row(row).size});
    return sources;
}

CompressCommand::Next CompressCommand::Handle(const Source& source) {
    if (const std::uint32_t refusal = RefusalOf(source.path, source.size); refusal != kNoRefusal) {
        app::ShowText(refusal, IDS_WARNING_TITLE, app::kMessageWarning);
        return Next::kGoOn;
    }
    if (base::EndsWithNoCase(source.path, kCabinetExtension))
        return Next::kGoOn;
    cabinets_.push_back(source.path + std::string(kCabinetExtension));
    return Pack(source.path);
}

CompressCommand::Next CompressCommand::Pack(const std::string& path) {
    clsFindFiles finder;
    std::vector<std::string> found;
    finder.Directory = path + '\\';
    finder.StartSearchFile(found);
    if (on_.isStopWanted)
        return Next::kEnd;
    std::erase_if(found, [](const std::string& name) { return name.find('?') == std::string::npos; });
    if (!found.empty()) {
        ShowNames(found);
        return Next::kEndWithoutRefresh;
    }
    const bool isFolder = IsFolder(path);
    if (isFolder && finder.FileCount() < 1) {
        app::ShowText(IDS_NO_FILE_IN_FOLDER, IDS_WARNING_TITLE, app::kMessageWarning);
        return hasChangedFolder_ ? Next::kEnd : Next::kEndWithoutRefresh;
    }
    // The cabinet takes its place beside its source, wherever the tree's selection has gone.
    const std::string destination = path.substr(0, path.rfind('\\') + 1);
    frmMsgCompress notice(on_.window.DialogParent());
    PackingObserver observer(notice, on_.isStopWanted);
    notice.show();
    cabinet::CabReport report;
    const auto compress = isFolder ? CompressFolder : CompressFile;
    const bool isMade = compress(path, destination, observer, report);
    notice.hide();
    if (isMade) {
        hasChangedFolder_ = true;
        DeleteSource(path, isFolder);
    } else if (report.failure == cabinet::CabFailure::kStopped) {
        return Next::kEnd;
    } else if (isFolder) {
        const std::string text =
            app::LoadText(IDS_CAB_NOT_MADE) + " '" + path + "'.\n\n" + ReasonText(report);
        app::Messages().Show({IDS_CAB_NOT_MADE, text, app::kMessageError, app::LoadText(IDS_ERROR_TITLE)});
    }
    return Next::kGoOn;
}

/// Tells of names that the ANSI code page cannot hold.
void CompressCommand::ShowNames(const std::vector<std::string>& paths) const {
    frmMessage report(on_.window.DialogParent());
    report.SetStatus(app::LoadText(IDS_COMPRESSING_STOPPED));
    report.SetMessage(app::WithUserName(app::LoadText(IDS_UNSTORABLE_NAMES)) + "\n" +
                      app::LoadText(IDS_RENAME_AND_REPEAT));
    for (const std::string& path : paths)
        report.AddPath(path);
    report.ShowNow();
}

void CompressCommand::DeleteSource(const std::string& path, bool isFolder) {
    const FileWork work(FileWork::Kind::kDelete, {path}, on_.window.DialogParent());
    if (ShellDelete(path) && isFolder)
        on_.navigator.RemoveNode(path);
}

void CompressCommand::ShowCabinets() const {
    on_.window.ShowCurrentFolder();
    SelectPaths(on_.list, on_.files, cabinets_);
    if (hasChangedFolder_)
        emit on_.navigator.SpaceWanted(false);
}

} // namespace ui
