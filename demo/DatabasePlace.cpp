#include "DatabasePlace.h"

#include <Zelmar01/data/Connection.h>

#include <QFileInfo>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace Shop {

QString TDatabasePlace::Title() const
{
    if (IsFile())
        return QFileInfo(Database).fileName();
    if (Driver == "QPSQL"_L1)
        return Database + u" sur "_s + (Host.isEmpty() ? u"ce poste"_s : Host);
    // A connection string tells more than fits, passwords perhaps among it.
    return Database.contains(u'=') ? u"ODBC"_s : Database;
}

void UsePlace(const TDatabasePlace &place, Zelmar01::TConnection &connection)
{
    connection.setDriverName(place.Driver);
    connection.setDatabaseName(place.IsFile() ? QFileInfo(place.Database).absoluteFilePath()
                                              : place.Database);
    connection.setHostName(place.Host);
    connection.setPort(place.Port);
    connection.setUserName(place.User);
    connection.setPassword(place.Password);
}

TDatabasePlace RestorePlace(const QSettings &settings, const QString &file)
{
    TDatabasePlace place;
    place.Database = settings.value(u"Database/Name"_s, file).toString();
    place.Driver = settings.value(u"Database/Driver"_s, place.Driver).toString();
    place.Host = settings.value(u"Database/Host"_s).toString();
    place.Port = settings.value(u"Database/Port"_s, place.Port).toInt();
    place.User = settings.value(u"Database/User"_s).toString();
    return place;
}

void SavePlace(const TDatabasePlace &place, QSettings &settings)
{
    settings.setValue(u"Database/Name"_s, place.Database);
    settings.setValue(u"Database/Driver"_s, place.Driver);
    settings.setValue(u"Database/Host"_s, place.Host);
    settings.setValue(u"Database/Port"_s, place.Port);
    settings.setValue(u"Database/User"_s, place.User);
}

} // namespace Shop
