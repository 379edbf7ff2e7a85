#pragma once

#include "archive/rar/RarOperations.h"
#include "ui/archive/ArchiveWindow.h"

#include <set>
#include <string>
#include <utility>

namespace ui {

/// The RAR archive window: shows the entries of several archives together and unpacks each archive once for a
/// command.
class frmRarExtract : public ArchiveWindow {
    Q_OBJECT

  public:
    explicit frmRarExtract(QWidget* parent = nullptr);

    /// Whether a listing failed in a way that ends the program. The window has closed itself then.
    bool EndsProgram() const { return endsProgram_; }

  protected:
    bool List(std::int32_t archive, ArchiveListing& listing) override;
    base::Outcome ExtractRows(Job& job) override;
    std::string TargetOf(const ArchiveRow& row, const std::string& folder) override;
    bool ReadBack(const std::vector<int>& rows, const std::string& folder) override;
    bool NeedsNoSelection(const ArchiveRow& row) const override;

  private:
    class Listing;
    class Progress;

    std::vector<bool> RowsToWrite(const Job& job);

    bool endsProgram_ = false;
    std::set<std::pair<std::int32_t, std::int32_t>> written_; // archive and entry
};

} // namespace ui
