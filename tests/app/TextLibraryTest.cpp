#include "platform/HostPath.h"
#include "platform/ResourceLibrary.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>

namespace {

using Texts = std::map<std::uint32_t, std::string>;

std::string Unescaped(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escaped = text[i] == '\\' && i + 1 < text.size();
        const char c = escaped ? text[++i] : text[i];
        result += !escaped ? c : c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c;
    }
    return result;
}

/// The texts of each library file, from the list that a reader of the sources made.
std::map<std::string, Texts> ExpectedTexts() {
    std::map<std::string, Texts> expected;
    std::ifstream file(EXPECTED_TEXTS);
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        std::string library;
        std::string id;
        std::string text;
        std::getline(fields, library, '\t');
        std::getline(fields, id, '\t');
        std::getline(fields, text);
        expected[library][static_cast<std::uint32_t>(std::stoul(id))] = Unescaped(text);
    }
    return expected;
}

TEST(TextLibraries, HoldExactlyTheTextsOfTheirSources) {
    const auto expected = ExpectedTexts();
    ASSERT_EQ(expected.size(), 4U);
    for (const auto& [name, texts] : expected) {
        SCOPED_TRACE(name);
        base::SystemError error;
        const std::string path = platform::PathFromHost(std::string(PROGRAM_DIR) + "/" + name);
        const auto library = platform::ResourceLibrary::Load(path, error);
        ASSERT_NE(library, nullptr) << error.Description();
        for (std::uint32_t id = 0; id < 1100; ++id) {
            const auto found = texts.find(id);
            EXPECT_EQ(library->LoadString(id), found == texts.end() ? "" : found->second) << id;
        }
        EXPECT_EQ(library->LoadString(0xFFFFFFFF), "");
    }
}

} // namespace
