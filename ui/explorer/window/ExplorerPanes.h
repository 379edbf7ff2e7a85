#pragma once

#include <QWidget>

class QToolBar;

namespace ui {

class ListView;
class StatusStrip;
class TreeView;
class VSplitter;

/// What stands inside the main window: two toolbars in one place, the status strip, tree, splitter and list.
class ExplorerPanes : public QWidget {
    Q_OBJECT

  public:
    explicit ExplorerPanes(QWidget* parent = nullptr);

    QToolBar* FolderTools() const { return toolFolder_; }

    QToolBar* FileTools() const { return toolFile_; }

    StatusStrip* Strip() const { return strip_; }

    TreeView* Tree() const { return tree_; }

    ListView* List() const { return list_; }

    VSplitter* Splitter() const { return splitter_; }

    /// Names what a screen reader cannot name by itself.
    void ApplyAccessibleNames(const QString& tree, const QString& list);

    /// Shows one toolbar and hides the other.
    void ShowFileTools(bool fileTools);

    /// Puts everything in its place for the window's size, the visible toolbar and the splitter.
    void LayoutPanes();

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QToolBar* MakeToolBar(const char* name);
    void Place(QWidget* control, int left, int top, int width, int height);
    void SplitterMoved();

    TreeView* tree_;
    ListView* list_;
    VSplitter* splitter_;
    QToolBar* toolFolder_;
    QToolBar* toolFile_;
    StatusStrip* strip_;
};

} // namespace ui
