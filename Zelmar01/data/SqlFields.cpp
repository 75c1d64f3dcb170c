#include "SqlFields.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/data/Field.h>

#include <QHash>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>

namespace Zelmar01 {

namespace {

// The drivers' own numbers of types, where Qt's are too coarse: exact decimals, which Qt takes for floating
// point, and texts whose length is that of the column and not of the driver's buffer.
namespace postgres {
constexpr int numeric = 1700, blankPaddedChar = 1042, varChar = 1043;
}
namespace odbc {
constexpr int numeric = 2, decimal = 3, bit = -7;
constexpr int charType = 1, varChar = 12, wideChar = -8, wideVarChar = -9;
} // namespace odbc

struct TDeclaredType
{
    QLatin1String Begin;
    TFieldType Type;
};

// SQLite keeps the type with which a column was declared as a text, and no other.
const TDeclaredType declaredTypes[] = {
    {QLatin1String("dec"), ftBCD},           {QLatin1String("numeric"), ftBCD},
    {QLatin1String("money"), ftBCD},         {QLatin1String("int"), ftInteger},
    {QLatin1String("bigint"), ftInteger},    {QLatin1String("smallint"), ftInteger},
    {QLatin1String("tinyint"), ftInteger},   {QLatin1String("bool"), ftBoolean},
    {QLatin1String("datetime"), ftDateTime}, {QLatin1String("timestamp"), ftDateTime},
    {QLatin1String("date"), ftDate},         {QLatin1String("time"), ftTime},
    {QLatin1String("real"), ftFloat},        {QLatin1String("double"), ftFloat},
    {QLatin1String("float"), ftFloat},       {QLatin1String("blob"), ftBytes},
};

TFieldType typeOfMetaType(int type)
{
    switch (type) {
    case QMetaType::Bool:
        return ftBoolean;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return ftInteger;
    case QMetaType::Double:
    case QMetaType::Float:
        return ftFloat;
    case QMetaType::QDate:
        return ftDate;
    case QMetaType::QTime:
        return ftTime;
    case QMetaType::QDateTime:
        return ftDateTime;
    case QMetaType::QByteArray:
        return ftBytes;
    default:
        return ftString;
    }
}

// The number in brackets behind a declared type: VARCHAR(40) has 40, DECIMAL(10,2) has 10 and 2.
int declaredNumber(const QString &declared, int place)
{
    const auto inside = declared.mid(declared.indexOf(u'(') + 1).section(u')', 0, 0);
    bool ok = false;
    const int number = inside.section(u',', place, place).trimmed().toInt(&ok);
    return declared.contains(u'(') && ok ? number : -1;
}

void declare(TFieldDef &def, const QString &declared)
{
    for (const auto &type : declaredTypes)
        if (declared.startsWith(type.Begin, Qt::CaseInsensitive)) {
            def.DataType = type.Type;
            def.Size = type.Type == ftBCD ? declaredNumber(declared, 1) : 0;
            return;
        }
    def.DataType = ftString;
    def.Size = std::max(declaredNumber(declared, 0), 0);
}

// The declared types of a table's columns, by their names in lower case.
using TDeclarations = QHash<QString, QString>;

TDeclarations declaredInSqlite(const QSqlDatabase &database, const QString &table)
{
    TDeclarations types;
    QSqlQuery query(database);
    query.exec(QStringLiteral("pragma table_info(%1)")
                   .arg(database.driver()->escapeIdentifier(table, QSqlDriver::TableName)));
    while (query.next())
        types.insert(query.value(1).toString().toLower(), query.value(2).toString());
    return types;
}

// A computed number has more decimals than any that is kept.
TFieldDef decimalDef(const QSqlField &field)
{
    return {field.name(), ftBCD, field.precision() <= TDecimal::MaxDecimals ? field.precision() : -1, false,
            false};
}

TFieldDef fromPostgres(TFieldDef def, const QSqlField &field)
{
    if (field.typeID() == postgres::numeric)
        return decimalDef(field);
    if (field.typeID() == postgres::varChar || field.typeID() == postgres::blankPaddedChar)
        def.Size = std::max(field.length(), 0);
    return def;
}

TFieldDef fromOdbc(TFieldDef def, const QSqlField &field)
{
    switch (field.typeID()) {
    case odbc::numeric:
    case odbc::decimal:
        return decimalDef(field);
    case odbc::bit:
        def.DataType = ftBoolean;
        break;
    case odbc::charType:
    case odbc::varChar:
    case odbc::wideChar:
    case odbc::wideVarChar:
        def.Size = std::max(field.length(), 0);
        break;
    default:
        break;
    }
    return def;
}

// What an engine computes, such as an average, may have more digits than a decimal. The last ones are rounded
// off as long as they are not among those that the column itself has.
std::optional<TDecimal> withoutTail(const QString &text, int wantedDecimals)
{
    const auto point = text.indexOf(u'.');
    const auto sign = text.startsWith(u'-') ? 1 : 0;
    const auto decimals = TDecimal::MaxDecimals - (point - sign);
    if (point < 0 || decimals <= std::max(wantedDecimals, 0))
        return std::nullopt;
    const auto cut = TDecimal::FromText(QStringView(text).left(point + 1 + decimals));
    return cut ? cut->Rounded(cut->Decimals() - 1) : std::nullopt;
}

// A decimal is shown with the decimals of its column; digits beyond them stay.
TDecimal decimalFor(const TFieldDef &def, const QVariant &value)
{
    if (value.userType() == QMetaType::Double && def.Size >= 0) // SQLite's
        if (const auto number = TDecimal::FromFraction(value.toDouble(), def.Size))
            return *number;
    std::optional<TDecimal> number;
    if (value.userType() == QMetaType::QString) {
        const auto text = value.toString();
        number = TDecimal::FromText(text);
        if (!number)
            number = withoutTail(text, def.Size);
    }
    if (!number)
        number = ConvertValue(value, ftBCD, def.Name).value<TDecimal>();
    return number->Decimals() < def.Size ? number->Rounded(def.Size).value_or(*number) : *number;
}

} // namespace

TFieldDefs FieldDefsOf(const QSqlRecord &record, const QSqlDatabase &database)
{
    const auto driver = database.driverName();
    QHash<QString, TDeclarations> tables;
    TFieldDefs defs;
    for (int i = 0; i < record.count(); ++i) {
        const auto field = record.field(i);
        TFieldDef def{field.name(), typeOfMetaType(field.metaType().id()), 0, false, false};
        if (driver == u"QPSQL") {
            def = fromPostgres(std::move(def), field);
        } else if (driver == u"QODBC") {
            def = fromOdbc(std::move(def), field);
        } else if (driver == u"QSQLITE" && !field.tableName().isEmpty()) {
            auto table = tables.find(field.tableName());
            if (table == tables.end())
                table = tables.insert(field.tableName(), declaredInSqlite(database, field.tableName()));
            if (const auto declared = table->constFind(def.Name.toLower()); declared != table->cend())
                declare(def, *declared);
        }
        defs.push_back(std::move(def));
    }
    return defs;
}

void AppendFromDriver(TColumn &column, const TFieldDef &def, QVariant &&value)
{
    if (value.isNull())
        column.Append({});
    else if (def.DataType == ftString && value.userType() == QMetaType::QString)
        column.Add(std::move(*static_cast<QString *>(value.data()))); // by far the most of the work
    else if (def.DataType == ftBCD)
        column.Add(decimalFor(def, value));
    else if (def.DataType == ftInteger && value.userType() == QMetaType::LongLong)
        column.Add<qint64>(value.toLongLong());
    else
        column.Append(ConvertValue(value, def.DataType, def.Name));
}

} // namespace Zelmar01
