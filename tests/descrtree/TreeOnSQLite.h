#pragma once

#include "CacheFixture.h"
#include "ShownTree.h"

#include <Zelmar01/data/DataErrors.h>

/// The view over an SQLite file, not loaded yet, with its cache files beside.
class TreeOnSQLite : public CacheFixture, protected ShownTree
{
protected:
    TreeOnSQLite()
    {
        m_connection.setDatabaseName(inFolder("shop.db"));
        makeTable(m_connection, "varchar(20) collate nocase");
        m_view.setFichierSortie(inFolder("x"));
    }

    QString inFolder(const char *name) const { return QString::fromStdString((m_folder / name).string()); }
    void execute(const char *sql) { m_connection.Execute(sql); }

    Zelmar01::TConnection m_connection;
};
