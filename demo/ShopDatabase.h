#pragma once

#include <Zelmar01/data/Connection.h>

#include <QString>

#include <functional>

namespace Shop {

/// One table of the shop's database: how it is made, and the rows that a new one begins with.
struct TShopTable
{
    QString Name;
    QString Create; ///< the command that makes it
    std::function<void(Zelmar01::TConnection &)> Fill;
};

/// A database of the shop: an SQLite file, to which each page adds the tables that it needs.
class ShopDatabase
{
public:
    /// The file is opened, and made with its folder when it is missing, once it is needed.
    explicit ShopDatabase(const QString &file);

    QString FileName() const { return m_connection.DatabaseName(); }
    /// A path beside the file, for what belongs with it.
    QString Beside(const QString &name) const;
    Zelmar01::TConnection &Connection() { return m_connection; }

    /// Makes and fills a table, as one transaction, unless it is there. Raises EDatabaseError.
    void Require(const TShopTable &table);

private:
    Zelmar01::TConnection m_connection;
};

} // namespace Shop
