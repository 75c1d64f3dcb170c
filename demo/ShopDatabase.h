#pragma once

#include "DatabasePlace.h"

#include <Zelmar01/data/Connection.h>

#include <QString>

#include <functional>

namespace Shop {

/// One table of the shop's database: how it is made, and the rows that a new one begins with.
struct TShopTable
{
    QString Name;
    QString Create; ///< the command that makes it, in SQLite's words
    std::function<void(Zelmar01::TConnection &)> Fill;
};

/// A database of the shop, to which each page adds the tables that it needs.
class ShopDatabase
{
public:
    /// It is opened, and an SQLite file made with its folder when it is missing, once it is needed. What
    /// belongs with the database of a server is kept in `folder`.
    ShopDatabase(const TDatabasePlace &place, const QString &folder);
    /// An SQLite file.
    explicit ShopDatabase(const QString &file);

    const TDatabasePlace &Place() const { return m_place; }
    /// Where what belongs with the database is kept: the folder of the file, or one of its own.
    const QString &Folder() const { return m_folder; }
    QString Beside(const QString &name) const;
    Zelmar01::TConnection &Connection() { return m_connection; }

    /// Makes and fills a table, as one transaction, unless it is there. Raises EDatabaseError.
    void Require(const TShopTable &table);

private:
    TDatabasePlace m_place;
    QString m_folder;
    Zelmar01::TConnection m_connection;
};

} // namespace Shop
