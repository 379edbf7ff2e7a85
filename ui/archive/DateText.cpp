#include "ui/archive/DateText.h"

#include <QDateTime>
#include <QLocale>

#include <cstdio>

namespace ui {
namespace {

/// The user's patterns, worked out once: a list asks for thousands of dates.
struct Patterns {
    QLocale locale = QLocale::system();
    QString date = locale.dateFormat(QLocale::ShortFormat);
    QString time = locale.timeFormat(QLocale::ShortFormat);

    Patterns() {
        if (!date.contains(QLatin1String("yyyy")))
            date.replace(QLatin1String("yy"), QLatin1String("yyyy"));
        if (!time.contains(QLatin1String("ss")))
            time.replace(QLatin1String("mm"), QLatin1String("mm:ss"));
    }
};

const Patterns& UserPatterns() {
    static const Patterns patterns;
    return patterns;
}

} // namespace

QString DateAndTimeText(const platform::SystemTime& time) {
    const Patterns& patterns = UserPatterns();
    return patterns.locale.toString(QDate(time.year, time.month, time.day), patterns.date) +
           QLatin1Char(' ') +
           patterns.locale.toString(QTime(time.hour, time.minute, time.second), patterns.time);
}

QString GeneralDateText(const platform::SystemTime& time) {
    if (QTime::isValid(time.hour, time.minute, time.second) && time.hour + time.minute + time.second > 0)
        return DateAndTimeText(time);
    const Patterns& patterns = UserPatterns();
    return patterns.locale.toString(QDate(time.year, time.month, time.day), patterns.date);
}

std::string SortDateText(const platform::SystemTime& time) {
    char text[64];
    std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d", time.year, time.month, time.day, time.hour,
                  time.minute, time.second);
    return text;
}

} // namespace ui
