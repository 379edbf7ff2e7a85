#pragma once

#include "app/ApplicationState.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "fakes/FakeDesktop.h"
#include "fakes/RecordingMessages.h"
#include "support/HostFiles.h"
#include "support/TestDir.h"
#include "ui/ListDriver.h"

#include <gtest/gtest.h>

/// A window of the program on drive E: of its own, with the texts that lie beside the test program.
class ProgramWindow : public testing::Test, public ListDriver {
  protected:
    void SetUp() override {
        app::Application() = {};
        app::Application().LanguageId = "0409";
        app::Application().CharsetCode = "0";
        app::LoadLanguageLibrary();
        ASSERT_EQ(app::LoadText(IDS_MY_COMPUTER), "My Computer");
    }

    void TearDown() override { app::FreeLanguageLibrary(); }

    using Ids = std::vector<std::uint32_t>;

    tests::TestDir dir_;
    tests::ScopedVariable drives_{"PELLARION_DRIVES", std::string(::getenv("PELLARION_DRIVES")) +
                                                          ";P=fixed:" + tests::ProgramDir().string()};
    fakes::RecordingMessages messages_;
    fakes::FakeDocumentOpener opener_;
};
