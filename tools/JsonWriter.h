#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace tools {

/// Writes one JSON text to a file, value by value. Commas come by themselves; the caller opens and closes in
/// pairs and ends with Finish. Strings may hold any bytes: what is not UTF-8 becomes U+FFFD.
class JsonWriter {
  public:
    /// `file` stays the caller's.
    explicit JsonWriter(std::FILE* file) : file_(file) {}

    JsonWriter& OpenObject() { return Open('{'); }

    JsonWriter& CloseObject() { return Close('}'); }

    JsonWriter& OpenArray() { return Open('['); }

    JsonWriter& CloseArray() { return Close(']'); }

    /// The name of the next value; a plain ASCII word.
    JsonWriter& Key(std::string_view name);

    JsonWriter& Value(std::int64_t number);
    JsonWriter& Value(std::string_view text);
    JsonWriter& Flag(bool value);

    /// Writes what is left, with a line end.
    void Finish();

  private:
    JsonWriter& Open(char bracket);
    JsonWriter& Close(char bracket);
    void Separate();

    std::FILE* file_;
    std::string text_; // not yet written
    bool needsComma_ = false;
};

} // namespace tools
