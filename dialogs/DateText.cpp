#include "DateText.h"

#include <QDateTime>
#include <QLocale>

#include <cstdio>

namespace dialogs {
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

} // namespace

QString GeneralDateText(const platform::SystemTime& time) {
    static const Patterns patterns;
    const QTime clock(time.hour, time.minute, time.second);
    QString text = patterns.locale.toString(QDate(time.year, time.month, time.day), patterns.date);
    if (clock.isValid() && clock != QTime(0, 0))
        text += QLatin1Char(' ') + patterns.locale.toString(clock, patterns.time);
    return text;
}

std::string SortDateText(const platform::SystemTime& time) {
    char text[64];
    std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d", time.year, time.month, time.day, time.hour,
                  time.minute, time.second);
    return text;
}

} // namespace dialogs
