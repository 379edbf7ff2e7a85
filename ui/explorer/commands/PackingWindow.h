#pragma once

#include "archive/cabinet/CabCompress.h"
#include "ui/common/ProgressWindow.h"

class QLabel;

namespace ui {

/// The notice that stands while one source is packed: asks for patience, shows what is being packed and how
/// far it is, and takes the wish to stop.
class frmMsgCompress : public ProgressWindow {
    Q_OBJECT

  public:
    explicit frmMsgCompress(QWidget* parent);

    void ShowProgress(const cabinet::CabProgress& progress);

  private:
    QLabel* Label1_;
};

} // namespace ui
