#include "app/TextIds.h"

#include "platform/CodePage.h"
#include "platform/HostPath.h"
#include "platform/ResourceLibrary.h"
#include "support/TestDir.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr const char* kReference = "0409";
constexpr std::size_t kMostBytes = 382;

/// The code page that systems without UTF-8 use with a language: its texts hold no letter that the page
/// lacks.
const std::map<std::string, const char*> kCodePages{{"0407", "1252"}, {"0409", "1252"}};

/// The library that a text is in: langfile.rc, or lic.rc with its ids of its own.
enum class Library { kLanguage, kExtra };

struct TextId {
    Library library;
    std::uint32_t id;

    auto operator<=>(const TextId&) const = default;
};

TextId Main(std::uint32_t id) {
    return {Library::kLanguage, id};
}

TextId Extra(std::uint32_t id) {
    return {Library::kExtra, id};
}

/// The names that app/TextIds.h gives. Two names for one id are a failure.
std::map<TextId, std::string> Names() {
    std::map<TextId, std::string> names;
    const std::regex definition(R"(#define (IDS_(EXTRA_)?[A-Z_]+) (\d+)\s*)");
    std::ifstream header(TEXT_IDS);
    for (std::string line; std::getline(header, line);) {
        if (!line.starts_with("#define"))
            continue;
        std::smatch parts;
        EXPECT_TRUE(std::regex_match(line, parts, definition)) << line;
        if (parts.empty())
            continue;
        const auto id = static_cast<std::uint32_t>(std::stoul(parts[3]));
        const auto [place, isNew] = names.emplace(parts[2].matched ? Extra(id) : Main(id), parts[1]);
        EXPECT_TRUE(isNew) << place->second << " and " << parts[1] << " are the same id";
    }
    return names;
}

using Texts = std::map<TextId, std::string>;

void AddTexts(Texts& texts, Library library, const std::string& fileName) {
    base::SystemError error;
    const std::string path = platform::PathFromHost(std::string(PROGRAM_DIR) + "/" + fileName);
    const auto loaded = platform::ResourceLibrary::Load(path, error);
    ASSERT_NE(loaded, nullptr) << fileName << ": " << error.Description();
    for (std::uint32_t id = 0; id < 2000; ++id)
        if (const std::string text = loaded->LoadString(id); !text.empty())
            texts[{library, id}] = text;
}

/// The texts of every language in the program folder, by its id.
std::map<std::string, Texts> Languages() {
    std::map<std::string, Texts> languages;
    const std::regex library(R"(langfile([0-9a-f]{4})\.dll)");
    for (const auto& entry : std::filesystem::directory_iterator(PROGRAM_DIR)) {
        const std::string name = entry.path().filename().string();
        std::smatch parts;
        if (!std::regex_match(name, parts, library))
            continue;
        Texts& texts = languages[parts[1]];
        AddTexts(texts, Library::kLanguage, name);
        AddTexts(texts, Library::kExtra, "lic" + parts[1].str() + ".dll");
    }
    EXPECT_GE(languages.size(), 2U);
    EXPECT_TRUE(languages.contains(kReference));
    return languages;
}

/// The placeholders of a text, sorted; "%" followed by anything else is a failure.
std::vector<std::string> Placeholders(const std::string& text) {
    const std::regex placeholder("%(username|entry|s|x|y|n)?");
    std::vector<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), placeholder), end; at != end; ++at) {
        EXPECT_TRUE((*at)[1].matched) << "unknown placeholder in: " << text;
        found.push_back(at->str());
    }
    std::sort(found.begin(), found.end());
    return found;
}

/// What follows each "&" that marks an access key; "&&" is a plain ampersand.
std::vector<std::string> AccessKeys(const std::string& text) {
    std::vector<std::string> keys;
    for (std::size_t at = text.find('&'); at != std::string::npos; at = text.find('&', at + 2)) {
        if (text.substr(at + 1, 1) == "&")
            continue;
        std::size_t end = at + 2; // and the further bytes of one UTF-8 character
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
            ++end;
        std::string key = text.substr(at + 1, end - at - 1);
        std::transform(key.begin(), key.end(), key.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
        keys.push_back(key);
    }
    return keys;
}

/// What is on the screen at the same time, so that no two may have the same access key.
const std::vector<std::vector<TextId>>& CaptionGroups() {
    static const std::vector<std::vector<TextId>> groups{
        // the menu of folders
        {Main(IDS_NEW_FOLDER), Main(IDS_DELETE), Main(IDS_RENAME), Main(IDS_PROPERTIES), Main(IDS_CLOSE)},
        // the menu of files
        {Main(IDS_NEW), Main(IDS_OPEN), Main(IDS_COMPRESS), Main(IDS_EXTRACT), Main(IDS_DELETE),
         Main(IDS_RENAME), Main(IDS_COPY), Main(IDS_PASTE), Main(IDS_PROPERTIES), Main(IDS_REFRESH),
         Main(IDS_CLOSE)},
        // the menu bar, over folders and over files
        {Main(IDS_FOLDER), Extra(IDS_EXTRA_HELP)},
        {Main(IDS_FILE), Extra(IDS_EXTRA_HELP)},
        // the Help menu
        {Extra(IDS_EXTRA_WHAT_IS), Extra(IDS_EXTRA_ONLINE_SUPPORT), Extra(IDS_EXTRA_CHECK_FOR_UPDATES),
         Extra(IDS_EXTRA_ABOUT)},
        // the archive windows, and their context menu
        {Main(IDS_EXTRACT_TO_OTHER), Main(IDS_EXTRACT_TO_SAME), Main(IDS_OPEN), Main(IDS_CLOSE),
         Main(IDS_SELECT_ALL), Main(IDS_DELETE_ARCHIVE)},
        {Main(IDS_EXTRACT), Main(IDS_OPEN), Main(IDS_SELECT_ALL)},
        // the About box, a question, the progress window
        {Extra(IDS_EXTRA_OK), Extra(IDS_EXTRA_SYSTEM_INFO)},
        {Main(IDS_YES), Main(IDS_NO)},
        {Main(IDS_STOP)},
    };
    return groups;
}

TEST(TextIds, EveryLanguageHasATextForEachAndNoOther) {
    const auto names = Names();
    ASSERT_FALSE(names.empty());
    for (const auto& [language, texts] : Languages()) {
        SCOPED_TRACE(language);
        for (const auto& [id, name] : names)
            EXPECT_TRUE(texts.contains(id)) << name << " has no text";
        for (const auto& [id, text] : texts)
            EXPECT_TRUE(names.contains(id)) << id.id << " has no name: " << text;
    }
}

TEST(TextIds, TextsFitAndTakeTheSamePlaceholdersInEveryLanguage) {
    const auto languages = Languages();
    for (const auto& [language, texts] : languages) {
        ASSERT_TRUE(kCodePages.contains(language)) << language;
        const tests::ScopedVariable page("PELLARION_ANSI_CODEPAGE", kCodePages.at(language));
        for (const auto& [id, text] : texts) {
            SCOPED_TRACE(language + ": " + text);
            EXPECT_LE(text.size(), kMostBytes);
            EXPECT_EQ(platform::AnsiToUtf8(platform::Utf8ToAnsi(text)), text);
            EXPECT_FALSE(std::isspace(static_cast<unsigned char>(text.front())));
            EXPECT_FALSE(std::isspace(static_cast<unsigned char>(text.back())));
            const Texts& reference = languages.at(kReference);
            if (const auto theirs = reference.find(id); theirs != reference.end()) {
                EXPECT_EQ(Placeholders(text), Placeholders(theirs->second));
            }
        }
    }
}

TEST(TextIds, AccessKeysAreUnambiguous) {
    std::set<TextId> captions;
    for (const auto& group : CaptionGroups())
        captions.insert(group.begin(), group.end());
    for (const auto& [language, texts] : Languages()) {
        SCOPED_TRACE(language);
        for (const auto& [id, text] : texts)
            EXPECT_EQ(AccessKeys(text).size(), captions.contains(id) ? 1U : 0U) << text;
        for (const auto& group : CaptionGroups()) {
            std::set<std::string> taken;
            for (const TextId& id : group)
                for (const std::string& key : AccessKeys(texts.at(id)))
                    EXPECT_TRUE(taken.insert(key).second) << texts.at(id) << ": '" << key << "' is taken";
        }
    }
}

} // namespace
