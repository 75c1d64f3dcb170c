#include <support/Engines.h>

#include <QElapsedTimer>

using namespace Zelmar01;

namespace {

class Engines : public OnEngines
{
protected:
    Engines()
    {
        m_connection.Execute(text("create table ARTICLE (ID integer primary key, GRAND bigint, "
                                  "LIBELLE varchar(20) unique, NOTE text, PRIX numeric(12,2), "
                                  "TITRE numeric(16,2), VENDU boolean, ENTREE date, HEURE time, "
                                  "VU timestamp, PHOTO %1, POIDS double precision)")
                                 .arg(text(GetParam().Server ? "bytea" : "blob")));
        m_connection.Execute(text("insert into ARTICLE (ID, LIBELLE) values (1, 'Bague'), (2, 'Étui'), "
                                  "(12, 'Collier')"));
        m_articles.setCommandText(text(" select * from ARTICLE a with (nolock) order by ID"));
        m_articles.Open();
    }

    TField &field(const char *name) { return m_articles.FieldByName(text(name)); }

    void append(int id, const char *label)
    {
        m_articles.Append();
        field("ID").setAsInteger(id);
        field("LIBELLE").setAsString(text(label));
        m_articles.Post();
    }

    void reopen()
    {
        m_articles.Close();
        m_articles.Open();
    }

    TQuery m_articles{nullptr, &m_connection};
};

struct TSample
{
    const char *Field;
    TFieldType Type;
    int Size;
    std::vector<const char *> Values;
};
const TSample samples[] = {
    {"GRAND", ftInteger, 0, {"9007199254740993", "-9223372036854775807", "0"}},
    {"LIBELLE", ftString, 20, {"L'étui \"or\" 😀 \\", "?", "", " x "}},
    {"NOTE", ftString, 0, {"", "une\r\nligne\tet demie", "مرحبا", "'); drop table ARTICLE --"}},
    {"PRIX", ftBCD, 2, {"0.10", "-1234567890.05", "9999999999.99", "0.00"}},
    {"TITRE", ftBCD, 2, {"12345678901234.56"}},
    {"VENDU", ftBoolean, 0, {"1", "0"}},
    {"ENTREE", ftDate, 0, {"2024-02-29", "1899-12-30"}},
    {"HEURE", ftTime, 0, {"23:59:59", "00:00:00"}},
    {"VU", ftDateTime, 0, {"2026-07-21T08:30:00", "2026-11-21T00:00:00.125"}},
    {"POIDS", ftFloat, 0, {"0.1", "-1.25e+30"}},
};

} // namespace

TEST_P(Engines, everyTypeIsWrittenAndReadAsItIs)
{
    for (const auto &sample : samples) {
        auto &written = field(sample.Field);
        EXPECT_EQ(written.DataType(), sample.Type) << sample.Field;
        EXPECT_EQ(written.Size(), sample.Size) << sample.Field;
        for (const auto *value : sample.Values) {
            m_articles.Edit();
            field(sample.Field).setAsString(text(value));
            m_articles.Post();
            reopen();
            EXPECT_EQ(field(sample.Field).AsString(), text(value)) << sample.Field;
            EXPECT_FALSE(field(sample.Field).IsNull()) << sample.Field;
        }
        m_articles.Edit();
        field(sample.Field).Clear();
        m_articles.Post();
        reopen();
        EXPECT_TRUE(field(sample.Field).IsNull()) << sample.Field;
    }
}

TEST_P(Engines, longTextsAndBytesAreKept)
{
    const QString novel = text("é€😀'\\").repeated(2000); // 12,000 characters
    const QByteArray picture("\0\1\xFF'\\\n", 6);
    m_articles.Edit();
    field("NOTE").setAsString(novel);
    field("PHOTO").setValue(picture);
    m_articles.Post();
    reopen();
    EXPECT_EQ(field("NOTE").AsString(), novel);
    EXPECT_EQ(field("PHOTO").DataType(), ftBytes);
    EXPECT_EQ(field("PHOTO").AsBytes(), picture);
    m_articles.Edit();
    EXPECT_THROW(field("LIBELLE").setAsString(text("vingt et un caractères")), EDatabaseError);
}

TEST_P(Engines, decimalsKeepWhatADoubleCannotHold)
{
    if (!GetParam().Server)
        GTEST_SKIP() << "SQLite keeps them as a double itself";
    m_connection.Execute(text("create table COURS (ID integer primary key, T numeric(18,2), N numeric)"));
    m_connection.Execute(text("insert into COURS values (1, 1234567890123456.78, 1.5), (2, null, 2)"));
    EXPECT_EQ(inDatabase(text("select T from COURS")), text("1234567890123456.78"));
    EXPECT_TRUE(inDatabase(text("select avg(N) / 3 from COURS")).startsWith(text("0.583333")));
}

TEST_P(Engines, insertsEditsDeletesAndLocates)
{
    append(3, "Alliance");
    ASSERT_TRUE(m_articles.Locate(text("libelle"), text("col"), loCaseInsensitive | loPartialKey));
    EXPECT_EQ(field("ID").AsInteger(), 12);
    m_articles.Delete();
    ASSERT_TRUE(m_articles.Locate(text("ID"), 1, loPartialKey));
    m_articles.Edit();
    field("LIBELLE").setAsString(text("Broche"));
    field("ID").setAsInteger(4); // the key itself
    m_articles.Post();
    reopen();
    EXPECT_EQ(m_articles.RecordCount(), 3);
    for (const auto &[id, label] : {std::pair(2, "Étui"), {3, "Alliance"}, {4, "Broche"}}) {
        EXPECT_EQ(field("ID").AsInteger(), id);
        EXPECT_EQ(field("LIBELLE").AsString(), text(label));
        m_articles.Next();
    }
}

TEST_P(Engines, aRefusedChangeLeavesTableRecordAndTransaction)
{
    std::optional<TTransaction> transaction;
    for (const bool inTransaction : {false, true}) {
        if (inTransaction)
            transaction.emplace(m_connection);
        const int id = inTransaction ? 31 : 30;
        append(id, inTransaction ? "dedans" : "dehors");
        m_articles.Edit();
        field("LIBELLE").setAsString(text("Bague"));
        const auto error = errorOf([this] { m_articles.Post(); });
        EXPECT_TRUE(contains(error, "La base de données a refusé l'opération / ")) << inTransaction;
        EXPECT_TRUE(contains(error, GetParam().Server ? "duplicate key" : "UNIQUE"));
        EXPECT_EQ(m_articles.State(), dsEdit);
        m_articles.Cancel();
        const auto insert = text("insert into ARTICLE (ID) values (?)");
        EXPECT_NE(errorOf([&] { m_connection.Execute(insert, {id}); }), "no error");
        EXPECT_NE(errorOf([&] { inDatabase(text("select * from PAS_LA")); }), "no error");
        EXPECT_EQ(m_connection.Execute(insert, {id + 10}), 1) << "after the errors";
    }
    transaction->Commit();
    EXPECT_EQ(inDatabase(text("select count(*) from ARTICLE where ID between 30 and 41")), text("4"));
}

TEST_P(Engines, transactionsNestAndRollBackByThemselves)
{
    {
        TTransaction outer(m_connection);
        append(30, "a");
        {
            TTransaction inner(m_connection);
            append(31, "b");
        }
        TTransaction inner(m_connection);
        append(32, "c");
        inner.Commit();
        outer.Commit();
    }
    EXPECT_FALSE(m_connection.InTransaction());
    {
        TTransaction forgotten(m_connection);
        append(33, "d");
    }
    EXPECT_EQ(inDatabase(text("select sum(ID) from ARTICLE where ID >= 30")), text("62"));
}

TEST_P(Engines, aRowThatSomebodyDeletedIsNoticed)
{
    m_connection.Execute(text("delete from ARTICLE where ID = 1"));
    m_articles.Edit();
    field("PRIX").setAsString(text("1"));
    EXPECT_TRUE(contains(errorOf([this] { m_articles.Post(); }), "autre poste"));
    m_articles.Cancel();
    EXPECT_TRUE(contains(errorOf([this] { m_articles.Delete(); }), "autre poste"));
    EXPECT_EQ(m_articles.RecordCount(), 3);
}

TEST_P(Engines, findsTheKeyOfATableHoweverItIsWritten)
{
    const bool server = GetParam().Server;
    const auto schema = text(server ? "\"Dépôt\"." : "main.");
    if (server)
        m_connection.Execute(text("create schema \"Dépôt\""));
    for (const auto &table : {text("\"Mes Articles\""), schema + "STOCK", schema + "\"Le Stock\""})
        m_connection.Execute("create table " + table +
                             " (\"Clé\" integer, CODE varchar(3), LIBELLE varchar(9), primary key (\"Clé\", "
                             "CODE))");
    for (const auto &table : {text("\"Mes Articles\""), schema + "STOCK", schema + "stock as s",
                              schema + "\"Le Stock\" as \"s t\""}) {
        SCOPED_TRACE(table.toStdString());
        TQuery stock(nullptr, &m_connection);
        stock.setCommandText("select * from " + table + " with (nolock)");
        stock.Open();
        ASSERT_TRUE(stock.CanModify());
        stock.Append();
        stock.FieldByName(text("clé")).setAsInteger(stock.RecordCount() + 1);
        stock.FieldByName(text("code")).setAsString(text("A"));
        stock.Post();
        stock.Edit();
        stock.FieldByName(text("libelle")).setAsString(text("écrit"));
        stock.Post();
        EXPECT_EQ(inDatabase("select count(*) from " + table + " where LIBELLE = 'écrit'"),
                  QString::number(stock.RecordCount()));
        stock.Delete();
    }
}

TEST_P(Engines, aCommandEndsWhenItsTimeIsOver)
{
    m_connection.setCommandTimeout(1);
    TConnection other;
    std::optional<TTransaction> lock;
    if (!GetParam().Server) {
        prepare(other);
        lock.emplace(other);
        other.Execute(text("update ARTICLE set PRIX = 1"));
    }
    QElapsedTimer clock;
    clock.start();
    const auto error = errorOf([this] {
        m_connection.Execute(text(GetParam().Server ? "select pg_sleep(10)" : "delete from ARTICLE"));
    });
    EXPECT_TRUE(contains(error, GetParam().Server ? "timeout" : "locked"));
    EXPECT_LT(clock.elapsed(), 5000);
    lock.reset();
    m_connection.Execute(text("delete from ARTICLE"));
}

TEST_P(Engines, aValueThatItsFieldCannotHoldIsNamed)
{
    const auto bad = GetParam().Server ? "'NaN'" : "'cher'";
    m_connection.Execute(text("update ARTICLE set PRIX = %1 where ID = 2").arg(text(bad)));
    const auto error = errorOf([this] { reopen(); });
    EXPECT_TRUE(contains(error, "Ligne 2 : « "));
    EXPECT_TRUE(contains(error, GetParam().Server ? "« prix »" : "« PRIX »"));
    EXPECT_FALSE(m_articles.Active());
    EXPECT_EQ(inDatabase(text("select count(*) from ARTICLE")), text("3")) << "the connection goes on";
}

INSTANTIATE_TEST_SUITE_P(All, Engines,
                         testing::Values(TWay{"QSQLITE", false}, TWay{"QPSQL", true}, TWay{"QODBC", true}),
                         nameOfWay);
