#include "ui/common/MessageBoxes.h"

#include "app/TextIds.h"
#include "ui/common/InputBox.h"
#include "ui/common/WindowTexts.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

namespace ui {

namespace {

QMessageBox::Icon IconFor(unsigned flags) {
    switch (flags) {
    case app::kMessageError:
        return QMessageBox::Critical;
    case app::kMessageQuestion:
        return QMessageBox::Question;
    case app::kMessageWarning:
        return QMessageBox::Warning;
    case app::kMessageInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

/// Fills a box. Texts are plain: a file name that looks like markup stays what it is.
void Prepare(QMessageBox& box, const app::Message& message) {
    box.setObjectName(QStringLiteral("messageBox"));
    box.setWindowTitle(ToWindow(message.title.empty() ? app::ProgramTitle() : message.title));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToWindow(message.text));
    box.setIcon(IconFor(message.flags));
    // The picture says what the title says.
    if (auto* picture = box.findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label")))
        picture->setAccessibleName(box.windowTitle());
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                       Qt::WindowCloseButtonHint);
}

/// A busy handler may put a question: the pointer is an arrow while the question stands.
class PlainPointer {
  public:
    PlainPointer() {
        if (QGuiApplication::overrideCursor() != nullptr)
            QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
        else
            wasPlain_ = true;
    }

    ~PlainPointer() {
        if (!wasPlain_)
            QGuiApplication::restoreOverrideCursor();
    }

    PlainPointer(const PlainPointer&) = delete;
    PlainPointer& operator=(const PlainPointer&) = delete;

  private:
    bool wasPlain_ = false;
};

} // namespace

int MessageBoxes::Show(const app::Message& message) {
    const PlainPointer pointer;
    QMessageBox box(QApplication::activeWindow());
    Prepare(box, message);
    if (message.flags != app::kMessageQuestion) {
        box.setStandardButtons(QMessageBox::Ok);
        SetCaption(box.button(QMessageBox::Ok), IDS_OK);
        box.exec();
        return app::kAnswerOk;
    }
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    SetCaption(box.button(QMessageBox::Yes), IDS_YES);
    SetCaption(box.button(QMessageBox::No), IDS_NO);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? app::kAnswerYes : app::kAnswerNo;
}

bool MessageBoxes::ShowOfferingRest(const app::Message& message) {
    const PlainPointer pointer;
    QMessageBox box(QApplication::activeWindow());
    Prepare(box, message);
    QPushButton* ok = box.addButton(QMessageBox::Ok);
    SetCaption(ok, IDS_OK);
    QPushButton* rest = box.addButton(WindowText(IDS_TAKE_REST), QMessageBox::ActionRole);
    rest->setObjectName(QStringLiteral("restButton"));
    box.setDefaultButton(ok);
    box.setEscapeButton(ok);
    box.exec();
    return box.clickedButton() == rest;
}

std::optional<std::string> MessageBoxes::Ask(const std::string& prompt, const std::string& caption,
                                             bool hidden) {
    const PlainPointer pointer;
    InputBox box(QApplication::activeWindow());
    box.setWindowTitle(ToWindow(caption.empty() ? app::ProgramTitle() : caption));
    box.SetPrompt(ToWindow(prompt));
    box.SetHidden(hidden);
    if (box.exec() != QDialog::Accepted)
        return std::nullopt;
    return FromWindow(box.Text());
}

} // namespace ui
