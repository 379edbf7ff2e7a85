#include "ui/explorer/commands/PackingWindow.h"

#include "app/TextIds.h"
#include "app/Texts.h"
#include "ui/common/Fonts.h"
#include "ui/common/WindowTexts.h"

#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

namespace ui {
frmMsgCompress::frmMsgCompress(QWidget* parent)
    : ProgressWindow(PlainCaption(WindowText(IDS_COMPRESS)), parent), Label1_(new QLabel(this)) {
    setObjectName(QStringLiteral("frmMsgCompress"));
    Label1_->setObjectName(QStringLiteral("Label1"));
    Label1_->setTextFormat(Qt::PlainText);
    Label1_->setWordWrap(true);
    Label1_->setText(ToWindow(app::WithUserName(app::LoadText(IDS_COMPRESSING))));
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, Label1_);
    ApplyFonts(this);
    SetFraction(0);
}

void frmMsgCompress::ShowStep(const base::WorkStep& step) {
    done_ += step.bytes;
    const double fraction = step.size > 0 ? static_cast<double>(done_) / static_cast<double>(step.size) : 0;
    SetPath(ToWindow(step.path));
    SetFraction(fraction);
    SetFigures(QLocale().toString(static_cast<int>(fraction * 100)) + QStringLiteral(" %"));
}

} // namespace ui
