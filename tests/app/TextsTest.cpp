#include "app/Texts.h"

#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "app/ProbeRun.h"
#include "fakes/RecordingMessages.h"

#include <gtest/gtest.h>

namespace {

using tests::ProbeResult;
using tests::ProgramFolder;
using tests::ScopedVariable;

std::string Repeated(std::string_view what, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += what;
    return result;
}

TEST(Texts, AreCutAtTheirLimitsInTheCodePage) {
    ProgramFolder folder("[Setting]\r\nLanguage=0fff\r\nCharset=0\r\n");
    folder.Put(ODD_LIBRARY, "langfile0fff.dll");
    folder.Put(ODD_LIBRARY, "lic0fff.dll");
    {
        const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
        const ProbeResult result = folder.Start("500 501 502 503 x500");
        EXPECT_EQ(result["500"], std::string(381, 'x') + "y");
        EXPECT_EQ(result["501"], Repeated("ä", 382)) << "one byte each in this code page";
        EXPECT_EQ(result["502"], "before") << "and at a NUL";
        EXPECT_EQ(result["503"], "User and User and User");
        EXPECT_EQ(result["x500"], std::string(381, 'x') + "y");
    }
    {
        const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "65001");
        EXPECT_EQ(folder.Start("501")["501"], Repeated("ä", 191)) << "two bytes each, none of them halved";
    }
    const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1251");
    EXPECT_EQ(folder.Start("501")["501"], std::string(382, '?')) << "letters that the page lacks";
}

TEST(Texts, NothingIsLoadedAtFirst) {
    EXPECT_EQ(app::LoadText(302), "");
    EXPECT_EQ(app::LoadExtraText(103), "");
}

TEST(Texts, PlaceholdersAreReplacedOnce) {
    app::Application().OwnerName = "%username %s";
    EXPECT_EQ(app::WithUserName("%UsErNaMe!"), "%username %s!");
    EXPECT_EQ(app::WithUserName("100% user"), "100% user");
    app::Application().OwnerName.clear();
    EXPECT_EQ(app::WithUserName("a%usernameb"), "ab");
    EXPECT_EQ(app::WithProductName("About %s, %S"), "About Pellarion, Pellarion");
}

TEST(Messages, TitlesAndErrorsFollowTheirRules) {
    fakes::RecordingMessages messages;
    app::ShowErrorUnderProgramTitle("It broke.");
    app::ShowText(524, 0, app::kMessageWarning);
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].text, "Error: It broke.");
    EXPECT_EQ(messages.shown[0].title, "Pellarion");
    EXPECT_EQ(messages.shown[0].flags, app::kMessageError);
    EXPECT_EQ(messages.shown[1].id, 524U);
    EXPECT_EQ(messages.shown[1].title, "Pellarion") << "a message without a title";
}

TEST(Messages, DoorsArePutInPlaceAndBack) {
    {
        fakes::RecordingMessages outer;
        outer.answers = {app::kAnswerNo};
        {
            fakes::RecordingMessages inner;
            EXPECT_EQ(app::ShowText(505, 507, app::kMessageQuestion), app::kAnswerYes);
            EXPECT_EQ(inner.Ids(), std::vector<std::uint32_t>{505});
        }
        EXPECT_EQ(app::ShowText(506, 507, app::kMessageQuestion), app::kAnswerNo);
        EXPECT_EQ(outer.Ids(), std::vector<std::uint32_t>{506});
    }
    // Without an implementation of its own, a message returns OK or Yes, by its buttons.
    EXPECT_EQ(app::ShowText(505, 507, app::kMessageQuestion), app::kAnswerYes);
    EXPECT_EQ(app::ShowText(524, 300, app::kMessageWarning), app::kAnswerOk);
    EXPECT_EQ(app::Messages().Ask("Name?", "", false), std::nullopt);
}

} // namespace
