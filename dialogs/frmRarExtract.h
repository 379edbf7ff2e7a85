#pragma once

#include "archive/basUnrar.h"
#include "dialogs/ArchiveWindow.h"

#include <map>
#include <string>
#include <utility>

namespace dialogs {

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
    Outcome ExtractRows(Job& job) override;
    std::string TargetOf(const ArchiveRow& row, const std::string& folder) override;
    bool ReadsBack(const ArchiveRow& row, const std::string& folder) override;
    bool NeedsNoSelection(const ArchiveRow& row) const override;

  private:
    class Listing;
    class Extraction;

    /// What was written of an entry.
    struct Content {
        std::uint64_t size = 0;
        std::uint32_t crc = 0;
    };

    std::vector<bool> RowsToWrite(const Job& job);

    bool endsProgram_ = false;
    std::map<std::pair<std::int32_t, std::int32_t>, Content> written_; // by archive and entry
};

} // namespace dialogs
