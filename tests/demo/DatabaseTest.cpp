#include <demo/CodesRound.h>
#include <demo/DatabaseDialog.h>
#include <demo/Hands.h>
#include <demo/ListsRound.h>
#include <demo/MainWindow.h>
#include <demo/ShopDatabase.h>

#include <support/Engines.h>

#include <Zelmar01/controls/zmCheckBox.h>
#include <Zelmar01/controls/zmTextEdit.h>
#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/data/Query.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QSettings>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace Shop;
using namespace Zelmar01;

namespace {

TDatabasePlace placeOnServer()
{
    TDatabasePlace place;
    place.Driver = u"QPSQL"_s;
    place.Database = u"postgres"_s;
    place.Host = u"127.0.0.1"_s;
    place.Port = sharedServer().Port();
    place.User = QString::fromUtf8(PostgresServer::UserName);
    place.Password = QString::fromUtf8(PostgresServer::Password);
    return place;
}

} // namespace

TEST(Database, IsRememberedWithoutItsPassword)
{
    const TempFolder folder;
    const auto file = QString::fromStdString(folder / "shop.ini");
    auto place = placeOnServer();
    {
        QSettings settings(file, QSettings::IniFormat);
        EXPECT_EQ(RestorePlace(settings, u"first.db"_s).Title(), u"first.db"_s);
        SavePlace(place, settings);
    }
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_FALSE(written.readAll().contains(PostgresServer::Password));
    const auto again = RestorePlace(QSettings(file, QSettings::IniFormat), {});
    EXPECT_EQ(again.Title(), u"postgres sur 127.0.0.1"_s);
    EXPECT_EQ(again.Port, place.Port);
    EXPECT_EQ(again.User, place.User);

    // What belongs with one database is never taken for another's.
    const ShopDatabase one(place, u"/shop"_s);
    place.Port = 1;
    EXPECT_NE(one.Beside(u"codes"_s), ShopDatabase(place, u"/shop"_s).Beside(u"codes"_s));
}

TEST(Database, IsAskedForUntilItCanBeOpened)
{
    QStringList told;
    SetExceptionDisplay(
        [&](const std::exception &exception) { told << QString::fromUtf8(exception.what()); });
    const auto restore = qScopeGuard([] { SetExceptionDisplay({}); });
    auto place = placeOnServer();
    place.Password.clear();
    DatabaseDialog dialog(place);
    dialog.show();
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(told.size(), 1);
    Find<QLineEdit>(dialog, u"password"_s).setText(QString::fromUtf8(PostgresServer::Password));
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(told.size(), 1) << told.join(u'\n').toStdString();
    EXPECT_EQ(dialog.Place().Port, place.Port);

    Find<QComboBox>(dialog, u"engine"_s).setCurrentIndex(0);
    EXPECT_FALSE(Find<QDialogButtonBox>(dialog, u"buttons"_s).button(QDialogButtonBox::Ok)->isEnabled());
    Find<QLineEdit>(dialog, u"file"_s).setText(u"/shop.db"_s);
    EXPECT_TRUE(dialog.Place().IsFile());
}

namespace {

// A server's database as the user of the dialog names it, by its own driver or by an ODBC source.
class ServedShop : public testing::TestWithParam<const char *>
{
protected:
    static TDatabasePlace chosenInDialog()
    {
        const auto server = placeOnServer();
        if (GetParam() == server.Driver)
            return server;
        DatabaseDialog dialog(TDatabasePlace{.Database = u"/shop.db"_s});
        dialog.show();
        Find<QComboBox>(dialog, u"engine"_s).setCurrentIndex(2);
        Find<QLineEdit>(dialog, u"source"_s)
            .setText(u"Driver={PostgreSQL Unicode};Server=%1;Port=%2;Database=%3"_s.arg(server.Host)
                         .arg(server.Port)
                         .arg(server.Database));
        Find<QLineEdit>(dialog, u"odbcUser"_s).setText(server.User);
        Find<QLineEdit>(dialog, u"odbcPassword"_s).setText(server.Password);
        dialog.accept();
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        return dialog.Place();
    }

    static void empty(TDatabasePlace place)
    {
        TConnection connection;
        UsePlace(place, connection);
        connection.Execute(u"set client_min_messages to warning"_s);
        connection.Execute(u"drop schema public cascade"_s);
        connection.Execute(u"create schema public"_s);
    }
};

// Each column of an article's sheet is written and read back, its picture and its yes or no among them.
void changeSheet(const MainWindow &window, ShopDatabase &database)
{
    auto &name = Find<TzmDBEdit>(window, u"sheetNOM"_s);
    name.setFocus();
    for (const QChar c : u"Été "_s) {
        QKeyEvent typed(QEvent::KeyPress, 0, Qt::NoModifier, c);
        QApplication::sendEvent(&name, &typed);
    }
    Find<TzmDBCheckEdit>(window, u"sheetVITRINE"_s).click();
    Find<QPushButton>(window, u"sheetPost"_s).click();
    TQuery sheet(nullptr, &database.Connection());
    sheet.setCommandText(u"select NOM, VITRINE, PHOTO from fiche order by REFERENCE"_s);
    sheet.Open();
    EXPECT_TRUE(sheet.FieldByName(u"NOM"_s).AsString().contains(u"Été"_s));
    EXPECT_EQ(sheet.FieldByName(u"VITRINE"_s).AsBoolean(),
              Find<TzmDBCheckEdit>(window, u"sheetVITRINE"_s).isChecked());
    EXPECT_TRUE(QImage::fromData(sheet.FieldByName(u"PHOTO"_s).Value().toByteArray()).width() > 0);
}

} // namespace

TEST_P(ServedShop, IsWhole)
{
    QStringList told;
    SetExceptionDisplay(
        [&](const std::exception &exception) { told << QString::fromUtf8(exception.what()); });
    const auto restore = qScopeGuard([] { SetExceptionDisplay({}); });
    const OdbcPrinting printing;
    const TempFolder folder;
    empty(placeOnServer());
    ShopDatabase database(chosenInDialog(), QString::fromStdString(folder / "shop"));
    EXPECT_EQ(database.Connection().DriverName(), QString::fromUtf8(GetParam()));
    MainWindow window(&QDateTime::currentDateTime, database, nullptr);
    window.show();
    EXPECT_TRUE(GoRoundCodes(window, database).contains(u"Supprimé"_s));
    EXPECT_FALSE(GoRoundLists(window, database).isEmpty());
    for (auto *page : window.Pages())
        window.ShowPage(page);
    changeSheet(window, database);
    EXPECT_THROW(database.Connection().Execute(
                     u"insert into descr_article values (9999, 0, '3a', 'Écrin', 'Écrin', 'E'), "
                     "(9998, 0, '3A', 'Écrin', 'Écrin', 'E')"_s),
                 EDatabaseError);
    EXPECT_TRUE(told.isEmpty()) << told.join(u'\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(All, ServedShop, testing::Values("QPSQL", "QODBC"),
                         [](const auto &way) { return std::string(way.param); });
