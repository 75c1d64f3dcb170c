// Codes, adding, renaming and deleting through the view, and what is left when that fails.

#include "TreeOnSQLite.h"

using namespace Zelmar01;

namespace {

class TreeChanges : public TreeOnSQLite
{
protected:
    TreeChanges() { m_view.MettreAJourArbre(false); }

    void rename(int id, const char *libelle, const char *above = "")
    {
        const auto level = m_view.Arbre()->Descr(node(id));
        m_view.MettreAJourNoeud(id, level.Code, libelle, level.LibCourt, above);
    }

    /// Everything that a failure must leave.
    std::string everything()
    {
        return shown() + stored() + rowsOf(m_levels) + textOf(m_view.DonnerIDSelectionne()).toStdString() +
               (m_levels.State() == dsBrowse ? "" : "editing");
    }
};

} // namespace

TEST_F(TreeChanges, proposesAndChecksCodes)
{
    for (const auto &[id, expected] : {std::pair(0, "3"), {3, "11"}, {12, "1A1"}, {13, "1A00"}})
        EXPECT_EQ(m_view.DonnerProchainCode(node(id)), expected) << id;
    EXPECT_EQ(m_view.DonnerProchainCode(TTreeViewDescr::NoNode), "3");

    // Taken, of a wrong form, and free.
    for (const auto &[parent, code] : {std::pair(0, "1"), {0, "55"}, {3, "1a"}, {3, "1é"}, {12, "1a0"}})
        EXPECT_FALSE(m_view.EstDisponibleCode(node(parent), code)) << code;
    for (const auto &[parent, code] : {std::pair(0, "5"), {3, "11"}, {12, "1a1"}, {12, "\\x1"}})
        EXPECT_TRUE(m_view.EstDisponibleCode(node(parent), code)) << code;
    m_given.clear();
    EXPECT_FALSE(m_view.EstDisponibleCode(node(3), "'1"));
    EXPECT_FALSE(m_view.EstDisponibleCode(node(12), "';1"));
    EXPECT_TRUE(m_given.isEmpty()) << m_given[0].toStdString();
}

TEST_F(TreeChanges, addsDepartmentsAndSections)
{
    m_view.AjouterRacineCode(20, "5", "MONTRES", "MON");
    EXPECT_EQ(said(), "inserted: 6 rows, 5 nodes");
    EXPECT_EQ(m_view.Arbre()->Descr(node(20)), TDescr(20, 0, "MONTRES", "MONTRES", "MON", "5"));
    EXPECT_FALSE(pair().Exist());
    EXPECT_EQ(m_levels.RecNo(), 1) << "read anew, in the order of the host's query";
    expectInStep();

    m_view.setAfficherCodeStat(true);
    m_view.AjouterFilsCode(21, "5b", "L'été d'\"Ève\"", "É");
    EXPECT_EQ(said(), "inserted: 7 rows, 6 nodes");
    EXPECT_EQ(m_view.Arbre()->Descr(node(21)),
              TDescr(21, 20, "MONTRES - L'été d'\"Ève\"", "L'été d'\"Ève\"", "É", "5B"));
    EXPECT_EQ(m_view.DonnerIDSelectionne(), 21);
    EXPECT_EQ(textOf(21), "5B-L'été d'\"Ève\"");
    EXPECT_EQ(m_view.Arbre()->Parent(node(21)), node(20));
    expectInStep();
}

TEST_F(TreeChanges, refusesCodesInTheseWords)
{
    const std::string bad = "information OK: Code non valide ou déjà utilisé !";
    select(3);
    m_view.AjouterFilsCode(20, "1a", "", "");
    EXPECT_EQ(said(), bad);
    m_view.AjouterRacineCode(20, "'", "", "");
    EXPECT_EQ(said(), bad);
    for (int code = 3; code <= 9; ++code)
        insert(m_connection, {100 + code, 0, "", "", "", QString::number(code)});
    for (const QChar last : QString("123456789BCDEFGHIJKLMNOPQRSTUVWXYZ"))
        insert(m_connection, {200 + last.unicode(), 3, "", "", "", QString("1") + last});
    const auto before = shown();
    m_view.AjouterFilsCode(20, "1x", "", "");
    EXPECT_EQ(said(), "information OK: Nombre maximum de rubriques atteint !");
    select(0);
    m_view.AjouterFilsCode(20, "invalid", "", "");
    EXPECT_EQ(said(), "information OK: Nombre maximum de rayons atteint !");
    EXPECT_EQ(shown(), before);
}

TEST_F(TreeChanges, renamesWithAllBelow)
{
    QString atEvent;
    QObject::connect(&m_view, &TTreeViewDescr::OnNoeudModifie, &m_view,
                     [&] { atEvent = m_view.Arbre()->LibLong(node(13)); });
    select(4);
    rename(3, "ANNEAUX");
    EXPECT_EQ(said(), "changed: 5 rows, 5 nodes");
    EXPECT_EQ(atEvent, "ANNEAUX - OR - 18 CARATS");
    EXPECT_EQ(m_view.DonnerIDSelectionne(), 3);
    EXPECT_FALSE(pair().Exist());
    expectInStep();

    m_view.setCascadeSuspendue(true);
    rename(12, "PLATINE", "ANNEAUX");
    EXPECT_EQ(m_view.Arbre()->LibLong(node(12)), "ANNEAUX - PLATINE");
    EXPECT_EQ(atEvent, "ANNEAUX - OR - 18 CARATS");
    m_view.MettreAJourFils(node(12));
    EXPECT_EQ(m_view.Arbre()->LibLong(node(13)), "ANNEAUX - PLATINE - 18 CARATS");
    expectInStep();
    m_view.MettreAJourNoeud(13, "1A0", "18 CARATS", "NEUF", "ANNEAUX - PLATINE");
    EXPECT_EQ(m_view.Arbre()->LibCourt(node(13)), "NEUF");
    expectInStep();

    m_view.MettreAJourArbre(true);
    said();
    const auto before = everything();
    m_given.clear();
    rename(12, "platine", "ANNEAUX"); // nothing but letter case
    m_view.MettreAJourNoeud(99, "9", "nobody", "", "");
    m_levels.Close();
    rename(12, "OR", "ANNEAUX");
    m_levels.Open();
    EXPECT_EQ(m_given, QStringList(m_levels.CommandText()));
    EXPECT_EQ(said(), "");
    EXPECT_TRUE(pair().Exist());
    EXPECT_EQ(everything(), before);
}

TEST_F(TreeChanges, deletesWhatHasNoChildren)
{
    const std::string question = "information OK/No: Voulez-vous supprimer ce niveau ?";
    select(3);
    m_view.SupprimerNoeudSelectionne();
    EXPECT_EQ(said(), "information OK: Impossible de supprimer !\r\nCe code statistique a des \"enfants\" !");
    select(0);
    m_view.SupprimerNoeudSelectionne();
    EXPECT_EQ(said(), "");
    m_answer = mbNo;
    select(13);
    m_view.SupprimerNoeudSelectionne();
    EXPECT_EQ(said(), question);
    EXPECT_TRUE(pair().Exist());
    m_answer = mbOK;
    m_view.SupprimerNoeudSelectionne();
    EXPECT_EQ(said(), question + "\ndeleted: 4 rows, 5 nodes");
    EXPECT_FALSE(pair().Exist());
    expectInStep();
    select(12);
    m_whileAsked = [this] { m_view.MettreAJourArbre(true); };
    m_view.SupprimerNoeudSelectionne();
    EXPECT_EQ(said(), question + "\ndeleted: 3 rows, 4 nodes");
    expectInStep();
}

TEST_F(TreeChanges, receiversMayLoadTheTreeAgain)
{
    const auto reload = [this] { m_view.MettreAJourArbre(true); };
    for (const auto event :
         {&TTreeViewDescr::OnNoeudInsere, &TTreeViewDescr::OnNoeudModifie, &TTreeViewDescr::OnNoeudSupprime})
        QObject::connect(&m_view, event, &m_view, reload);
    select(12);
    m_view.AjouterFilsCode(20, "1A1", "JAUNE", "J");
    EXPECT_EQ(m_view.Arbre()->Count(), 7U);
    EXPECT_EQ(m_view.DonnerIDSelectionne(), 20);
    expectInStep();
    rename(20, "ROSE", "BAGUES - OR");
    EXPECT_EQ(m_view.DonnerIDSelectionne(), 20);
    expectInStep();
    m_view.SupprimerNoeudSelectionne();
    EXPECT_EQ(m_view.Arbre()->Count(), 6U);
    expectInStep();

    const auto away =
        QObject::connect(&m_view, &TTreeViewDescr::OnNoeudInsere, &m_view, &TTreeViewDescr::LibereMemoire);
    m_view.AjouterRacineCode(21, "5", "MONTRES", "");
    EXPECT_EQ(m_view.Arbre(), nullptr);
    EXPECT_THROW(m_view.AjouterRacineCode(22, "6", "", ""), EInvalidOperation);
    QObject::disconnect(away);
}

TEST_F(TreeChanges, aFailureLeavesEverythingAsItWas)
{
    const std::string inUse =
        "information OK/No: Voulez-vous supprimer ce niveau ?\ninformation OK: Impossible "
        "de supprimer,\r\nCe code statistique est utilisé !";
    const std::string question = "information OK/No: Voulez-vous supprimer ce niveau ?";
    const struct
    {
        const char *What;
        std::function<void()> Work;
        std::string SaidByDatabase, SaidByFolder;
    } operations[] = {
        {"add department", [this] { m_view.AjouterRacineCode(20, "5", "MONTRES", ""); }, "", ""},
        {"add section", [this] { m_view.AjouterFilsCode(20, "1A01", "ROSE", ""); }, "", ""},
        {"rename", [this] { rename(13, "9 CARATS", "BAGUES - OR"); }, "", ""},
        {"rename, refused at the last below", [this] { rename(3, "ANNEAUX"); }, "", ""},
        {"cascade", [this] { m_view.MettreAJourFils(node(4)); }, "", ""},
        {"delete", [this] { m_view.SupprimerNoeudSelectionne(); }, inUse, question},
    };
    // Long labels that a cascade would change.
    insert(m_connection, {30, 4, "?", "A", "", "20"});
    insert(m_connection, {31, 30, "?", "B", "", "200"});
    m_view.MettreAJourArbre(false);
    m_view.setFichierSortie(inFolder("r"));
    const auto blocked = CacheFilesOf(inFolder("r")).Objects;
    execute("create table AUTRE (ID integer)");
    const char *triggers[] = {
        "create trigger T1 before insert on DESCR_ARTICLE begin select raise(abort, 'non'); end",
        "create trigger T2 before update on DESCR_ARTICLE when new.DESCR_ART_ID in (13, 31) "
        "begin select raise(abort, 'non'); end",
        "create trigger T3 before delete on DESCR_ARTICLE begin select raise(abort, 'non'); end"};
    for (const bool byDatabase : {true, false})
        for (const bool inTransaction : {false, true})
            for (const auto &operation : operations) {
                SCOPED_TRACE(std::string(operation.What) + (byDatabase ? ", database" : ", folder") +
                             (inTransaction ? ", in a transaction" : ""));
                select(13);
                if (byDatabase)
                    for (const auto *trigger : triggers)
                        execute(trigger);
                else
                    std::filesystem::create_directory(blocked.toStdString());
                const auto before = everything();
                std::optional<TTransaction> hosts;
                if (inTransaction)
                    hosts.emplace(m_connection);
                execute("insert into AUTRE values (1)");
                if (byDatabase)
                    EXPECT_THROW(operation.Work(), EDatabaseError);
                else
                    EXPECT_THROW(operation.Work(), EInOutError);
                EXPECT_EQ(said(), byDatabase ? operation.SaidByDatabase : operation.SaidByFolder);
                if (hosts)
                    hosts->Commit();
                EXPECT_EQ(everything(), before);
                EXPECT_FALSE(m_connection.InTransaction());
                for (const auto *trigger : {"T1", "T2", "T3"})
                    execute(qPrintable(QString("drop trigger if exists %1").arg(trigger)));
                std::filesystem::remove(blocked.toStdString());
            }
    EXPECT_EQ(m_connection.Execute("delete from AUTRE"), 24) << "what the host did in the same transaction";
    for (const auto &operation : operations)
        operation.Work();
    EXPECT_EQ(shown(), stored()) << "after all that each of them works";
}

TEST_F(TreeChanges, whatTheUserWasEditingIsKept)
{
    select(4);
    m_levels.Edit();
    m_levels.FieldByName("DESCR_ART_LIB_COURT").setAsString("ÉTÉ");
    m_view.AjouterRacineCode(20, "5", "MONTRES", "");
    EXPECT_NE(stored().find("{@}ÉTÉ{@}2"), std::string::npos);
    EXPECT_EQ(rowsOf(m_levels), stored());
}
