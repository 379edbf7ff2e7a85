#pragma once

#include "archive/zip/ArchiveFront.h"
#include "ui/archive/ArchiveWindow.h"

namespace ui {

/// The ZIP archive window: shows the entries of one archive at a time.
class frmWinExtract : public ArchiveWindow {
    Q_OBJECT

  public:
    explicit frmWinExtract(QWidget* parent = nullptr);

    /// Full path of the archive whose entries are listed.
    std::string CurrentArchive;

    /// Shows the archives of ArchiveList one after another, each until the user closes it; this window is the
    /// first one's. Returns half a second after the last one closed.
    void ShowArchives();

    /// Fills the list with the entries of CurrentArchive; a file that cannot be read as ZIP leaves it empty.
    void ListArchive();

    /// Puts this archive's number among `count` in the caption.
    void ShowNumber(std::size_t number, std::size_t count);

  protected:
    bool List(std::int32_t archive, ArchiveListing& listing) override;
    base::Outcome ExtractRows(Job& job) override;
    std::string TargetOf(const ArchiveRow& row, const std::string& folder) override;
    bool ReadBack(const std::vector<int>& rows, const std::string& folder) override;
    std::vector<bool> RowsToOpen(std::vector<bool> selected) override;

  private:
    zip::Cls_GetFileType front_;
};

} // namespace ui
