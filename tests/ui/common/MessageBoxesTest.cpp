#include "ui/common/MessageBoxes.h"

#include "app/ApplicationState.h"
#include "ui/common/Appearance.h"
#include "ui/common/Fonts.h"
#include "ui/common/Yield.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <functional>
#include <gtest/gtest.h>

namespace {

/// Runs `act` on the next modal window, from within its event loop.
template <typename Window>
void WhenShown(std::function<void(Window&)> act) {
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        act(*window);
    });
}

void PressButton(QMessageBox& box, QMessageBox::StandardButton button) {
    QTest::mouseClick(box.button(button), Qt::LeftButton);
}

} // namespace

TEST(MessageBoxes, ShowTextAsItIsUnderItsTitleAndIcon) {
    ui::MessageBoxes boxes;
    WhenShown<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.text(), "<b>not bold</b> & so on");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle(), "Please note");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.buttons().size(), 1);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    EXPECT_EQ(boxes.Show({0, "<b>not bold</b> & so on", app::kMessageWarning, "Please note"}),
              app::kAnswerOk);
}

TEST(MessageBoxes, AnswerQuestionsWithThePlatformsNumbersAndEscapeIsNo) {
    ui::MessageBoxes boxes;
    const std::pair<std::function<void(QMessageBox&)>, int> ways[] = {
        {[](QMessageBox& box) { PressButton(box, QMessageBox::Yes); }, app::kAnswerYes},
        {[](QMessageBox& box) { PressButton(box, QMessageBox::No); }, app::kAnswerNo},
        {[](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }, app::kAnswerNo}};
    for (const auto& [act, answer] : ways) {
        WhenShown<QMessageBox>(act);
        EXPECT_EQ(boxes.Show({0, "Really?", app::kMessageQuestion, "Delete"}), answer);
    }
}

TEST(MessageBoxes, OfferTheRestOnASecondButton) {
    ui::MessageBoxes boxes;
    const app::Message message{0, "One of many", app::kMessageWarning, "Please note"};
    WhenShown<QMessageBox>([](QMessageBox& box) {
        QTest::mouseClick(box.findChild<QPushButton*>(QStringLiteral("restButton")), Qt::LeftButton);
    });
    EXPECT_TRUE(boxes.ShowOfferingRest(message));
    WhenShown<QMessageBox>([](QMessageBox& box) { PressButton(box, QMessageBox::Ok); });
    EXPECT_FALSE(boxes.ShowOfferingRest(message));
}

TEST(MessageBoxes, AskForALineThatMayBeMasked) {
    ui::MessageBoxes boxes;
    WhenShown<QDialog>([](QDialog& box) {
        auto* edit = box.findChild<QLineEdit*>();
        EXPECT_EQ(edit->echoMode(), QLineEdit::Password);
        EXPECT_EQ(box.findChild<QLabel*>(QStringLiteral("prompt"))->text(), "Password?");
        QTest::keyClicks(edit, QStringLiteral("s3cret "));
        QTest::keyClick(edit, Qt::Key_Return);
    });
    EXPECT_EQ(boxes.Ask("Password?", "Archive", true), "s3cret ");
    WhenShown<QDialog>([](QDialog& box) {
        EXPECT_EQ(box.findChild<QLineEdit*>()->echoMode(), QLineEdit::Normal);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    EXPECT_EQ(boxes.Ask("Name?", "New folder", false), std::nullopt);
}

TEST(Fonts, LabelsAreLargerInChineseAndOthersKeepTheirSize) {
    QWidget window;
    auto* label = new QLabel(&window);
    auto* title = new QLabel(&window);
    title->setProperty("keepsFontSize", true);
    auto* tree = new QTreeView(&window);
    const int treeSize = tree->font().pointSize();
    const int titleSize = title->font().pointSize();
    for (const auto& [language, size] : {std::pair{"0409", 8}, {"0804", 9}, {"0404", 9}, {"0407", 8}}) {
        app::Application().LanguageId = language;
        ui::ApplyFonts(&window);
        EXPECT_EQ(label->font().pointSize(), size) << language;
        EXPECT_EQ(title->font().pointSize(), titleSize);
        EXPECT_EQ(tree->font().pointSize(), treeSize);
    }
}

TEST(Appearance, LanguagesRunTheirWay) {
    EXPECT_EQ(ui::DirectionOf("0409"), Qt::LeftToRight);
    EXPECT_EQ(ui::DirectionOf("0401"), Qt::RightToLeft);
    EXPECT_EQ(ui::DirectionOf("0c01"), Qt::RightToLeft);
    EXPECT_EQ(ui::DirectionOf("040d"), Qt::RightToLeft);
    EXPECT_EQ(ui::DirectionOf(""), Qt::LeftToRight);
}

TEST(Yield, ChainsOfWorkThatYieldsComeToAnEnd) {
    int depth = 0;
    int deepest = 0;
    int waiting = 0;
    bool enough = false;
    std::function<void()> work = [&] {
        --waiting;
        deepest = std::max(deepest, ++depth);
        if (!enough) {
            ++waiting;
            QTimer::singleShot(0, qApp, work);
        }
        ui::YieldNow();
        --depth;
    };
    waiting = 1;
    work();
    enough = true;
    EXPECT_TRUE(QTest::qWaitFor([&] { return waiting == 0; }));
    EXPECT_GT(deepest, 1);
    EXPECT_LT(deepest, 10);
}
