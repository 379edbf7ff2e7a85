#pragma once

#include <QTreeView>

namespace ui {

/// The folder tree's view: tells when a node has been clicked, chosen with the keyboard, or its box checked.
class TreeView : public QTreeView {
    Q_OBJECT

  public:
    explicit TreeView(QWidget* parent = nullptr);

  signals:
    /// A click on a node beside its check box, or Enter.
    void NodeClicked(const QModelIndex& node);
    /// The keyboard has moved to another node.
    void NodeReached(const QModelIndex& node);
    void FocusReceived();
    void RefreshPressed();
    void RenamePressed();
    void DeletePressed();
    void PastePressed();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    bool IsOnCheckBox(const QModelIndex& node, const QPoint& position) const;

    bool boxWasClicked_ = false; ///< while a mouse button is released over a check box
};

} // namespace ui
