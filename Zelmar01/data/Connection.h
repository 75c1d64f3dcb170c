#pragma once

#include <Zelmar01/core/Component.h>
#include <Zelmar01/core/Exceptions.h>

#include <QSqlDatabase>
#include <QString>
#include <QVariantList>

#include <functional>
#include <memory>
#include <optional>

class QSqlError;
class QSqlQuery;

namespace Zelmar01 {

class TTransaction;

/// The database engines whose differences matter here.
enum TEngine { enSQLite, enPostgreSQL, enSQLServer, enOther };

/// A connection to a database through Qt's SQL drivers, which queries share. The host owns it. Errors are
/// EDatabaseError, and EDatabaseUnreachable among them.
///
/// Opening is left to the first operation that needs it. When the server has gone away the operation that
/// meets this fails, and the next one connects again; a transaction that was open is lost, and everything
/// fails until its scopes have been left. So it is when SQLite rolls a transaction back by itself, as it may
/// on a full disk.
class TConnection : public TComponent
{
    Q_OBJECT
    Q_PROPERTY(QString DriverName READ DriverName WRITE setDriverName)
    Q_PROPERTY(QString DatabaseName READ DatabaseName WRITE setDatabaseName)
    Q_PROPERTY(QString HostName READ HostName WRITE setHostName)
    Q_PROPERTY(int Port READ Port WRITE setPort)
    Q_PROPERTY(QString UserName READ UserName WRITE setUserName)
    Q_PROPERTY(QString Password READ Password WRITE setPassword)
    Q_PROPERTY(int ConnectionTimeout READ ConnectionTimeout WRITE setConnectionTimeout)
    Q_PROPERTY(int CommandTimeout READ CommandTimeout WRITE setCommandTimeout)
    Q_PROPERTY(bool Connected READ Connected WRITE setConnected STORED false)
public:
    explicit TConnection(QObject *owner = nullptr);
    ~TConnection() override;

    /// Qt's name of the driver: "QSQLITE" (the default), "QPSQL" or "QODBC". Changes of these values are used
    /// when the connection is next opened.
    QString DriverName() const { return m_driverName; }
    void setDriverName(const QString &name) { m_driverName = name; }
    /// The file of an SQLite database, the database of a server, the data source or connection string of
    /// ODBC.
    QString DatabaseName() const { return m_databaseName; }
    void setDatabaseName(const QString &name) { m_databaseName = name; }
    QString HostName() const { return m_hostName; }
    void setHostName(const QString &name) { m_hostName = name; }
    /// -1 for the engine's usual port.
    int Port() const { return m_port; }
    void setPort(int port) { m_port = port; }
    QString UserName() const { return m_userName; }
    void setUserName(const QString &name) { m_userName = name; }
    QString Password() const { return m_password; }
    void setPassword(const QString &password) { m_password = password; }

    /// How long a server may take to let us in, in seconds; 0 for no limit, 15 at first.
    int ConnectionTimeout() const { return m_connectionTimeout; }
    void setConnectionTimeout(int seconds) { m_connectionTimeout = seconds; }

    /// How long a command may take, in seconds; 0 for no limit, 30 at first. PostgreSQL ends a longer
    /// command, behind ODBC too; SQLite waits that long for another program's lock; another engine behind
    /// ODBC takes no notice.
    int CommandTimeout() const { return m_commandTimeout; }
    void setCommandTimeout(int seconds);

    void Open();
    void Close();
    bool Connected() const;
    void setConnected(bool connected) { connected ? Open() : Close(); }

    /// Qt's handle of the open connection; opens it when need be.
    QSqlDatabase Database();
    /// The engine behind the open connection.
    TEngine Engine();

    /// A command text as the engine gets it: without the table hints that only SQL Server knows, on any
    /// other.
    QString ServerText(const QString &sql);

    /// Runs a command with values for its "?" and returns the number of rows that it touched, -1 when
    /// unknown. A command that fails in a transaction changes nothing and leaves the transaction usable.
    int Execute(const QString &sql, const QVariantList &values = {});

    /// Runs a query and hands its rows over one after the other, with nothing kept of them: `take` reads the
    /// row that the query stands on.
    void ReadRows(const QString &sql, const std::function<void(const QSqlQuery &row)> &take);

    bool InTransaction() const { return m_depth > 0; }

signals:
    /// A command is about to be run: its text as it was given, and as the engine gets it. For a host's log.
    void OnCommand(const QString &text, const QString &serverText);

private:
    friend class TTransaction;
    friend class TQuery;

    void run(QSqlQuery &query, const QString &sql, const QVariantList &values, bool isPrepared = false);
    using TRowReader = std::function<void(const QSqlQuery &)>;
    void read(const QString &sql, const QVariantList &values, const TRowReader &begin, const TRowReader &row);
    std::optional<TTransaction> guard();
    [[noreturn]] void fail(QSqlQuery &query);
    [[noreturn]] void failOfHandle();
    [[noreturn]] void refuse(const QSqlError &error);
    bool isRolledBack() const;
    void requireAlive(const QSqlError &error);
    bool isLost() const;
    QSqlDatabase handle() const { return QSqlDatabase::database(m_connectionName, false); }
    void begin();
    void commit();
    void rollback();
    bool tell(const QString &sql) const;
    void applyTimeZone();
    void applyTimeout();

    QString m_driverName = QStringLiteral("QSQLITE");
    QString m_databaseName, m_hostName, m_userName, m_password;
    QString m_connectionName; // in Qt's list of connections
    int m_port = -1;
    int m_connectionTimeout = 15;
    int m_commandTimeout = 30;
    int m_depth = 0; // scopes of transactions in one another; without a connection, those of a lost one
    std::optional<TSystemCause> m_rolledBack; // why the engine did so, while such scopes are left
    // The last command with values of this transaction, which is likely to be run again with others.
    std::unique_ptr<QSqlQuery> m_prepared;
    QString m_preparedSql;
};

/// A transaction, or a savepoint in the one that is open already. It is rolled back when it goes out of scope
/// without Commit(), and lost with its connection: then Commit() raises EDatabaseError.
class TTransaction
{
public:
    explicit TTransaction(TConnection &connection) : m_connection(connection) { m_connection.begin(); }
    ~TTransaction();
    TTransaction(const TTransaction &) = delete;
    TTransaction &operator=(const TTransaction &) = delete;

    void Commit();

private:
    TConnection &m_connection;
    bool m_open = true;
};

} // namespace Zelmar01
