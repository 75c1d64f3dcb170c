#include <support/Engines.h>
#include <support/TcpSink.h>

#include <QElapsedTimer>

using namespace Zelmar01;

namespace {

class ServerLoss : public OnEngines
{
protected:
    ServerLoss()
    {
        m_connection.Execute(text("create table NIVEAU (ID integer primary key, LIBELLE varchar(9))"));
        insert(1);
        m_levels.setCommandText(text("select * from NIVEAU order by ID"));
        m_levels.Open();
    }

    void insert(int id)
    {
        m_connection.Execute(text("insert into NIVEAU values (?, ?)"), {id, QString::number(id)});
    }

    void loseServer()
    {
        sharedServer().Kill();
        sharedServer().Start();
    }

    TQuery m_levels{nullptr, &m_connection};
};

const auto lost = "unreachable: La connexion à la base de données est perdue";

} // namespace

TEST_P(ServerLoss, theOperationThatMeetsItFailsAndTheNextOneReconnects)
{
    const std::function<void()> operations[] = {
        [this] { inDatabase(text("select * from NIVEAU")); },
        [this] { insert(2); },
        [this] { m_connection.Execute(text("delete from NIVEAU where ID > 1")); },
        [this] {
            TTransaction transaction(m_connection);
            insert(2);
        },
        [this] {
            TQuery again(nullptr, &m_connection);
            again.setCommandText(m_levels.CommandText());
            again.Open();
            loseServer();
            again.Append(); // looks for the table's key
        },
        [this] { m_levels.Post(); }};
    m_levels.Edit();
    m_levels.FieldByName(text("LIBELLE")).setAsString(text("neuf"));
    for (const auto &operation : operations) {
        loseServer();
        EXPECT_TRUE(contains(errorOf(operation), lost)) << &operation - operations;
        EXPECT_FALSE(m_connection.Connected()) << &operation - operations;
        EXPECT_EQ(inDatabase(text("select count(*) from NIVEAU")), text("1"));
    }
    EXPECT_EQ(m_levels.State(), dsEdit) << "what the user typed is still there";
    m_levels.Post();
    EXPECT_EQ(inDatabase(text("select LIBELLE from NIVEAU")), text("neuf"));
}

TEST_P(ServerLoss, aTransactionIsLostWithItAndNothingOfItIsKept)
{
    {
        TTransaction outer(m_connection);
        insert(2);
        {
            TTransaction inner(m_connection);
            insert(3);
            loseServer();
            EXPECT_TRUE(contains(errorOf([this] { insert(4); }), lost));
            EXPECT_TRUE(contains(errorOf([this] { insert(5); }), "unreachable: La transaction a été perdue"));
            EXPECT_THROW(inner.Commit(), EDatabaseError);
        }
        EXPECT_THROW(insert(6), EDatabaseError) << "outside of the transaction it was meant for";
        EXPECT_THROW(outer.Commit(), EDatabaseError);
    }
    EXPECT_FALSE(m_connection.InTransaction());
    EXPECT_EQ(inDatabase(text("select count(*) from NIVEAU")), text("1"));
    {
        TTransaction transaction(m_connection);
        insert(7);
        loseServer();
        EXPECT_TRUE(contains(errorOf([&] { transaction.Commit(); }), lost));
    }
    EXPECT_EQ(inDatabase(text("select count(*) from NIVEAU")), text("1"));
}

TEST_P(ServerLoss, aServerThatIsAwayIsNamedUntilItIsBack)
{
    sharedServer().Kill();
    EXPECT_TRUE(contains(errorOf([this] { insert(2); }), lost));
    EXPECT_TRUE(contains(errorOf([this] { insert(2); }), "est inaccessible"));
    EXPECT_TRUE(m_levels.Active()) << "the rows that were read stay readable";
    EXPECT_EQ(m_levels.RecordCount(), 1);
    sharedServer().Start();
    insert(2);
}

TEST_P(ServerLoss, whoMayNotEnterIsTold)
{
    TcpListener silent; // takes the call and says nothing
    struct TCase
    {
        const char *Password;
        int Port;
        const char *Database;
        const char *Cause;
    };
    for (const auto &c : {TCase{"faux", sharedServer().Port(), "postgres", "password"},
                          {PostgresServer::Password, sharedServer().Port(), "PAS_LA", "PAS_LA"},
                          {PostgresServer::Password, 1, "postgres", "refused"},
                          {PostgresServer::Password, silent.Port(), "postgres", "timeout expired"}}) {
        TConnection connection;
        prepare(connection);
        connection.setConnectionTimeout(2);
        connection.setPassword(text(c.Password));
        aim(connection, c.Port, c.Database);
        QElapsedTimer clock;
        clock.start();
        const auto error = errorOf([&] { connection.Open(); });
        EXPECT_TRUE(contains(error, "unreachable: La base de données « "));
        EXPECT_TRUE(contains(error, "est inaccessible / "));
        EXPECT_TRUE(contains(error, c.Cause));
        EXPECT_LT(clock.elapsed(), 8000);
        EXPECT_FALSE(connection.Connected());
    }
}

INSTANTIATE_TEST_SUITE_P(All, ServerLoss, testing::Values(TWay{"QPSQL", true}, TWay{"QODBC", true}),
                         nameOfWay);
