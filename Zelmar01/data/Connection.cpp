#include <Zelmar01/data/Connection.h>

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/data/Decimal.h>
#include <Zelmar01/data/SqlText.h>

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QTimeZone>
#include <QUuid>

#include <algorithm>
#include <limits>

namespace Zelmar01 {

namespace {

// Decimals travel as their text, which every engine reads without a binary fraction. A null is given a type,
// since ODBC asks for one; a text that holds nothing is not a null, as Qt would have it.
QVariant bound(const QVariant &value)
{
    if (value.userType() == qMetaTypeId<TDecimal>())
        return value.value<TDecimal>().ToText();
    if (!value.isValid())
        return QVariant(QMetaType::fromType<QString>());
    if (value.userType() == QMetaType::QString && !value.isNull() && value.toString().isNull())
        return QStringLiteral("");
    return value;
}

// 0 stays 0: no limit.
int milliseconds(int seconds)
{
    return std::clamp(seconds, 0, std::numeric_limits<int>::max() / 1000) * 1000;
}

QString connectOptions(const QString &driver, int timeout)
{
    // A line that was cut without a word is noticed within two minutes.
    if (driver == u"QPSQL")
        return QStringLiteral("connect_timeout=%1;keepalives_idle=60;keepalives_interval=10;"
                              "keepalives_count=6")
            .arg(timeout);
    if (driver == u"QODBC")
        return QStringLiteral("SQL_ATTR_LOGIN_TIMEOUT=%1").arg(timeout);
    return {};
}

QString savepoint(int depth)
{
    return QStringLiteral("zelmar01_%1").arg(depth);
}

} // namespace

TConnection::TConnection(QObject *owner) : TComponent(owner) {}

TConnection::~TConnection()
{
    Close();
}

void TConnection::setCommandTimeout(int seconds)
{
    m_commandTimeout = seconds;
    if (Connected())
        applyTimeout();
}

void TConnection::Open()
{
    if (m_rolledBack)
        throw EDatabaseError(tr("La base de données a annulé la transaction").toStdString(), *m_rolledBack);
    if (Connected())
        return;
    if (InTransaction())
        throw EDatabaseUnreachable(
            tr("La transaction a été perdue avec la connexion à la base de données").toStdString());
    Close();
    m_connectionName = QUuid::createUuid().toString(QUuid::WithoutBraces);
    QSqlError error;
    {
        auto database = QSqlDatabase::addDatabase(m_driverName, m_connectionName);
        database.setDatabaseName(m_databaseName);
        database.setHostName(m_hostName);
        database.setPort(m_port);
        database.setUserName(m_userName);
        database.setPassword(m_password);
        database.setConnectOptions(connectOptions(m_driverName, m_connectionTimeout));
        if (!database.open())
            error = database.lastError();
    }
    if (error.isValid()) {
        Close();
        throw EDatabaseUnreachable(
            tr("La base de données « %1 » est inaccessible").arg(m_databaseName).toStdString(),
            {0, error.text().toStdString(), {}});
    }
    try {
        applyTimeZone();
        applyTimeout();
    } catch (...) {
        Close();
        throw;
    }
}

void TConnection::Close()
{
    if (m_connectionName.isEmpty())
        return;
    if (handle().driverName() == u"QODBC")
        m_prepared.reset();
    handle().close();
    QSqlDatabase::removeDatabase(m_connectionName);
    m_connectionName.clear();
    m_prepared.reset(); // without a word to a server that may have gone
}

bool TConnection::Connected() const
{
    return !m_connectionName.isEmpty() && handle().isOpen();
}

QSqlDatabase TConnection::Database()
{
    Open();
    return handle();
}

TEngine TConnection::Engine()
{
    switch (Database().driver()->dbmsType()) {
    case QSqlDriver::SQLite:
        return enSQLite;
    case QSqlDriver::PostgreSQL:
        return enPostgreSQL;
    case QSqlDriver::MSSqlServer:
        return enSQLServer;
    default:
        return enOther;
    }
}

QString TConnection::ServerText(const QString &sql)
{
    return Engine() == enSQLServer ? sql : WithoutTableHints(sql);
}

int TConnection::Execute(const QString &sql, const QVariantList &values)
{
    const bool isPrepared = m_prepared && !values.isEmpty() && m_preparedSql == sql;
    // Outlives the guard: PostgreSQL frees a prepared statement only once the error is rolled back.
    auto query = isPrepared ? std::move(m_prepared) : std::make_unique<QSqlQuery>(Database());
    auto whole = guard();
    run(*query, sql, values, isPrepared);
    if (whole)
        whole->Commit();
    const int touched = query->numRowsAffected();
    if (InTransaction() && !values.isEmpty()) {
        query->finish();
        m_prepared = std::move(query);
        m_preparedSql = sql;
    }
    return touched;
}

// Without values nothing is prepared: that would cost PostgreSQL two more round trips, and it prepares only
// some of its commands.
void TConnection::run(QSqlQuery &query, const QString &sql, const QVariantList &values, bool isPrepared)
{
    const auto text = isPrepared ? query.lastQuery() : ServerText(sql);
    emit OnCommand(sql, text);
    bool done = values.isEmpty() ? query.exec(text) : isPrepared || query.prepare(text);
    if (done && !values.isEmpty()) {
        for (const auto &value : values)
            query.addBindValue(bound(value));
        done = query.exec();
    }
    if (!done)
        fail(query);
}

void TConnection::ReadRows(const QString &sql, const std::function<void(const QSqlQuery &row)> &take)
{
    read(
        sql, {}, [](const QSqlQuery &) {}, take);
}

void TConnection::read(const QString &sql, const QVariantList &values, const TRowReader &begin,
                       const TRowReader &row)
{
    QSqlQuery query(Database());
    query.setForwardOnly(true);
    query.setNumericalPrecisionPolicy(QSql::HighPrecision);
    auto whole = guard();
    run(query, sql, values);
    begin(query);
    while (query.next())
        row(query);
    if (query.lastError().isValid())
        fail(query);
    if (whole)
        whole->Commit();
}

// After an error PostgreSQL refuses the rest of a transaction, where the other engines go on: there a
// statement gets a savepoint of its own.
std::optional<TTransaction> TConnection::guard()
{
    if (!InTransaction() || Engine() != enPostgreSQL)
        return std::nullopt;
    return std::optional<TTransaction>(std::in_place, *this);
}

// ODBC frees a statement only as long as its connection is there.
void TConnection::fail(QSqlQuery &query)
{
    const auto error = query.lastError();
    if (handle().driverName() == u"QODBC")
        query.clear();
    refuse(error);
}

// Qt complains when a connection is closed while a copy of its handle is about.
void TConnection::failOfHandle()
{
    const auto error = handle().lastError();
    refuse(error);
}

void TConnection::refuse(const QSqlError &error)
{
    requireAlive(error);
    const TSystemCause cause{0, error.text().toStdString(), {}};
    if (isRolledBack()) {
        m_rolledBack = cause;
        m_prepared.reset();
    }
    throw EDatabaseError(tr("La base de données a refusé l'opération").toStdString(), cause);
}

// SQLite does not say so, and would keep whatever follows. It begins no transaction inside another.
bool TConnection::isRolledBack() const
{
    return InTransaction() && handle().driverName() == u"QSQLITE" && tell(QStringLiteral("begin")) &&
           tell(QStringLiteral("rollback"));
}

void TConnection::requireAlive(const QSqlError &error)
{
    if (!isLost())
        return;
    Close();
    throw EDatabaseUnreachable(tr("La connexion à la base de données est perdue").toStdString(),
                               {0, error.text().toStdString(), {}});
}

// Qt knows when PostgreSQL has gone, and a file does not go. Other drivers say that they are open: they are
// asked something.
bool TConnection::isLost() const
{
    const auto driver = handle().driverName();
    const bool knows = driver == u"QPSQL" || driver == u"QSQLITE";
    return !Connected() || (!knows && !tell(QStringLiteral("select 1")));
}

bool TConnection::tell(const QString &sql) const
{
    return QSqlQuery(handle()).exec(sql);
}

void TConnection::begin()
{
    if (m_depth == 0) {
        if (!Database().transaction())
            failOfHandle();
    } else {
        QSqlQuery query(Database());
        const auto name = savepoint(m_depth);
        run(query, Engine() == enSQLServer ? "save transaction " + name : "savepoint " + name, {});
    }
    ++m_depth;
}

void TConnection::commit()
{
    if (m_depth == 1) {
        if (!Database().commit())
            failOfHandle();
        m_prepared.reset();
    } else if (Engine() != enSQLServer) {
        QSqlQuery query(Database());
        run(query, "release savepoint " + savepoint(m_depth - 1), {});
    }
    --m_depth;
}

// Nobody is told of a failure: it means that the server has gone, and the transaction with it, or that the
// engine has rolled back by itself.
void TConnection::rollback()
{
    --m_depth;
    const bool isOver = !Connected() || m_rolledBack;
    if (m_depth == 0)
        m_rolledBack.reset();
    if (isOver)
        return;
    bool done = false;
    if (m_depth == 0)
        done = handle().rollback();
    else if (const auto name = savepoint(m_depth); Engine() == enSQLServer)
        done = tell("rollback transaction " + name);
    else
        done = tell("rollback to savepoint " + name) && tell("release savepoint " + name);
    if (!done && isLost())
        Close();
    else if (m_depth == 0)
        m_prepared.reset();
}

// Moments without a time zone, as tables have them, are those of the clock on the wall here.
void TConnection::applyTimeZone()
{
    if (Engine() == enPostgreSQL)
        Execute(QStringLiteral("set time zone '%1'").arg(QString::fromLatin1(QTimeZone::systemTimeZoneId())));
}

void TConnection::applyTimeout()
{
    const int limit = milliseconds(m_commandTimeout);
    if (Engine() == enPostgreSQL)
        Execute(QStringLiteral("set statement_timeout = %1").arg(limit));
    else if (Engine() == enSQLite) // where 0 is not to wait at all
        Execute(
            QStringLiteral("pragma busy_timeout = %1").arg(limit ? limit : std::numeric_limits<int>::max()));
}

TTransaction::~TTransaction()
{
    if (m_open)
        m_connection.rollback();
}

void TTransaction::Commit()
{
    m_connection.commit();
    m_open = false;
}

} // namespace Zelmar01
