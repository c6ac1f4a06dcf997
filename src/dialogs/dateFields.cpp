#include "dialogs/dateFields.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtCore/QVariant>
#include <QtWidgets/QDateTimeEdit>

namespace vm {
namespace {

QString WithCentury(QString format) {
    return format.contains(QLatin1String("yyyy"))
               ? format
               : format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
}

// What stands between hours and minutes stands before the seconds too.
QString WithSeconds(QString format) {
    const qsizetype minutes = format.indexOf(QLatin1String("mm"));
    if (minutes <= 0 || format.contains(QLatin1String("ss"))) return format;
    return format.insert(minutes + 2, format[minutes - 1] + QLatin1String("ss"));
}

// Empty for an unknown name.
QString FormatNamed(const QString& name, const QLocale& locale) {
    if (name == QLatin1String("century"))
        return WithCentury(locale.dateFormat(QLocale::ShortFormat));
    if (name == QLatin1String("long")) return locale.dateFormat(QLocale::LongFormat);
    if (name == QLatin1String("seconds"))
        return WithSeconds(locale.timeFormat(QLocale::ShortFormat));
    return {};
}

} // namespace

bool SetUpDateField(QDateTimeEdit& field) {
    if (field.property(kStartsNowProperty).toBool())
        field.setDateTime(QDateTime::currentDateTime());
    const QString name = field.property(kDateFormatProperty).toString();
    if (name.isEmpty()) return true;
    const QString format = FormatNamed(name, field.locale());
    if (!format.isEmpty()) field.setDisplayFormat(format);
    return !format.isEmpty();
}

} // namespace vm
