#pragma once

#include "base/Utf8.h"

#include <cstdint>
#include <cstdio>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <string>
#include <string_view>

namespace tools {

/// Writes one JSON text to a file, value by value. The caller opens and closes in pairs and
/// ends with Finish. Strings may hold any bytes: a byte that is not UTF-8 becomes "?".
class JsonWriter {
  public:
    /// `file` stays the caller's.
    explicit JsonWriter(std::FILE* file) : file_(file) {}

    JsonWriter& OpenObject() { return writer_.StartObject(), *this; }

    JsonWriter& CloseObject() {
        writer_.EndObject();
        if (text_.GetSize() >= kBlock)
            Flush();
        return *this;
    }

    JsonWriter& OpenArray() { return writer_.StartArray(), *this; }

    JsonWriter& CloseArray() { return writer_.EndArray(), *this; }

    /// The name of the next value.
    JsonWriter& Key(std::string_view name) { return Text(name); }

    JsonWriter& Value(std::int64_t number) { return writer_.Int64(number), *this; }

    JsonWriter& Value(std::string_view text) {
        return base::IsUtf8(text) ? Text(text) : Text(base::CleanedUtf8(text));
    }

    JsonWriter& Flag(bool value) { return writer_.Bool(value), *this; }

    /// Writes what is left, with a line end.
    void Finish() {
        text_.Put('\n');
        Flush();
        std::fflush(file_);
    }

  private:
    static constexpr std::size_t kBlock = 64 * 1024;

    void Flush() {
        std::fwrite(text_.GetString(), 1, text_.GetSize(), file_);
        text_.Clear();
    }

    JsonWriter& Text(std::string_view text) {
        return writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size())), *this;
    }

    std::FILE* file_;
    rapidjson::StringBuffer text_; // not yet written
    rapidjson::Writer<rapidjson::StringBuffer> writer_{text_};
};

} // namespace tools
