#include <Zelmar01/data/binding/FieldText.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/data/binding/AmountText.h>
#include <Zelmar01/data/binding/DateText.h>

#include <QCoreApplication>

namespace Zelmar01 {

namespace {

QString timeText(QTime time)
{
    return time.toString(time.second() ? QStringLiteral("HH:mm:ss") : QStringLiteral("HH:mm"));
}

QString yesOrNo(bool value)
{
    return value ? QCoreApplication::translate("Zelmar01", "Oui")
                 : QCoreApplication::translate("Zelmar01", "Non");
}

// "28/02/2026 13:45", and the day alone.
QDateTime momentOf(const QString &text, const QLocale &locale)
{
    const auto pattern = DatePattern(locale);
    const auto blank = text.trimmed().lastIndexOf(u' ');
    const auto time = ParseTime(text.trimmed().mid(blank + 1));
    const auto date =
        ParseDate(time ? text.trimmed().left(blank) : text.trimmed(), pattern, QDate::currentDate());
    return date ? QDateTime(*date, time.value_or(QTime(0, 0))) : QDateTime();
}

template<class T>
QVariant held(const std::optional<T> &value)
{
    return value ? QVariant::fromValue(*value) : QVariant();
}

QVariant parsed(const QString &text, TFieldType type, const QLocale &locale)
{
    switch (type) {
    case ftBCD:
        return held(ParseAmount(text, locale));
    case ftInteger:
    case ftFloat:
        // A number beyond the digits of an amount is for the field's type to judge.
        if (const auto number = ParseAmount(text, locale))
            return ConvertValue(QVariant::fromValue(*number), type, QString());
        return ConvertValue(text, type, QString());
    case ftDate:
        return held(ParseDate(text, DatePattern(locale), QDate::currentDate()));
    case ftTime:
        return held(ParseTime(text));
    case ftDateTime:
        return momentOf(text, locale).isValid() ? QVariant(momentOf(text, locale)) : QVariant();
    case ftBoolean:
        if (text.compare(yesOrNo(true), Qt::CaseInsensitive) == 0)
            return true;
        if (text.compare(yesOrNo(false), Qt::CaseInsensitive) == 0)
            return false;
        return ConvertValue(text, type, QString());
    default:
        return ConvertValue(text, type, QString());
    }
}

} // namespace

QString FieldTextOf(const QVariant &value, TFieldType type, const QLocale &locale)
{
    if (!value.isValid())
        return {};
    switch (type) {
    case ftBCD:
        return FormatAmount(value.value<TDecimal>(), QString(), locale);
    case ftFloat: {
        auto plain = locale;
        plain.setNumberOptions(QLocale::OmitGroupSeparator);
        return plain.toString(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    }
    case ftDate:
        return value.toDate().toString(DatePattern(locale));
    case ftTime:
        return timeText(value.toTime());
    case ftDateTime:
        return value.toDateTime().date().toString(DatePattern(locale)) + u' ' +
               timeText(value.toDateTime().time());
    case ftBoolean:
        return yesOrNo(value.toBool());
    default:
        return TextOfValue(value);
    }
}

QVariant FieldValueOf(const QString &text, TFieldType type, const QLocale &locale)
{
    if (text.isEmpty() || (type != ftString && text.trimmed().isEmpty()))
        return {};
    QVariant value;
    try {
        value = parsed(text, type, locale);
    } catch (const EConvertError &) {
        value = {}; // told below, in words that need no field
    }
    if (!value.isValid())
        throw EConvertError(
            Filled(Translate("Zelmar01", "« %1 » n'est pas une valeur pour ce champ"), {text.toStdString()}));
    return value;
}

} // namespace Zelmar01
