#include "ShopDatabase.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

// Two databases never share a folder, whatever their names are made of.
QString folderOf(const TDatabasePlace &place, const QString &folder)
{
    if (place.IsFile())
        return QFileInfo(place.Database).absolutePath();
    const auto whole = QStringList{place.Driver, place.Host, QString::number(place.Port), place.Database};
    const auto digest = QCryptographicHash::hash(whole.join(u'\n').toUtf8(), QCryptographicHash::Sha1);
    return folder + u"/serveur-"_s + QString::fromLatin1(digest.toHex().first(12));
}

// The command for the engine: texts that SQLite compares without letter case, others do by their own means.
QString inWordsOf(TConnection &connection, QString create)
{
    const auto nocase = u" collate nocase"_s;
    switch (connection.Engine()) {
    case enSQLite:
        break;
    case enPostgreSQL:
        if (create.contains(nocase))
            connection.Execute(u"create collation if not exists sans_casse "
                               "(provider = icu, locale = 'und-u-ks-level2', deterministic = false)"_s);
        create.replace(nocase, u" collate sans_casse"_s);
        break;
    case enSQLServer: // its usual collations do so
    case enOther:
        create.remove(nocase);
        break;
    }
    return create;
}

} // namespace

ShopDatabase::ShopDatabase(const TDatabasePlace &place, const QString &folder)
    : m_place(place), m_folder(folderOf(place, folder))
{
    UsePlace(m_place, m_connection);
}

ShopDatabase::ShopDatabase(const QString &file) : ShopDatabase(TDatabasePlace{.Database = file}, {}) {}

QString ShopDatabase::Beside(const QString &name) const
{
    return QDir(m_folder).filePath(name);
}

void ShopDatabase::Require(const TShopTable &table)
{
    // Without the folder, opening the file says what is wrong.
    QDir().mkpath(m_folder);
    if (m_connection.Database().tables().contains(table.Name, Qt::CaseInsensitive))
        return;
    TTransaction transaction(m_connection);
    m_connection.Execute(inWordsOf(m_connection, table.Create));
    table.Fill(m_connection);
    transaction.Commit();
}

} // namespace Shop
