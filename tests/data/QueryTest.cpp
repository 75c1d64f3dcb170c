#include "Samples.h"

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/data/Query.h>

#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QSqlQuery>

using namespace Zelmar01;

namespace {

class Query : public testing::Test
{
protected:
    Query()
    {
        m_connection.setDatabaseName(QString::fromStdString((m_folder / "shop.db").string()));
        m_connection.Execute(
            QStringLiteral("create table ARTICLE (ID integer primary key, LIBELLE varchar(20) not null "
                           "unique, PRIX decimal(10,2), ENTREE date, VENDU boolean)"));
        for (const auto *row : {"1, 'Bague d''or', 1250.10, '2024-02-29', 0", "2, 'Étui', null, null, 1",
                                "12, 'Collier', 0.10, '2026-11-21', null"})
            m_connection.Execute(
                QStringLiteral("insert into ARTICLE values (%1)").arg(QString::fromUtf8(row)));
        m_articles.setCommandText(QStringLiteral("select * from ARTICLE with (nolock) order by ID"));
        m_articles.Open();
    }

    TempFolder m_folder;
    TConnection m_connection;
    TQuery m_articles{nullptr, &m_connection};
};

std::string causeOf(const std::function<void()> &work)
{
    try {
        work();
    } catch (const EDatabaseError &error) {
        return error.Cause().Text;
    }
    return "no error";
}

} // namespace

TEST_F(Query, knowsDeclaredTypesAlsoBehindAJoin)
{
    m_articles.setCommandText(QStringLiteral("select a.PRIX, b.LIBELLE, b.ENTREE, b.VENDU, a.PRIX + 0.5 as S "
                                             "from ARTICLE a join ARTICLE b on a.ID = b.ID order by a.ID"));
    m_articles.Open();
    const TFieldType types[] = {ftBCD, ftString, ftDate, ftBoolean, ftFloat};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(m_articles.Fields()[i].DataType(), types[i]) << i;
    EXPECT_EQ(m_articles.Fields()[1].Size(), 20);
    EXPECT_EQ(column(m_articles, "PRIX"), QStringLiteral("1250.10 - 0.10"));
    EXPECT_EQ(column(m_articles, "ENTREE"), QStringLiteral("2024-02-29 - 2026-11-21"));
    EXPECT_EQ(column(m_articles, "VENDU"), QStringLiteral("0 1 -"));
}

TEST_F(Query, whatIsNoTableCannotBeChanged)
{
    for (const auto *sql : {"select count(*) from ARTICLE", "select LIBELLE from ARTICLE",
                            "select distinct * from ARTICLE", "select a.* from ARTICLE a, ARTICLE b"}) {
        m_articles.setCommandText(QString::fromLatin1(sql));
        m_articles.Open();
        EXPECT_THROW(m_articles.Edit(), EDatabaseError) << sql;
        EXPECT_THROW(m_articles.Insert(), EDatabaseError) << sql;
    }
}

// As after a lasting failure to find the key, or with a database that was brought up to date.
TEST_F(Query, whereChangesGoIsLookedForAgainWhenItOpens)
{
    const auto isChanged = [this](const char *sql) {
        m_articles.Close();
        m_connection.Execute(QStringLiteral("drop table if exists STOCK"));
        m_connection.Execute(QString::fromLatin1(sql));
        m_connection.Execute(QStringLiteral("insert into STOCK (ID, LIBELLE) values (1, 'Bague')"));
        m_articles.Open();
        if (!m_articles.CanModify())
            return false;
        m_articles.Edit();
        m_articles.FieldByName(QStringLiteral("LIBELLE")).setAsString(QStringLiteral("Jonc"));
        m_articles.Post();
        return column(m_articles, "LIBELLE") == QStringLiteral("Jonc");
    };
    m_articles.setCommandText(QStringLiteral("select * from STOCK"));
    EXPECT_FALSE(m_articles.CanModify()) << "closed";
    EXPECT_TRUE(isChanged("create table STOCK (LIBELLE varchar(20), ID integer primary key)"));
    EXPECT_FALSE(isChanged("create table STOCK (ID integer, LIBELLE varchar(20))"));
    EXPECT_TRUE(isChanged("create table STOCK (ID integer primary key, LIBELLE varchar(20))"));
    EXPECT_FALSE(isChanged("create table STOCK (ID integer, LIBELLE varchar(20), PLACE integer)"));
    m_articles.setKeyFields(QStringLiteral("ID"));
    EXPECT_TRUE(m_articles.CanModify());
    m_articles.setKeyFields({});
    EXPECT_FALSE(m_articles.CanModify());
}

TEST_F(Query, aTransactionThatTheEngineRolledBackKeepsNothing)
{
    m_connection.Execute(QStringLiteral("create table TICKET (ID integer primary key on conflict rollback)"));
    const auto insert = [this](int id) {
        m_connection.Execute(QStringLiteral("insert into TICKET values (?)"), {id});
    };
    {
        TTransaction sale(m_connection);
        insert(1);
        const TTransaction line(m_connection);
        insert(2);
        const auto again = QStringLiteral("insert into TICKET values (1)");
        EXPECT_NE(causeOf([&] { m_connection.Execute(again); }), "no error");
        EXPECT_NE(causeOf([&] { insert(3); }), "no error");
        EXPECT_NE(causeOf([&] { m_articles.Delete(); }), "no error");
        EXPECT_NE(causeOf([&] { const TTransaction another(m_connection); }), "no error");
        EXPECT_NE(causeOf([&] { sale.Commit(); }), "no error");
        EXPECT_TRUE(m_connection.InTransaction());
    }
    EXPECT_FALSE(m_connection.InTransaction());
    insert(5);
    m_articles.setCommandText(QStringLiteral("select ID from TICKET"));
    m_articles.Open();
    EXPECT_EQ(column(m_articles, "ID"), QStringLiteral("5"));
}

TEST_F(Query, errorsCarryTheDatabasesWords)
{
    EXPECT_NE(causeOf([this] { m_connection.Execute(QStringLiteral("selec 1")); }).find("syntax error"),
              std::string::npos);
    m_articles.setCommandText(QStringLiteral("select * from PAS_LA"));
    EXPECT_NE(causeOf([this] { m_articles.Open(); }).find("no such table"), std::string::npos);
    EXPECT_FALSE(m_articles.Active());
    TConnection nowhere;
    nowhere.setDatabaseName(QStringLiteral("/no/such/folder/shop.db"));
    EXPECT_NE(causeOf([&] { nowhere.Open(); }), "no error");
    EXPECT_FALSE(nowhere.Connected());
    TQuery lonely;
    EXPECT_THROW(lonely.Open(), EDatabaseError);
}

TEST_F(Query, parametersStandForQuestionMarks)
{
    m_articles.setCommandText(QStringLiteral("select ID from ARTICLE where LIBELLE = ?"));
    m_articles.setParams({QStringLiteral("Bague d'or")});
    m_articles.Open();
    EXPECT_EQ(column(m_articles, "ID"), QStringLiteral("1"));
}

TEST_F(Query, rowsAreHandedOverOneAfterTheOther)
{
    const auto sql = QStringLiteral("select LIBELLE from ARTICLE with (nolock) order by ID");
    QStringList told, labels;
    QObject::connect(&m_connection, &TConnection::OnCommand, &m_connection,
                     [&](const QString &text, const QString &serverText) { told << text << serverText; });
    m_connection.ReadRows(sql, [&](const QSqlQuery &row) { labels << row.value(0).toString(); });
    EXPECT_EQ(labels.join(u' '), QStringLiteral("Bague d'or Étui Collier"));
    EXPECT_EQ(told, QStringList({sql, QStringLiteral("select LIBELLE from ARTICLE  order by ID")}));
    EXPECT_THROW(m_connection.ReadRows(sql, [](const QSqlQuery &) { throw EConvertError("no"); }),
                 EConvertError);
    EXPECT_EQ(m_connection.Execute(QStringLiteral("update ARTICLE set VENDU = 1")), 3) << "nothing is locked";
}

TEST_F(Query, aChangedRowKeepsItsPlace)
{
    m_articles.setRecNo(2);
    QSignalSpy changed(&m_articles, &TDataSet::RowChanged), reset(&m_articles, &TDataSet::RowsReset);
    m_articles.Edit();
    m_articles.FieldByName(QStringLiteral("ID")).setAsInteger(99);
    m_articles.Post();
    EXPECT_EQ(m_articles.RecNo(), 2);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0], 1);
    EXPECT_EQ(reset.count(), 0);
    EXPECT_EQ(column(m_articles, "ID"), QStringLiteral("1 99 12"));
}
