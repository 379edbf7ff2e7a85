#pragma once

#include <QTreeView>

namespace ui {

class FileListModel;

/// The view of the file list: a report of eight columns, four of them hidden, and the keys that work in it.
class ListView : public QTreeView {
    Q_OBJECT

  public:
    explicit ListView(QWidget* parent = nullptr);

    /// Puts the model in place, hides its last four columns and sorts by clicks on the headers.
    void SetFileModel(FileListModel* model);

    /// Width of a visible column, in pixels. The last one takes the room that is left as well, on top of its
    /// width.
    int ColumnWidth(int column) const;
    void SetColumnWidth(int column, int width);

    /// The selected rows, in the order in which the list shows them.
    QList<int> SelectedRows() const;
    /// The row that Enter acts on: the current one when it is selected, else the first selected; -1 without
    /// one.
    int SelectedRow() const;

    /// Starts editing a row's name; what stands before its extension is selected, of a folder all.
    void EditName(int row);

    /// Text shown in the middle of the list of a folder that holds nothing.
    void SetEmptyText(const QString& text);

  signals:
    /// A double-click on a row, or Enter.
    void OpenPressed();
    void FocusReceived();
    void RefreshPressed();
    void RenamePressed();
    void DeletePressed();
    void CopyPressed();
    void PastePressed();
    /// The right mouse button was released at this place on the screen, or the menu key pressed.
    void MenuWanted(const QPoint& place);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ColumnResized(int column, int width);
    void StretchLastColumn();

    FileListModel* files_ = nullptr;
    int lastColumnWidth_ = 0;
    bool stretching_ = false;
    QString emptyText_;
};

} // namespace ui
