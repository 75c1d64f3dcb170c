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
    auto create = table.Create;
    if (m_connection.Engine() != enSQLite)
        create.remove(u" collate nocase"_s);
    TTransaction transaction(m_connection);
    m_connection.Execute(create);
    table.Fill(m_connection);
    transaction.Commit();
}

} // namespace Shop
