#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tools {

/// Writes one JSON text, value by value. Commas come by themselves; the caller opens and closes in pairs.
/// Strings may hold any bytes: what is not UTF-8 becomes U+FFFD.
class JsonWriter {
  public:
    JsonWriter& OpenObject() { return Open('{'); }

    JsonWriter& CloseObject() { return Close('}'); }

    JsonWriter& OpenArray() { return Open('['); }

    JsonWriter& CloseArray() { return Close(']'); }

    /// The name of the next value; a plain ASCII word.
    JsonWriter& Key(std::string_view name);

    JsonWriter& Value(std::int64_t number);
    JsonWriter& Value(std::string_view text);
    JsonWriter& Flag(bool value);

    const std::string& Text() const { return text_; }

  private:
    JsonWriter& Open(char bracket);
    JsonWriter& Close(char bracket);
    void Separate();

    std::string text_;
    bool needsComma_ = false;
};

} // namespace tools
