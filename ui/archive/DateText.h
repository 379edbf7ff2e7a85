#pragma once

#include "platform/Times.h"

#include <QString>

namespace ui {

/// A date and time in the user's general date format: short date with the year in full, time to the second;
/// the time is left out at midnight.
QString GeneralDateText(const platform::SystemTime& time);

/// The same with the time also at midnight.
QString DateAndTimeText(const platform::SystemTime& time);

/// "yyyymmddhhmmss".
std::string SortDateText(const platform::SystemTime& time);

} // namespace ui
