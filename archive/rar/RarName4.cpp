#include "archive/rar/RarName4.h"

#include "archive/rar/RarBytes.h"
#include "base/Utf8.h"
#include "platform/CodePage.h"

#include <algorithm>

namespace rar {

namespace {

std::string_view TextOf(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Unpacks a name in its compressed Unicode form. Two bits say what each step is; a byte in front of every
/// four steps holds them. A step is a character with the high byte 0, a character with the high byte that the
/// data begins with, a character of two bytes, or a run of characters of the plain name, with or without a
/// correction.
std::u16string Unpack(Bytes plain, Bytes packed) {
    constexpr std::size_t kMostUnits = 65535;
    ByteTaker taker(packed);
    std::u16string units;
    const auto high = static_cast<unsigned>(taker.Take8() << 8);
    const auto put = [&](unsigned unit) { units += static_cast<char16_t>(unit & 0xFFFF); };
    unsigned steps = 0;
    for (unsigned left = 0; !taker.Rest().empty() && units.size() < kMostUnits; steps <<= 2, --left) {
        if (left == 0) {
            steps = taker.Take8();
            left = 4;
            if (taker.Rest().empty())
                break;
        }
        const unsigned step = steps >> 6 & 3;
        if (step == 0) {
            put(taker.Take8());
        } else if (step == 1) {
            put(high | taker.Take8());
        } else if (step == 2) {
            put(taker.Take16());
        } else {
            const unsigned length = taker.Take8();
            const bool isMoved = (length & 0x80) != 0;
            const unsigned correction = isMoved ? taker.Take8() : 0;
            for (unsigned run = (length & 0x7F) + 2; run > 0 && units.size() < plain.size(); --run) {
                const unsigned character = plain[units.size()] + correction;
                put(isMoved ? high | (character & 0xFF) : character);
            }
        }
    }
    return units;
}

} // namespace

std::string WithBackslashes(std::string name) {
    std::ranges::replace(name, '/', '\\');
    return name;
}

std::string PlainName(Bytes name) {
    const std::string_view text = TextOf(name);
    return WithBackslashes(platform::AnsiToUtf8(text.substr(0, text.find('\0'))));
}

std::string UnicodeName(Bytes name) {
    const auto end = std::ranges::find(name, 0);
    if (end == name.end())
        return WithBackslashes(base::CleanedUtf8(TextOf(name)));
    const auto length = static_cast<std::size_t>(end - name.begin());
    const std::u16string units = Unpack(name.first(length), name.subspan(length + 1));
    const std::string unpacked = base::Utf8FromUtf16(std::u16string_view(units).substr(0, units.find(u'\0')));
    return unpacked.empty() ? PlainName(name) : WithBackslashes(unpacked);
}

} // namespace rar
