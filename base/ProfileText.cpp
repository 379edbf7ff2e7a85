#include "base/ProfileText.h"

#include "base/Letters.h"

#include <algorithm>

namespace base {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kBlanks = " \t\r\v\f";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return text.substr(text.size());
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view Unquoted(std::string_view value) {
    const bool isQuoted =
        value.size() >= 2 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0];
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

bool IsName(std::string_view bytes, std::string_view name) {
    return EqualsNoCase(Trimmed(bytes), name);
}

/// Where the byte-order mark that some editors write ends.
std::size_t TextStart(std::string_view content) {
    return content.starts_with("\xEF\xBB\xBF"sv) ? 3 : 0;
}

/// What a search for a key has met. Positions are byte offsets into the content.
struct Place {
    bool hasSection = false;
    bool hasKey = false;
    std::size_t sectionEnd = 0; ///< behind the last line of the section that is not blank
    std::size_t valueStart = 0; ///< behind the key's equals sign
    std::size_t valueEnd = 0;   ///< in front of the line's end
};

Place FindPlace(std::string_view content, std::string_view section, std::string_view key) {
    Place place;
    for (std::size_t start = TextStart(content); start < content.size();) {
        const std::size_t lineFeed = std::min(content.find('\n', start), content.size());
        const std::size_t next = std::min(lineFeed + 1, content.size());
        std::size_t end = lineFeed;
        while (end > start && content[end - 1] == '\r')
            --end;
        const std::string_view line = content.substr(start, end - start);
        const std::string_view text = Trimmed(line);
        const std::size_t equals = line.find('=');
        if (text.starts_with('[')) {
            if (place.hasSection)
                break;
            place.hasSection = IsName(text.substr(1, std::min(text.find(']'), text.size()) - 1), section);
            place.sectionEnd = next;
        } else if (place.hasSection && !text.empty()) {
            place.sectionEnd = next;
            if (!text.starts_with(';') && equals != std::string_view::npos &&
                IsName(line.substr(0, equals), key)) {
                place.hasKey = true;
                place.valueStart = start + equals + 1;
                place.valueEnd = end;
                break;
            }
        }
        start = next;
    }
    return place;
}

/// The line end that the text uses; CR LF where it has none yet.
std::string_view LineEndOf(std::string_view content) {
    const std::size_t lineFeed = content.find('\n');
    return lineFeed != std::string_view::npos && (lineFeed == 0 || content[lineFeed - 1] != '\r') ? "\n"
                                                                                                  : "\r\n";
}

} // namespace

std::optional<std::string_view> FindProfileValue(std::string_view content, std::string_view section,
                                                 std::string_view key) {
    const Place place = FindPlace(content, section, key);
    if (!place.hasKey)
        return std::nullopt;
    return Unquoted(Trimmed(content.substr(place.valueStart, place.valueEnd - place.valueStart)));
}

std::string SetProfileValue(std::string_view content, std::string_view section, std::string_view key,
                            std::string_view value) {
    value = value.substr(0, value.find_first_of("\r\n\0"sv));
    const Place place = FindPlace(content, section, key);
    std::string result;
    if (place.hasKey) {
        result = content.substr(0, place.valueStart);
        result += value;
        return result += content.substr(place.valueEnd);
    }
    const std::string_view lineEnd = LineEndOf(content);
    const std::size_t position = place.hasSection ? place.sectionEnd : content.size();
    result = content.substr(0, position);
    if (result.size() > TextStart(content) && result.back() != '\n')
        result += lineEnd;
    if (!place.hasSection)
        result.append("[").append(section).append("]").append(lineEnd);
    result.append(key).append("=").append(value).append(lineEnd);
    return result += content.substr(position);
}

} // namespace base
