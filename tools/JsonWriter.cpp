#include "JsonWriter.h"

namespace tools {

namespace {

constexpr std::size_t kBlock = 64 * 1024;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// Length of the well-formed UTF-8 sequence (RFC 3629) at the start of `text`, 0 when there is none.
std::size_t SequenceLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    std::size_t length = 0;
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        length = 2;
    else if (lead >= 0xE0 && lead <= 0xEF)
        length = 3;
    else if (lead >= 0xF0 && lead <= 0xF4)
        length = 4;
    if (length == 0 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if (!IsContinuation(text[i]))
            return 0;
    const auto second = static_cast<unsigned char>(text[1]);
    const bool isOverlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool isOutside = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
    return isOverlong || isOutside ? 0 : length;
}

/// Whether a character stands in a JSON string as it is (RFC 8259, section 7), on its own.
bool IsPlain(char c) {
    return c >= 0x20 && static_cast<unsigned char>(c) < 0x80 && c != '"' && c != '\\';
}

void AppendEscaped(std::string& out, char c) {
    constexpr std::string_view kHex = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    out += "\\u00";
    out += kHex[byte >> 4];
    out += kHex[byte & 15];
}

} // namespace

JsonWriter& JsonWriter::Key(std::string_view name) {
    Separate();
    ((text_ += '"') += name) += "\":";
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::Value(std::int64_t number) {
    Separate();
    text_ += std::to_string(number);
    return *this;
}

JsonWriter& JsonWriter::Value(std::string_view text) {
    Separate();
    text_ += '"';
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() && IsPlain(text[plain]))
            ++plain;
        text_.append(text, 0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        const char c = text[0];
        const std::size_t length = SequenceLength(text);
        if (length == 0)
            text_ += kReplacement;
        else if (c == '"' || c == '\\')
            (text_ += '\\') += c;
        else if (static_cast<unsigned char>(c) < 0x20)
            AppendEscaped(text_, c);
        else
            text_ += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    text_ += '"';
    return *this;
}

JsonWriter& JsonWriter::Flag(bool value) {
    Separate();
    text_ += value ? "true" : "false";
    return *this;
}

JsonWriter& JsonWriter::Open(char bracket) {
    Separate();
    text_ += bracket;
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::Close(char bracket) {
    text_ += bracket;
    needsComma_ = true;
    if (text_.size() >= kBlock) {
        std::fwrite(text_.data(), 1, text_.size(), file_);
        text_.clear();
    }
    return *this;
}

void JsonWriter::Finish() {
    text_ += '\n';
    std::fwrite(text_.data(), 1, text_.size(), file_);
    std::fflush(file_);
    text_.clear();
}

void JsonWriter::Separate() {
    if (needsComma_)
        text_ += ',';
    needsComma_ = true;
}

} // namespace tools
