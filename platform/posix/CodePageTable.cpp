#include "platform/posix/CodePageTable.h"

#include "base/Utf8.h"
#include "platform/posix/IconvHandle.h"

#include <array>
#include <map>
#include <mutex>
#include <optional>
#include <unordered_map>

namespace platform {
namespace {

constexpr int kLastResort = 1252; // for a code page that iconv does not know

/// Both directions of one code page, asked from iconv once.
struct Table {
    std::array<std::string, 256> text; // UTF-8; empty for a byte without a meaning
    std::unordered_map<char32_t, char> bytes;
};

std::optional<Table> MakeTable(int codePage) {
    const IconvHandle converter("UTF-8", IconvName(codePage));
    // Without any conversion at all the common half of all pages is still known.
    if (!converter && codePage != kLastResort)
        return std::nullopt;
    Table table;
    for (std::size_t value = 0; value < 256; ++value) {
        const char byte = static_cast<char>(static_cast<unsigned char>(value));
        std::string& text = table.text[value];
        if (value < 0x80)
            text.assign(1, byte);
        else if (converter)
            converter.Convert({&byte, 1}, text);
        if (text.empty())
            continue;
        std::size_t position = 0;
        table.bytes.emplace(base::NextCodePoint(text, position), byte);
    }
    return table;
}

const Table& TableOf(int codePage) {
    static std::recursive_mutex mutex; // cabinets are packed and checked on several threads
    const std::lock_guard lock(mutex);
    static std::map<int, Table> tables;
    if (const auto known = tables.find(codePage); known != tables.end())
        return known->second;
    std::optional<Table> made = MakeTable(codePage);
    if (!made)
        return TableOf(kLastResort);
    return tables.emplace(codePage, *std::move(made)).first->second;
}

} // namespace

std::string ReadSingleByte(int codePage, std::string_view bytes) {
    const Table& table = TableOf(codePage);
    std::string result;
    result.reserve(bytes.size() * 2);
    for (const char byte : bytes) {
        const std::string& text = table.text[static_cast<unsigned char>(byte)];
        if (text.empty())
            result.push_back('?');
        else
            result += text;
    }
    return result;
}

std::string WriteSingleByte(int codePage, std::string_view text) {
    const Table& table = TableOf(codePage);
    std::string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const auto found = table.bytes.find(base::NextCodePoint(text, position));
        result.push_back(found == table.bytes.end() ? '?' : found->second);
    }
    return result;
}

} // namespace platform
