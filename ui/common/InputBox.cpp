#include "ui/common/InputBox.h"

#include "app/TextIds.h"
#include "ui/common/Fonts.h"
#include "ui/common/WindowTexts.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr int kEditWidth = 320;
constexpr int kMargin = 16;
constexpr int kGap = 10;

} // namespace

InputBox::InputBox(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("inputBox"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowModality(Qt::ApplicationModal);

    prompt_ = new QLabel(this);
    prompt_->setObjectName(QStringLiteral("prompt"));
    prompt_->setTextFormat(Qt::PlainText);
    prompt_->setWordWrap(true);
    prompt_->setProperty("keepsFontSize", true);
    edit_ = new QLineEdit(this);
    edit_->setObjectName(QStringLiteral("answer"));
    edit_->setMinimumWidth(kEditWidth);
    prompt_->setBuddy(edit_);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    SetCaption(buttons->button(QDialogButtonBox::Ok), IDS_OK);
    SetCaption(buttons->button(QDialogButtonBox::Cancel), IDS_CANCEL);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kGap);
    column->addWidget(prompt_);
    column->addWidget(edit_);
    column->addStretch();
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetMinimumSize);
    ApplyFonts(this);
}

void InputBox::SetPrompt(const QString& prompt) {
    prompt_->setText(prompt);
    edit_->setAccessibleName(prompt);
}

void InputBox::SetHidden(bool hidden) {
    edit_->setEchoMode(hidden ? QLineEdit::Password : QLineEdit::Normal);
}

QString InputBox::Text() const {
    return edit_->text();
}

} // namespace ui
