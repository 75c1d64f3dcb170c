#include <Zelmar01/data/Query.h>

#include "SqlFields.h"

#include <Zelmar01/core/Translation.h>
#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/data/SqlText.h>

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlIndex>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace Zelmar01 {

namespace {

constexpr QLatin1String comma(", ");

// A table's name as Qt's driver looks it up. That of PostgreSQL does not fold the names without quotes, as
// its server does, and that of ODBC does unless it sees quotes.
QString lookupName(const QString &written, const QSqlDatabase &database)
{
    const auto driver = database.driverName();
    QStringList names;
    for (const auto &part : PartsOfName(written)) {
        if (driver == u"QPSQL")
            names << (part.Quoted ? part.Text : part.Text.toLower());
        else if (driver == u"QSQLITE" || !part.Quoted)
            names << part.Text;
        else
            names << database.driver()->escapeIdentifier(part.Text, QSqlDriver::TableName);
    }
    return names.join(u'.');
}

QStringList namesOf(const TFieldDefs &defs)
{
    QStringList names;
    for (const auto &def : defs)
        names << def.Name;
    return names;
}

} // namespace

TQuery::TQuery(QObject *owner, TConnection *connection) : TDataSet(owner), m_connection(connection) {}

void TQuery::setConnection(TConnection *connection)
{
    Close();
    m_connection = connection;
    m_target.reset();
}

void TQuery::setCommandText(const QString &text)
{
    Close();
    m_commandText = text;
    m_target.reset();
}

TConnection &TQuery::RequireConnection() const
{
    if (!m_connection)
        throw EDatabaseError(tr("La requête « %1 » n'a pas de connexion").arg(objectName()).toStdString());
    return *m_connection;
}

void TQuery::Reopen(const QString &commandText)
{
    if (Active())
        leaveRecord();
    auto answer = ask(commandText);
    setCommandText(commandText);
    m_answer = std::move(answer);
    Open();
}

TQuery::TAnswer TQuery::ask(const QString &commandText)
{
    auto &connection = RequireConnection();
    TAnswer answer;
    auto &defs = answer.Defs;
    auto &rows = answer.Rows;
    const auto begin = [&](const QSqlQuery &query) {
        defs = FieldDefsOf(query.record(), connection.Database());
        rows = std::make_unique<TRows>(defs);
    };
    const auto take = [&](const QSqlQuery &query) {
        for (std::size_t field = 0; field < defs.size(); ++field)
            AppendFromDriver(rows->MutableColumn(field), defs[field], query.value(static_cast<int>(field)));
        rows->RowDone();
    };
    try {
        connection.read(commandText, m_params, begin, take);
    } catch (const EConvertError &error) {
        throw EDatabaseError(Filled(Translate("Zelmar01", "Ligne %1 : %2"),
                                    {std::to_string(rows->Count() + 1), error.what()}));
    }
    return answer;
}

TFieldDefs TQuery::readRows(std::unique_ptr<TRows> &rows)
{
    auto answer = m_answer ? *std::exchange(m_answer, std::nullopt) : ask(m_commandText);
    // The table may have got its key, or other columns, since the query was last open.
    if (m_target && (m_target->Table.isEmpty() || m_target->Fields != namesOf(answer.Defs)))
        m_target.reset();
    rows = std::move(answer.Rows);
    return std::move(answer.Defs);
}

const TQuery::TTarget &TQuery::target() const
{
    if (!m_target || !m_target->IsKnown)
        m_target = findTarget();
    return *m_target;
}

TQuery::TTarget TQuery::findTarget() const
{
    TTarget target;
    const QString table = m_tableName.isEmpty() ? SingleTableOf(m_commandText) : m_tableName;
    if (table.isEmpty() || !m_connection)
        return target;
    const auto name = lookupName(table, m_connection->Database());
    const auto columns = m_connection->Database().record(name);
    target.IsKnown = !columns.isEmpty();
    if (!target.IsKnown) {
        m_connection->requireAlive({});
        return target;
    }
    QStringList keys = m_keyFields.split(u';', Qt::SkipEmptyParts);
    if (keys.isEmpty()) {
        // A question that fails looks like a table without a key: it is asked again.
        auto primary = m_connection->Database().primaryIndex(name);
        if (primary.isEmpty())
            primary = m_connection->Database().primaryIndex(name);
        if (primary.isEmpty())
            m_connection->requireAlive({});
        for (int i = 0; i < primary.count(); ++i)
            keys << primary.fieldName(i);
    }
    for (const auto &key : keys) {
        const auto *field = FindField(key.trimmed());
        if (!field)
            return target; // the key is not shown
        target.Keys.push_back(field->Index());
    }
    for (int i = 0; i < Fields().Count(); ++i) {
        target.Fields << Fields()[i].FieldName();
        target.InTable.push_back(columns.contains(target.Fields.back()));
    }
    if (!target.Keys.empty())
        target.Table = table;
    return target;
}

bool TQuery::CanModify() const
{
    return !target().Table.isEmpty();
}

QString TQuery::quoted(const QString &name) const
{
    return m_connection->Database().driver()->escapeIdentifier(name, QSqlDriver::FieldName);
}

QString TQuery::condition(const TRecord &record, QVariantList &values) const
{
    QStringList terms;
    for (const int key : target().Keys) {
        const auto &value = record[static_cast<std::size_t>(key)];
        terms << quoted(Fields()[key].FieldName()) +
                     (value.isValid() ? QStringLiteral(" = ?") : QStringLiteral(" is null"));
        if (value.isValid())
            values << value;
    }
    return QStringLiteral(" where ") + terms.join(QStringLiteral(" and "));
}

// Whether a record's key is that of one row. One that the host has named need not be, nor one with a null.
bool TQuery::isOneRow(const TRecord &record) const
{
    return m_keyFields.isEmpty() && std::all_of(target().Keys.begin(), target().Keys.end(), [&](int key) {
               return record[static_cast<std::size_t>(key)].isValid();
           });
}

void TQuery::write(const QString &sql, const QVariantList &values, bool isOneRow)
{
    std::optional<TTransaction> whole; // undoes what was done to more than one
    if (!isOneRow)
        whole.emplace(*m_connection);
    if (const int touched = m_connection->Execute(sql, values); touched >= 0 && touched != 1)
        throw EDatabaseError(tr("La ligne a été modifiée ou supprimée par un autre poste").toStdString());
    if (whole)
        whole->Commit();
}

void TQuery::writeInsert(TRecord &record)
{
    QStringList names, places;
    QVariantList values;
    for (int i = 0; i < Fields().Count(); ++i) {
        const auto &value = record[static_cast<std::size_t>(i)];
        if (!value.isValid() || !target().InTable[static_cast<std::size_t>(i)])
            continue; // the table's own default serves
        names << quoted(Fields()[i].FieldName());
        places << QStringLiteral("?");
        values << value;
    }
    write("insert into " + target().Table +
              (names.isEmpty() ? QStringLiteral(" default values")
                               : " (" + names.join(comma) + ") values (" + places.join(comma) + ")"),
          values, true);
}

void TQuery::writeUpdate(const TRecord &before, TRecord &record)
{
    QStringList changes;
    QVariantList values;
    for (int i = 0; i < Fields().Count(); ++i) {
        const auto field = static_cast<std::size_t>(i);
        if (record[field] == before[field] || !target().InTable[field])
            continue;
        changes << quoted(Fields()[i].FieldName()) +
                       (record[field].isValid() ? QStringLiteral(" = ?") : QStringLiteral(" = null"));
        if (record[field].isValid())
            values << record[field];
    }
    if (changes.isEmpty())
        return;
    const auto where = condition(before, values);
    write("update " + target().Table + " set " + changes.join(comma) + where, values, isOneRow(before));
}

void TQuery::writeDelete(const TRecord &record)
{
    QVariantList values;
    const auto where = condition(record, values);
    write("delete from " + target().Table + where, values, isOneRow(record));
}

} // namespace Zelmar01
