#include <Zelmar01/data/Field.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/data/DataSet.h>

#include <cmath>

namespace Zelmar01 {

namespace {

std::optional<qint64> toInteger(const QVariant &value)
{
    bool ok = false;
    qint64 number = 0;
    switch (value.userType()) {
    case QMetaType::QString:
        number = value.toString().trimmed().toLongLong(&ok);
        break;
    case QMetaType::ULongLong:
        number = static_cast<qint64>(value.toULongLong());
        ok = number >= 0;
        break;
    case QMetaType::Double:
    case QMetaType::Float:
        if (const double real = value.toDouble(); real == std::trunc(real) && std::abs(real) < 9.2e18) {
            number = static_cast<qint64>(real);
            ok = true;
        }
        break;
    default:
        if (value.userType() == qMetaTypeId<TDecimal>()) {
            const auto decimal = value.value<TDecimal>();
            const auto whole = decimal.Rounded(0);
            ok = whole && *whole == decimal;
            number = whole ? whole->Unscaled() : 0;
        } else {
            number = value.toLongLong(&ok);
        }
    }
    return ok ? std::optional(number) : std::nullopt;
}

std::optional<TDecimal> toDecimal(const QVariant &value)
{
    if (value.userType() == qMetaTypeId<TDecimal>())
        return value.value<TDecimal>();
    if (value.userType() == QMetaType::Double || value.userType() == QMetaType::Float)
        return TDecimal::FromText(QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest));
    return TDecimal::FromText(value.toString().trimmed());
}

std::optional<double> toFloat(const QVariant &value)
{
    if (value.userType() == qMetaTypeId<TDecimal>())
        return value.value<TDecimal>().ToDouble();
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

std::optional<bool> toBoolean(const QVariant &value)
{
    if (value.userType() == QMetaType::Bool)
        return value.toBool();
    const auto text = value.toString().trimmed();
    if (text == u"1" || text.compare(u"true", Qt::CaseInsensitive) == 0)
        return true;
    if (text == u"0" || text.compare(u"false", Qt::CaseInsensitive) == 0)
        return false;
    return std::nullopt;
}

QDateTime toDateTime(const QVariant &value)
{
    if (value.userType() != QMetaType::QString)
        return value.toDateTime();
    return QDateTime::fromString(value.toString().trimmed().replace(u' ', u'T'), Qt::ISODateWithMs);
}

// A date may come as a moment, as some databases return it.
QDate toDate(const QVariant &value)
{
    if (value.userType() != QMetaType::QString)
        return value.toDate();
    return QDate::fromString(value.toString().trimmed().left(10), Qt::ISODate);
}

QTime toTime(const QVariant &value)
{
    if (value.userType() != QMetaType::QString)
        return value.toTime();
    return QTime::fromString(value.toString().trimmed(), Qt::ISODateWithMs);
}

template<class T>
QVariant valid(const T &value)
{
    return value.isValid() ? QVariant(value) : QVariant();
}

template<class T>
QVariant held(const std::optional<T> &value)
{
    return value ? QVariant::fromValue(*value) : QVariant();
}

bool hasType(const QVariant &value, TFieldType type)
{
    switch (value.userType()) {
    case QMetaType::QString:
        return type == ftString;
    case QMetaType::LongLong:
        return type == ftInteger;
    case QMetaType::Double:
        return type == ftFloat;
    case QMetaType::Bool:
        return type == ftBoolean;
    case QMetaType::QByteArray:
        return type == ftBytes;
    default:
        return false;
    }
}

QVariant converted(const QVariant &value, TFieldType type)
{
    if (hasType(value, type))
        return value;
    switch (type) {
    case ftString:
        return TextOfValue(value);
    case ftInteger:
        return held(toInteger(value));
    case ftFloat:
        return held(toFloat(value));
    case ftBCD:
        return held(toDecimal(value));
    case ftBoolean:
        return held(toBoolean(value));
    case ftDate:
        return valid(toDate(value));
    case ftTime:
        return valid(toTime(value));
    case ftDateTime:
        return valid(toDateTime(value));
    case ftBytes:
        return value.toByteArray();
    }
    return {};
}

} // namespace

QVariant ConvertValue(const QVariant &value, TFieldType type, const QString &field)
{
    if (value.isNull())
        return {};
    auto result = converted(value, type);
    if (!result.isValid())
        throw EConvertError(Filled(Translate("Zelmar01", "« %1 » n'est pas une valeur pour le champ « %2 »"),
                                   {TextOfValue(value).toStdString(), field.toStdString()}));
    return result;
}

QString TextOfValue(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QTime:
        return value.toTime().toString(value.toTime().msec() ? Qt::ISODateWithMs : Qt::ISODate);
    case QMetaType::QDateTime:
        return value.toDateTime().toString(value.toDateTime().time().msec() ? Qt::ISODateWithMs
                                                                            : Qt::ISODate);
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    default:
        return value.userType() == qMetaTypeId<TDecimal>() ? value.value<TDecimal>().ToText()
                                                           : value.toString();
    }
}

TField::TField(TDataSet &dataSet, int index, TFieldDef def)
    : m_dataSet(dataSet), m_index(index), m_def(std::move(def))
{
}

QVariant TField::Value() const
{
    return m_dataSet.fieldValue(m_index);
}

void TField::setValue(const QVariant &value)
{
    if (ReadOnly())
        throw EDatabaseError(Filled(Translate("Zelmar01", "Le champ « %1 » ne peut pas être modifié"),
                                    {FieldName().toStdString()}));
    m_dataSet.setFieldValue(*this, Converted(value));
}

QVariant TField::Converted(const QVariant &value) const
{
    auto result = ConvertValue(value, DataType(), FieldName());
    if (DataType() == ftString && Size() > 0 && result.toString().size() > Size())
        throw EDatabaseError(Filled(Translate("Zelmar01", "Le texte du champ « %1 » dépasse %2 caractères"),
                                    {FieldName().toStdString(), std::to_string(Size())}));
    if (DataType() == ftBCD && Size() >= 0 && result.isValid()) {
        const auto rounded = result.value<TDecimal>().Rounded(Size());
        if (!rounded)
            throw EConvertError(Filled(Translate("Zelmar01", "Nombre trop grand pour le champ « %1 »"),
                                       {FieldName().toStdString()}));
        result = QVariant::fromValue(*rounded);
    }
    return result;
}

QString TField::AsString() const
{
    return m_dataSet.fieldText(m_index);
}

qint64 TField::AsInteger() const
{
    return ConvertValue(Value(), ftInteger, FieldName()).toLongLong();
}

double TField::AsFloat() const
{
    return ConvertValue(Value(), ftFloat, FieldName()).toDouble();
}

TDecimal TField::AsDecimal() const
{
    return ConvertValue(Value(), ftBCD, FieldName()).value<TDecimal>();
}

bool TField::AsBoolean() const
{
    return ConvertValue(Value(), ftBoolean, FieldName()).toBool();
}

QDate TField::AsDate() const
{
    return ConvertValue(Value(), ftDate, FieldName()).toDate();
}

QTime TField::AsTime() const
{
    return ConvertValue(Value(), ftTime, FieldName()).toTime();
}

QDateTime TField::AsDateTime() const
{
    return ConvertValue(Value(), ftDateTime, FieldName()).toDateTime();
}

QByteArray TField::AsBytes() const
{
    return ConvertValue(Value(), ftBytes, FieldName()).toByteArray();
}

} // namespace Zelmar01
