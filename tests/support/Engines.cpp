#include "Engines.h"

PostgresServer &sharedServer()
{
    static PostgresServer server;
    return server;
}

// For the leak sanitizer: the ODBC driver forgets what it was told last when its server is cut off in the
// middle of a command with values.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:psqlodbcw.so";
}
