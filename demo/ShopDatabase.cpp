#include "ShopDatabase.h"

#include <QDir>
#include <QFileInfo>

using namespace Zelmar01;

namespace Shop {

ShopDatabase::ShopDatabase(const QString &file)
{
    m_connection.setDatabaseName(QFileInfo(file).absoluteFilePath());
}

QString ShopDatabase::Beside(const QString &name) const
{
    return QFileInfo(FileName()).dir().filePath(name);
}

void ShopDatabase::Require(const TShopTable &table)
{
    // Without the folder, opening the file says what is wrong.
    QFileInfo(FileName()).dir().mkpath(QStringLiteral("."));
    if (m_connection.Database().tables().contains(table.Name, Qt::CaseInsensitive))
        return;
    TTransaction transaction(m_connection);
    m_connection.Execute(table.Create);
    table.Fill(m_connection);
    transaction.Commit();
}

} // namespace Shop
