#pragma once

#include "platform/TreeSize.h"

#include <QDialog>
#include <QTimer>

class QFormLayout;
class QLabel;

namespace ui {

/// What the system knows of a file, folder or drive. A folder's content is counted while the window stands.
class PropertiesWindow : public QDialog {
    Q_OBJECT

  public:
    /// Deletes itself when it is closed.
    PropertiesWindow(const std::string& path, QWidget* parent);

  private:
    QLabel* AddRow(std::uint32_t captionId, const QString& value, const char* name);
    void AddHeading(const QString& name, const QIcon& icon, const QString& type);
    void AddDriveSpace();
    void CountMore();
    void ShowCounts(bool isComplete);

    std::string path_;
    QFormLayout* rows_;
    QLabel* size_ = nullptr;
    QLabel* content_ = nullptr;
    platform::TreeSize count_;
    QTimer counting_;
};

} // namespace ui
