#pragma once

#include "ui/explorer/commands/CommandTargets.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ui {

/// The Compress command: packs each selected file or folder into a cabinet beside it and deletes what was
/// packed, then lists the folder again and selects the cabinets.
class CompressCommand {
  public:
    /// `targets` outlives the command.
    explicit CompressCommand(CommandTargets& targets) : on_(targets) {}

    /// Runs to the end, messages included. Does nothing while another command runs or without a selected row.
    void Run();

  private:
    /// A selected row, as it was when the command began.
    struct Source {
        std::string path;
        std::uint64_t size;
    };

    enum class Next { kGoOn, kEnd, kEndWithoutRefresh };

    std::vector<Source> SelectedSources() const;
    Next Handle(const Source& source);
    Next Pack(const std::string& path);
    void ShowNames(const std::vector<std::string>& paths) const;
    void DeleteSource(const std::string& path, bool isFolder);
    void ShowCabinets() const;

    CommandTargets& on_;
    std::vector<std::string> cabinets_; ///< of this run, made or at least tried
    bool hasChangedFolder_ = false;
};

} // namespace ui
