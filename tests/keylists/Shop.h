#pragma once

#include <Zelmar01/data/Query.h>

#include <support/TempFolder.h>

/// The metals of a small shop in SQLite: METAL (ID, LIBELLE) and ARTICLE (ID, NOM, METAL), where METAL may be
/// null, or an ID that the table of metals does not have.
class ShopDatabase
{
public:
    ShopDatabase()
    {
        Connection.setDatabaseName(QString::fromStdString((m_folder / "shop.db").string()));
        for (const auto *sql :
             {"create table METAL (ID integer primary key, LIBELLE varchar(20))",
              "insert into METAL values (3, 'OR'), (8, 'Argent'), (10, 'Étain'), (11, 'or')",
              "create table ARTICLE (ID integer primary key, NOM varchar(20), METAL integer)",
              "insert into ARTICLE values (1, 'Bague', 3), (2, 'Collier', 10), (3, 'Étui', null), "
              "(4, 'Jonc', 99)"})
            Connection.Execute(QString::fromUtf8(sql));
        Metals.setCommandText(QStringLiteral("select ID, LIBELLE from METAL order by ID"));
        Articles.setCommandText(QStringLiteral("select * from ARTICLE order by ID"));
    }

private:
    const TempFolder m_folder;

public:
    Zelmar01::TConnection Connection;
    Zelmar01::TQuery Metals{nullptr, &Connection}, Articles{nullptr, &Connection};
};
