#pragma once

#include <QString>

class QSettings;

namespace Zelmar01 {
class TConnection;
}

namespace Shop {

/// Where a database is: an SQLite file, a database of a PostgreSQL server, or what ODBC calls so.
struct TDatabasePlace
{
    QString Driver = QStringLiteral("QSQLITE"); ///< Qt's name: "QSQLITE", "QPSQL" or "QODBC"
    QString Database{};                         ///< file, database of the server, data source
    QString Host{};                             ///< PostgreSQL alone
    int Port = -1;                              ///< PostgreSQL alone; -1 for its usual one
    QString User{};
    QString Password{}; ///< never kept from one start to the next

    bool IsFile() const { return Driver == QStringLiteral("QSQLITE"); }
    /// In a few words for people: the name of the file, or of database and server.
    QString Title() const;
};

void UsePlace(const TDatabasePlace &place, Zelmar01::TConnection &connection);

/// The place that the user chose last, `file` when there is none.
TDatabasePlace RestorePlace(const QSettings &settings, const QString &file);
void SavePlace(const TDatabasePlace &place, QSettings &settings);

} // namespace Shop
