#pragma once

#include "base/WorkObserver.h"
#include "ui/common/ProgressWindow.h"

class QLabel;

namespace ui {

/// The notice that stands while one source is packed: asks for patience, shows what is being packed and how
/// far it is, and takes the wish to stop.
class frmMsgCompress : public ProgressWindow {
    Q_OBJECT

  public:
    explicit frmMsgCompress(QWidget* parent);

    /// Shows what is being packed, and how far the packing is.
    void ShowStep(const base::WorkStep& step);

  private:
    QLabel* Label1_;
    std::uint64_t done_ = 0; ///< bytes
};

} // namespace ui
