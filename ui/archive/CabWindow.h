#pragma once

#include "archive/cabinet/CabFile.h"
#include "ui/archive/ArchiveWindow.h"

#include <memory>
#include <set>
#include <string>
#include <utility>

namespace ui {

/// The CAB archive window: shows the files of several cabinets together and extracts them one by one.
class frmextract : public ArchiveWindow {
    Q_OBJECT

  public:
    explicit frmextract(QWidget* parent = nullptr);

  protected:
    bool List(std::int32_t archive, ArchiveListing& listing) override;
    base::Outcome ExtractRows(Job& job) override;
    std::string TargetOf(const ArchiveRow& row, const std::string& folder) override;
    bool ReadBack(const std::vector<int>& rows, const std::string& folder) override;
    void OpenDocument(const ArchiveRow& row, const std::string& path) override;
    void LetGo() override;

  private:
    /// Files of one cabinet that bear the same name are extracted and compared together: the first of them
    /// does it for all.
    using Names = std::set<std::pair<std::int32_t, std::string>>;

    static bool IsNew(Names& names, const ArchiveRow& row);
    cabinet::CabFile& Cabinet(const ArchiveRow& row);

    std::unique_ptr<cabinet::CabFile> cabinet_;
};

} // namespace ui
