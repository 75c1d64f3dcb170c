// What a database refuses or a server does to the tree.

#include "TreeOnEngines.h"

using namespace Zelmar01;

namespace {

class TreeRefusals : public TreeOnEngines
{
};

class TreeServer : public TreeOnEngines
{
protected:
    TreeServer() { m_before = shown(); }

    static void restart()
    {
        sharedServer().Kill();
        sharedServer().Start();
    }
    void rename(int id, const char *libelle)
    {
        m_view.MettreAJourNoeud(id, m_view.Arbre()->Code(node(id)), libelle, "", "");
    }

    std::string m_before;
};

const std::string question = "information OK/No: Voulez-vous supprimer ce niveau ?";

} // namespace

TEST_P(TreeRefusals, aLevelInUseStays)
{
    for (const auto *when : {"", " deferrable initially deferred"}) { // at the deletion, or at the commit
        SCOPED_TRACE(when);
        m_connection.Execute(
            QString("create table STOCK (ID integer references DESCR_ARTICLE %1)").arg(when));
        m_connection.Execute("insert into STOCK values (13)");
        select(13);
        try {
            m_view.SupprimerNoeudSelectionne();
            ADD_FAILURE() << "deleted";
        } catch (const EDatabaseError &error) {
            EXPECT_TRUE(
                QString::fromStdString(error.Cause().Text).contains("foreign key", Qt::CaseInsensitive))
                << error.Cause().Text;
        }
        EXPECT_EQ(said(), question + "\ninformation OK: Impossible de supprimer,\r\nCe code statistique est "
                                     "utilisé !");
        EXPECT_EQ(m_view.DonnerIDSelectionne(), 13);
        expectInStep();
        m_connection.Execute("drop table STOCK");
    }
    m_view.SupprimerNoeudSelectionne();
    EXPECT_EQ(said(), question + "\ndeleted: 4 rows, 5 nodes");
    expectInStep();
}

TEST_P(TreeServer, anOperationThatMeetsItsEndCanBeDoneAgain)
{
    const std::function<void()> operations[] = {[this] { m_view.DonnerProchainCode(node(12)); },
                                                [this] { m_view.EstDisponibleCode(node(12), "1A5"); },
                                                [this] { m_view.NbNoeudsDsBase(); },
                                                [this] { m_view.MettreAJourArbre(true); },
                                                [this] { m_view.AjouterRacineCode(20, "5", "MONTRES", ""); },
                                                [this] { rename(3, "ANNEAUX"); },
                                                [this] {
                                                    select(20);
                                                    m_view.SupprimerNoeudSelectionne();
                                                }};
    for (const auto &operation : operations) {
        SCOPED_TRACE(&operation - operations);
        m_before = shown();
        restart();
        EXPECT_THROW(operation(), EDatabaseUnreachable);
        EXPECT_EQ(shown(), m_before);
        said();
        operation();
        EXPECT_EQ(shown(), stored());
        EXPECT_EQ(m_levels.State(), dsBrowse);
    }
}

TEST_P(TreeServer, itsEndInTheMiddleOfACascadeLeavesNothingHalfDone)
{
    int updates = 0;
    QObject receiver;
    QObject::connect(&m_connection, &TConnection::OnCommand, &receiver, [&](const QString &text) {
        if (text.startsWith("update") && ++updates == 3)
            restart();
    });
    EXPECT_THROW(rename(3, "ANNEAUX"), EDatabaseUnreachable);
    EXPECT_EQ(shown(), m_before);
    EXPECT_EQ(stored(), m_before);
    EXPECT_EQ(rowsOf(m_levels), m_before);
    EXPECT_EQ(m_levels.State(), dsBrowse);
    rename(3, "ANNEAUX");
    EXPECT_EQ(m_view.Arbre()->LibLong(node(13)), "ANNEAUX - OR - 18 CARATS");
    expectInStep();
}

TEST_P(TreeServer, withoutItTheTreeIsReadFromItsFiles)
{
    sharedServer().Kill();
    EXPECT_THROW(m_view.MettreAJourArbre(true), EDatabaseUnreachable);
    EXPECT_EQ(shown(), m_before);
    EXPECT_TRUE(m_levels.Active()) << "nothing was touched";
    m_view.LibereMemoire();
    EXPECT_THROW(m_view.MettreAJourArbre(false), EDatabaseUnreachable);
    EXPECT_EQ(shown(), m_before);
    EXPECT_FALSE(m_levels.Active());
    select(12);
    EXPECT_THROW(m_view.DonnerProchainCode(node(12)), EDatabaseUnreachable);
    EXPECT_THROW(m_view.AjouterFilsCode(20, "1A1", "JAUNE", ""), EDatabaseUnreachable);
    EXPECT_EQ(said(), "");
    sharedServer().Start();
    m_view.AjouterFilsCode(20, "1A1", "JAUNE", "");
    EXPECT_EQ(said(), "inserted: 6 rows, 5 nodes");
    expectInStep();
}

INSTANTIATE_TEST_SUITE_P(All, TreeRefusals,
                         testing::Values(TWay{"QSQLITE", false}, TWay{"QPSQL", true}, TWay{"QODBC", true}),
                         nameOfWay);
INSTANTIATE_TEST_SUITE_P(All, TreeServer, testing::Values(TWay{"QPSQL", true}, TWay{"QODBC", true}),
                         nameOfWay);
