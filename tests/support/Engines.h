#pragma once

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/data/Query.h>

#include "Environment.h"
#include "PostgresServer.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

/// The ways to a database: Qt's name of the driver, and whether a server is at the other end.
struct TWay
{
    const char *Driver;
    bool Server;
};
inline void PrintTo(const TWay &way, std::ostream *stream)
{
    *stream << way.Driver;
}
inline std::string nameOfWay(const testing::TestParamInfo<TWay> &info)
{
    return info.param.Driver;
}

/// The server of all tests of a program, started by the first that needs it.
PostgresServer &sharedServer();

/// Lets Qt's ODBC driver print every error that its caller is told of anyway, without failing the test.
class OdbcPrinting
{
public:
    OdbcPrinting() { s_before = qInstallMessageHandler(handle); }
    ~OdbcPrinting() { qInstallMessageHandler(s_before); }
    OdbcPrinting(const OdbcPrinting &) = delete;
    OdbcPrinting &operator=(const OdbcPrinting &) = delete;

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        s_before(text.startsWith(QStringLiteral("QODBC")) ? QtInfoMsg : type, context, text);
    }
    static inline QtMessageHandler s_before = nullptr;
};

/// A test that runs on each way, with a connection to an empty database.
class OnEngines : public testing::TestWithParam<TWay>
{
protected:
    OnEngines()
    {
        tzset();
        prepare(m_connection);
        if (!GetParam().Server)
            return;
        m_connection.Execute(text("drop schema if exists public, \"Dépôt\" cascade"));
        m_connection.Execute(text("create schema public"));
    }

    /// Sets a connection up for the way under test.
    void prepare(Zelmar01::TConnection &connection)
    {
        connection.setDriverName(text(GetParam().Driver));
        if (!GetParam().Server) {
            connection.setDatabaseName(QString::fromStdString(m_folder / "shop.db"));
            return;
        }
        connection.setUserName(text(PostgresServer::UserName));
        connection.setPassword(text(PostgresServer::Password));
        aim(connection, sharedServer().Port(), "postgres");
    }

    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    /// Where a server listens, in the way of the driver.
    static void aim(Zelmar01::TConnection &connection, int port, const char *database)
    {
        if (connection.DriverName() == u"QODBC") {
            connection.setDatabaseName(text("Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=%1;"
                                            "Database=%2;BoolsAsChar=0")
                                           .arg(port)
                                           .arg(text(database)));
            return;
        }
        connection.setDatabaseName(text(database));
        connection.setHostName(text("127.0.0.1"));
        connection.setPort(port);
    }

    /// The first field of the first row of a query.
    QString inDatabase(const QString &sql)
    {
        Zelmar01::TQuery query(nullptr, &m_connection);
        query.setCommandText(sql);
        query.Open();
        return query.Fields()[0].AsString();
    }

    /// What an operation that must fail with EDatabaseError says, and what the database said.
    static std::string errorOf(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const Zelmar01::EDatabaseUnreachable &error) {
            return std::string("unreachable: ") + error.what() + " / " + error.Cause().Text;
        } catch (const Zelmar01::EDatabaseError &error) {
            return error.what() + (" / " + error.Cause().Text);
        }
        return "no error";
    }

    OdbcPrinting m_printing;
    // Another zone than the server's.
    EnvironmentSetting m_zone{"TZ", "Europe/Paris"};
    TempFolder m_folder;
    Zelmar01::TConnection m_connection;
};

/// Whether a text holds another, with the whole of it in the message when it does not.
inline testing::AssertionResult contains(const std::string &text, const std::string &part)
{
    if (text.find(part) != std::string::npos)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "\"" << part << "\" is not in: " << text;
}
