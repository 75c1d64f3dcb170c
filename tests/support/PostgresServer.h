#pragma once

#include "TempFolder.h"

#include <QProcess>
#include <QStringList>

/// A database server of the test's own, in a folder of its own, on a free port of the loopback interface,
/// with the user UserName and the database "postgres". It refuses to run as root: then it runs as the user
/// whom its package brings.
class PostgresServer
{
public:
    static constexpr const char *UserName = "caisse";
    static constexpr const char *Password = "Or 18 ct";

    /// Throws std::runtime_error when it does not start.
    PostgresServer();
    ~PostgresServer() { Kill(); }
    PostgresServer(const PostgresServer &) = delete;
    PostgresServer &operator=(const PostgresServer &) = delete;

    int Port() const { return m_port; }

    void Start();
    /// Ends it at once, as a failing machine would: its clients are cut off.
    void Kill();

private:
    QStringList asItsUser(const QString &program, const QStringList &arguments) const;
    QString m_programs; // the folder of the server's programs
    TempFolder m_folder;
    int m_port;
    QProcess m_process;
};
