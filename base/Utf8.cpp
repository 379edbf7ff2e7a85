#include "base/Utf8.h"

#include <cassert>
#include <cstring>

namespace base {
namespace {

struct Lead {
    std::size_t length;
    std::uint8_t secondFrom; // bounds of the second byte, which shut out overlong forms and surrogates
    std::uint8_t secondTo;
};

Lead LeadOf(std::uint8_t byte) {
    if (byte < 0xC2 || byte > 0xF4)
        return {0, 0, 0};
    if (byte < 0xE0)
        return {2, 0x80, 0xBF};
    if (byte < 0xF0)
        return {3, static_cast<std::uint8_t>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<std::uint8_t>(byte == 0xED ? 0x9F : 0xBF)};
    return {4, static_cast<std::uint8_t>(byte == 0xF0 ? 0x90 : 0x80),
            static_cast<std::uint8_t>(byte == 0xF4 ? 0x8F : 0xBF)};
}

} // namespace

std::size_t AsciiPrefix(std::string_view text) {
    std::size_t position = 0;
    for (; position + 8 <= text.size(); position += 8) {
        std::uint64_t word;
        std::memcpy(&word, text.data() + position, 8);
        if ((word & 0x8080808080808080U) != 0)
            break;
    }
    while (position < text.size() && static_cast<std::uint8_t>(text[position]) < 0x80)
        ++position;
    return position;
}

char32_t NextCodePoint(std::string_view text, std::size_t& position) {
    const auto byteAt = [&](std::size_t index) { return static_cast<std::uint8_t>(text[index]); };
    const std::uint8_t first = byteAt(position++);
    if (first < 0x80)
        return first;
    const Lead lead = LeadOf(first);
    if (lead.length == 0 || text.size() - position < lead.length - 1)
        return kNotUtf8;
    if (byteAt(position) < lead.secondFrom || byteAt(position) > lead.secondTo)
        return kNotUtf8;
    char32_t value = first & (0xFFU >> (lead.length + 1));
    for (std::size_t i = 0; i + 1 < lead.length; ++i) {
        if ((byteAt(position + i) & 0xC0U) != 0x80)
            return kNotUtf8;
        value = (value << 6) | (byteAt(position + i) & 0x3FU);
    }
    position += lead.length - 1;
    return value;
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    assert(codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF));
    const auto put = [&](char32_t byte) {
        text.push_back(static_cast<char>(static_cast<std::uint8_t>(byte)));
    };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | (codePoint >> 12));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | (codePoint >> 18));
        put(0x80 | ((codePoint >> 12) & 0x3F));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
}

std::string Utf8FromUtf16(std::u16string_view units) {
    std::string text;
    text.reserve(units.size());
    for (std::size_t at = 0; at < units.size(); ++at) {
        const char32_t unit = units[at];
        const char32_t next = at + 1 < units.size() ? units[at + 1] : 0;
        const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
        if (isHigh && next >= 0xDC00 && next < 0xE000) {
            AppendUtf8(text, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            ++at;
        } else {
            AppendUtf8(text, unit >= 0xD800 && unit < 0xE000 ? 0xFFFD : unit);
        }
    }
    return text;
}

bool IsUtf8(std::string_view text) {
    for (std::size_t position = 0; position < text.size();) {
        position += AsciiPrefix(text.substr(position));
        if (position < text.size() && NextCodePoint(text, position) == kNotUtf8)
            return false;
    }
    return true;
}

std::string CleanedUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        if (NextCodePoint(text, position) == kNotUtf8)
            result.push_back('?');
        else
            result.append(text, start, position - start);
    }
    return result;
}

} // namespace base
