#include "base/Letters.h"

#include "base/CaseTable.h"
#include "base/Utf8.h"

#include <algorithm>
#include <span>

namespace base {
namespace {

/// What takes the place of a byte that is not UTF-8 while texts are compared: behind every code point, and
/// different for different bytes.
constexpr char32_t kRawByte = 0x110000;

char32_t Mapped(std::span<const CaseRun> runs, char32_t codePoint) {
    const auto after = std::upper_bound(runs.begin(), runs.end(), codePoint,
                                        [](char32_t c, const CaseRun& run) { return c < run.first; });
    if (after == runs.begin())
        return codePoint;
    const CaseRun& run = *(after - 1);
    if (codePoint > run.last || (codePoint - run.first) % run.step != 0)
        return codePoint;
    return static_cast<char32_t>(static_cast<std::int32_t>(codePoint) + run.delta);
}

char32_t Upper(char32_t c) {
    if (c < 0x80)
        return c >= 'a' && c <= 'z' ? c - 0x20 : c;
    return Mapped({kUpperRuns, kUpperRunsCount}, c);
}

char32_t Lower(char32_t c) {
    if (c < 0x80)
        return c >= 'A' && c <= 'Z' ? c + 0x20 : c;
    return Mapped({kLowerRuns, kLowerRunsCount}, c);
}

/// One form for all cases of a letter: Unicode simple case folding. The dotted and the dotless i of Turkish
/// stay letters of their own, as that folding has it.
char32_t Fold(char32_t c) {
    if (c < 0x80)
        return Lower(c);
    if (c == 0x130 || c == 0x131)
        return c;
    return Lower(Upper(Lower(c)));
}

char32_t NextFolded(std::string_view text, std::size_t& position) {
    const std::size_t start = position;
    if (static_cast<std::uint8_t>(text[start]) < 0x80) {
        ++position;
        return Lower(static_cast<std::uint8_t>(text[start]));
    }
    const char32_t codePoint = NextCodePoint(text, position);
    return codePoint == kNotUtf8 ? kRawByte + static_cast<std::uint8_t>(text[start]) : Fold(codePoint);
}

template <char32_t (*Map)(char32_t)>
std::string MapText(std::string_view text) {
    std::size_t position = AsciiPrefix(text);
    std::string result(text.substr(0, position));
    for (char& c : result)
        c = static_cast<char>(Map(static_cast<std::uint8_t>(c)));
    while (position < text.size()) {
        const std::size_t start = position;
        const char32_t codePoint = NextCodePoint(text, position);
        if (codePoint == kNotUtf8)
            result.push_back(text[start]);
        else
            AppendUtf8(result, Map(codePoint));
    }
    return result;
}

/// Bytes at the start of `text` that equal `prefix` without regard to case; 0 when it does not begin so.
/// (The same letters can differ in length from case to case.)
std::size_t MatchLength(std::string_view text, std::string_view prefix) {
    std::size_t inText = 0;
    std::size_t inPrefix = 0;
    while (inPrefix < prefix.size()) {
        if (inText >= text.size() || NextFolded(text, inText) != NextFolded(prefix, inPrefix))
            return 0;
    }
    return inText;
}

} // namespace

std::string ToUpper(std::string_view text) {
    return MapText<Upper>(text);
}

std::string ToLower(std::string_view text) {
    return MapText<Lower>(text);
}

int CompareNoCase(std::string_view left, std::string_view right) {
    std::size_t inLeft = 0;
    std::size_t inRight = 0;
    while (inLeft < left.size() && inRight < right.size()) {
        const char32_t l = NextFolded(left, inLeft);
        const char32_t r = NextFolded(right, inRight);
        if (l != r)
            return l < r ? -1 : 1;
    }
    if (inLeft < left.size())
        return 1;
    return inRight < right.size() ? -1 : 0;
}

bool EqualsNoCase(std::string_view left, std::string_view right) {
    return left == right || CompareNoCase(left, right) == 0;
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
    return prefix.empty() || MatchLength(text, prefix) != 0;
}

bool EndsWithNoCase(std::string_view text, std::string_view suffix) {
    const auto isContinuation = [](char c) { return (static_cast<std::uint8_t>(c) & 0xC0U) == 0x80; };
    const auto stepBack = [&](std::string_view from) {
        std::size_t position = from.size() - 1;
        while (position > 0 && from.size() - position < 4 && isContinuation(from[position]))
            --position;
        return IsUtf8(from.substr(position)) ? position : from.size() - 1;
    };
    while (!suffix.empty()) {
        if (text.empty())
            return false;
        std::size_t inText = stepBack(text);
        std::size_t inSuffix = stepBack(suffix);
        const std::size_t textRest = inText;
        const std::size_t suffixRest = inSuffix;
        if (NextFolded(text, inText) != NextFolded(suffix, inSuffix))
            return false;
        text = text.substr(0, textRest);
        suffix = suffix.substr(0, suffixRest);
    }
    return true;
}

std::string ReplaceNoCase(std::string_view text, std::string_view what, std::string_view with) {
    std::string result;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t matched = what.empty() ? 0 : MatchLength(text.substr(position), what);
        if (matched != 0) {
            result += with;
            position += matched;
            continue;
        }
        const std::size_t start = position;
        NextCodePoint(text, position);
        result += text.substr(start, position - start);
    }
    return result;
}

} // namespace base
