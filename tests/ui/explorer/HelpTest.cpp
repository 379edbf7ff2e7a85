#include "app/TextIds.h"
#include "ui/ModalUser.h"
#include "ui/explorer/CommandsFixture.h"

#include <QPushButton>

namespace {

using HelpCommands = CommandsWindow;

TEST_F(HelpCommands, DocumentOfTheLanguageAndSupportPage) {
    const std::filesystem::path document = tests::ProgramDir() / "what_0409.pdf";
    std::filesystem::remove(document);
    Open();
    Trigger("mnuHelpWhat");
    ASSERT_EQ(messages_.shown.size(), 1U);
    EXPECT_EQ(messages_.shown[0].text, app::LoadExtraText(IDS_EXTRA_NO_HELP_DOCUMENT));
    EXPECT_EQ(messages_.shown[0].title, app::LoadText(IDS_WARNING_TITLE));
    EXPECT_EQ(messages_.shown[0].flags, app::kMessageWarning);
    std::ofstream(document) << "x";
    Trigger("mnuHelpWhat");
    Trigger("mnuHelpOnline");
    EXPECT_EQ(opener_.opened, (Texts{"P:\\what_0409.pdf", platform::ProgramString(1000)}));
    EXPECT_FALSE(Get<QAction>("mnuHelpUpdates").isVisible());
    std::filesystem::remove(document);
}

TEST_F(HelpCommands, AboutBoxNamesTheVersion) {
    Open();
    const ModalUser user(
        {{"frmAbout", [&](QWidget& about) {
              EXPECT_EQ(about.windowTitle(), "About Pellarion");
              EXPECT_EQ(about.findChild<QLabel*>("lblVersion")->text(), "Version " PROJECT_VERSION);
              EXPECT_EQ(about.findChild<QLabel*>("lblDisclaimer")->text().toStdString(),
                        app::LoadExtraText(IDS_EXTRA_LEGAL_NOTICE));
              {
                  const tests::ScopedVariable nothing("PATH", "/nowhere");
                  QTest::mouseClick(about.findChild<QPushButton*>("cmdSysInfo"), Qt::LeftButton);
              }
              QTest::mouseClick(about.findChild<QPushButton*>("cmdOk"), Qt::LeftButton);
          }}});
    Trigger("mnuHelpAbout");
    EXPECT_EQ(user.Done(), 1U);
    ASSERT_EQ(messages_.shown.size(), 1U);
    EXPECT_EQ(messages_.shown[0].text, "System Information Is Unavailable At This Time");
    EXPECT_EQ(messages_.shown[0].flags, app::kMessagePlain);
}

} // namespace
