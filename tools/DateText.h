#pragma once

#include "platform/Times.h"

#include <string>

namespace tools {

/// A date and time as the probe writes it: "2024-02-29 13:05:58".
inline std::string DateText(const platform::SystemTime& when) {
    std::string text = "yyyy-mm-dd hh:mm:ss";
    char* at = text.data();
    const auto put = [&at](int value, int width) {
        for (int i = width - 1; i >= 0; --i, value /= 10)
            at[i] = static_cast<char>('0' + value % 10);
        at += width + 1;
    };
    put(when.year, 4);
    for (const int field : {when.month, when.day, when.hour, when.minute, when.second})
        put(field, 2);
    return text;
}

} // namespace tools
