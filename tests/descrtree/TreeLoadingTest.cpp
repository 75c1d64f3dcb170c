// The view over a table and its cache files: from where it is loaded, and what stays of it.

#include "TreeOnSQLite.h"

#include <Zelmar01/core/ApplicationDirectory.h>

#include <QFile>
#include <QIcon>

using namespace Zelmar01;

namespace {

class TreeLoading : public TreeOnSQLite
{
protected:
    std::string loadError(bool forced = false)
    {
        try {
            m_view.MettreAJourArbre(forced);
        } catch (const EInOutError &error) {
            return error.what() + (" " + error.Cause().Text);
        } catch (const Exception &error) {
            return error.what();
        }
        return {};
    }
};

bool has(const std::string &text, const char *part)
{
    return text.find(part) != text.npos;
}

} // namespace

TEST_F(TreeLoading, readsTheFilesUnlessTheyCannotBeRight)
{
    const struct
    {
        const char *What;
        std::function<void()> Before;
        bool Forced;
        bool FromTable;
    } cases[] = {
        {"as it was", [] {}, false, false},
        {"forced", [] {}, true, true},
        {"a row less", [this] { execute("delete from DESCR_ARTICLE where DESCR_ART_ID = 13"); }, false, true},
        {"no tree file", [this] { QFile::remove(pair().Tree); }, false, true},
        {"no object file", [this] { QFile::remove(pair().Objects); }, false, true},
        {"another pair's tree file", [this] { put(pair().Tree, "Corvantix\r\n\tBAGUES\r\n"); }, false, true},
        {"no number", [this] { put(pair().Objects, "x\r\n"); }, false, true},
        {"another rule", [this] { m_view.setAfficherCodeStat(true); }, false, true},
        {"another root", [this] { m_view.setRacine("Codes"); }, false, false}};
    m_view.MettreAJourArbre(false);
    for (const auto &c : cases) {
        SCOPED_TRACE(c.What);
        execute("update DESCR_ARTICLE set DESCR_ART_LIBELLE = 'OR' where DESCR_ART_ID = 12");
        m_view.MettreAJourArbre(true);
        execute("update DESCR_ARTICLE set DESCR_ART_LIBELLE = 'PLATINE' where DESCR_ART_ID = 12");
        c.Before();
        m_view.MettreAJourArbre(c.Forced);
        EXPECT_EQ(m_view.Arbre()->Libelle(node(12)), c.FromTable ? "PLATINE" : "OR");
        const TNodeTextRule rule{m_view.AfficherCodeStat(), "-"};
        EXPECT_EQ(lines(levelsOf(ReadCacheFiles(pair(), rule))), shown());
    }
    EXPECT_EQ(m_view.IndexDe(TTreeViewDescr::RootNode).data(), "Corvantix");
    m_view.MettreAJourArbre(true);
    EXPECT_EQ(m_view.IndexDe(TTreeViewDescr::RootNode).data(), "Codes");
    EXPECT_EQ(textOf(12), "1A-PLATINE");
    EXPECT_EQ(said(), "");
}

TEST_F(TreeLoading, writesItsFilesWhereAndAsItIsTold)
{
    execute("delete from DESCR_ARTICLE where DESCR_ART_ID <> 3");
    SetApplicationDirectory(m_folder.Path());
    m_view.setFichierSortie({});
    m_view.MettreAJourArbre(false);
    EXPECT_EQ(m_view.FichierSortie(), inFolder("tmp"));
    m_view.setAfficherCodeStat(true);
    m_view.setSeparateur(" = ");
    for (const auto &prefix : {QString("y"), inFolder("")}) {
        m_view.setFichierSortie(prefix);
        m_view.MettreAJourFichiersArbre();
    }
    SetApplicationDirectory({});
    EXPECT_EQ(contentsOf(inFolder("tmpArbre.dat")), "Corvantix\r\n\tBAGUES\r\n");
    for (const auto *file : {"yArbre.dat", "Arbre.dat"})
        EXPECT_EQ(contentsOf(inFolder(file)), "Corvantix\r\n\t1 = BAGUES\r\n") << file;
    for (const auto *file : {"tmpObjets.dat", "yObjets.dat", "Objets.dat"})
        EXPECT_EQ(m_view.NbNoeudsDsFichier(inFolder(file)), 1) << file;
}

TEST_F(TreeLoading, showsWhatTheFilesCannotCarry)
{
    m_view.MettreAJourArbre(false);
    execute(
        "update DESCR_ARTICLE set DESCR_ART_LIBELLE = 'OR' || char(9) || 'JAUNE' where DESCR_ART_ID = 12");
    execute("update DESCR_ARTICLE set DESCR_ART_LIB_COURT = 'ذهب' where DESCR_ART_ID = 4");
    for (const bool forced : {true, false}) {
        m_view.MettreAJourArbre(forced);
        EXPECT_EQ(said(), "no cache: 1A 2");
        EXPECT_EQ(textOf(12), "OR\tJAUNE");
        expectInStep();
        EXPECT_FALSE(QFile::exists(pair().Tree) || QFile::exists(pair().Objects));
    }
}

TEST_F(TreeLoading, doesWithoutADatasetWhatTheFilesAllow)
{
    m_view.MettreAJourArbre(false);
    m_source.setDataSet(nullptr);
    for (const auto &work : {std::function<void()>([this] { m_view.MettreAJourArbre(true); }),
                             {[this] { m_view.MettreAJourFichiersArbre(); }}}) {
        work();
        EXPECT_EQ(said(), "plain OK: PAS DE REQUETE ASSOCIEE.");
        EXPECT_EQ(m_view.Arbre()->Count(), 6U);
        EXPECT_EQ(m_view.NbNoeudsDsFichier(pair().Objects), 5);
    }
    EXPECT_EQ(m_view.NbNoeudsDsBase(), -1);
    EXPECT_EQ(m_view.DonnerProchainCode(TTreeViewDescr::RootNode), "");
    EXPECT_FALSE(m_view.EstDisponibleCode(TTreeViewDescr::RootNode, "5"));
    RemoveCacheFiles(pair());
    EXPECT_TRUE(has(loadError(), "xArbre.dat"));
    EXPECT_EQ(m_view.Arbre()->Count(), 6U);
    m_view.setRequete(nullptr);
    EXPECT_TRUE(has(loadError(), "« codes »"));
    EXPECT_EQ(m_view.NbNoeudsDsBase(), -1);
    EXPECT_EQ(m_view.NbNoeudsDsFichier(pair().Objects), -2);
}

TEST_F(TreeLoading, showsTheTableWhenTheFilesFail)
{
    // In the place of a file stands what can be neither read nor replaced.
    for (const auto &path : {pair().Tree, pair().Objects}) {
        m_view.MettreAJourArbre(true);
        QFile::remove(path);
        std::filesystem::create_directory(path.toStdString());
        EXPECT_TRUE(has(loadError(), "Impossible d'écrire les fichiers de l'arbre des codes"));
        EXPECT_FALSE(std::filesystem::is_regular_file(pair().Objects.toStdString())) << "old records";
        expectInStep();
        m_view.LibereMemoire();
        std::filesystem::remove(path.toStdString());
    }
    m_view.setFichierSortie(inFolder("missing/x"));
    EXPECT_TRUE(has(loadError(), "missing/xArbre.dat"));
    EXPECT_EQ(shown(), stored());
}

TEST_F(TreeLoading, aLevelWithoutPlaceLeavesTheTreeAsItWas)
{
    m_view.MettreAJourArbre(false);
    const auto before = shown();
    insert(m_connection, {50, 49, "", "sans parent", "", "4X1"});
    EXPECT_TRUE(has(loadError(), "4X1"));
    EXPECT_EQ(shown(), before);
    execute(
        "update DESCR_ARTICLE set DESCR_ART_ID = 3000000000, DESCR_ART_CODE = '9' where DESCR_ART_ID = 50");
    EXPECT_TRUE(has(loadError(), "3000000000, code 9"));
    EXPECT_EQ(shown(), before);
    execute("delete from DESCR_ARTICLE where DESCR_ART_CODE = '9'");
    execute("update DESCR_ARTICLE set DESCR_ART_ID_PERE = null where DESCR_ART_ID = 4");
    execute("update DESCR_ARTICLE set DESCR_ART_CODE = '30' where DESCR_ART_ID = 11");
    EXPECT_EQ(loadError(true), "");
    EXPECT_EQ(m_view.Arbre()->Parent(node(11)), node(4))
        << "where the files put it, whatever its record says";
}

TEST_F(TreeLoading, takesTheRecordsOfAnObjectFile)
{
    m_view.MettreAJourArbre(false);
    const auto other = inFolder("other.dat");
    auto objects = contentsOf(pair().Objects);
    objects.replace(objects.find("12{@}3"), 2, "99");
    put(other, objects);
    EXPECT_TRUE(m_view.RemettreObjetsDepuisFichier(other));
    EXPECT_EQ(m_view.Arbre()->Code(node(99)), "1A");
    const auto before = shown();
    put(other, objects.replace(objects.find("{@}OR{@}OR{@}"), 8, "{@}ARGENT"));
    EXPECT_THROW(m_view.RemettreObjetsDepuisFichier(other), EConvertError);
    EXPECT_THROW(m_view.RemettreObjetsDepuisFichier(inFolder("none.dat")), EInOutError);
    EXPECT_EQ(shown(), before);
}

TEST_F(TreeLoading, keepsWhatWasExpandedAndSelected)
{
    m_view.MettreAJourArbre(false);
    EXPECT_TRUE(m_view.isExpanded(m_view.IndexDe(TTreeViewDescr::RootNode)));
    EXPECT_EQ(m_view.DonnerIDSelectionne(), 3) << "the first level at first";
    m_view.expand(index(12));
    select(13);
    for (const int selected : {13, 3}) { // which somebody deletes in between
        m_view.MettreAJourArbre(true);
        EXPECT_TRUE(m_view.isExpanded(index(12)));
        EXPECT_FALSE(m_view.isExpanded(index(3)));
        EXPECT_EQ(m_view.DonnerIDSelectionne(), selected);
        expectInStep();
        execute("delete from DESCR_ARTICLE where DESCR_ART_ID = 13");
    }
    execute("delete from DESCR_ARTICLE");
    m_view.MettreAJourArbre(false);
    EXPECT_EQ(m_view.Arbre()->Count(), 1U);
    EXPECT_EQ(contentsOf(pair().Objects), "0\r\n");
    m_view.AjouterFilsCode(1, "1", "rien", "");
    EXPECT_EQ(m_view.NbNoeudsDsBase(), 0) << "nothing is selected";
}

TEST_F(TreeLoading, movesTheDatasetWithTheSelection)
{
    insert(m_connection, {1, 0, "", "UN", "", "3"});
    m_view.MettreAJourArbre(false);
    const auto row = [this] { return m_levels.FieldByName("DESCR_ART_ID").AsInteger(); };
    for (const int id : {12, 1, 13, 3}) { // 12 and 13 stand before 1 and 3
        m_view.SelectNoeud(id);
        EXPECT_EQ(row(), id);
        EXPECT_EQ(m_view.DonnerIDSelectionne(), id);
    }
    m_view.SelectNoeud(99);
    EXPECT_EQ(m_view.DonnerIDSelectionne(), 3);
    select(0);
    EXPECT_EQ(row(), 13) << "the first row";
    m_levels.Last();
    m_levels.Next();
    m_view.SelectionnerNoeud(TTreeViewDescr::RootNode);
    EXPECT_EQ(row(), 1) << "a dataset at its end stays there";
    m_view.LibereMemoire();
    EXPECT_EQ(row(), 1);
    EXPECT_EQ(m_view.TrouverDescr(3), TTreeViewDescr::NoNode);
    m_view.MettreAJourArbre(false);
    m_levels.Close();
    select(12);
    EXPECT_FALSE(m_levels.Active());
    EXPECT_EQ(said(), "");
}

TEST_F(TreeLoading, outlivesItsDataSource)
{
    m_view.MettreAJourArbre(false);
    auto source = std::make_unique<TDataSource>();
    source->setDataSet(&m_levels);
    m_view.setRequete(source.get());
    source.reset();
    select(12);
    m_view.AjouterFilsCode(20, "1A1", "JAUNE", "J");
    EXPECT_EQ(said(), "information OK: Nombre maximum de rubriques atteint !");
    EXPECT_EQ(m_view.Arbre()->Count(), 6U);

    auto view = std::make_unique<TTreeViewDescr>();
    view->setRequete(&m_source);
    view->setFichierSortie(inFolder("y"));
    view->MettreAJourArbre(false);
    EXPECT_TRUE(m_levels.Active());
    view.reset();
    EXPECT_FALSE(m_levels.Active());
}

TEST_F(TreeLoading, givesEveryNodeItsImage)
{
    m_view.MettreAJourArbre(false);
    EXPECT_FALSE(index(12).data(Qt::DecorationRole).isValid());
    QPixmap red(8, 8);
    red.fill(Qt::red);
    m_view.setImages({QIcon(), QIcon(red), QIcon()});
    EXPECT_EQ(index(12).data(Qt::DecorationRole).value<QIcon>().pixmap(8, 8).toImage().pixelColor(1, 1),
              Qt::red);
    EXPECT_EQ(m_view.ImageDe(TTreeViewDescr::RootNode), 2);
    m_view.AssocierImage(TTreeViewDescr::RootNode);
    EXPECT_EQ(m_view.ImageDe(TTreeViewDescr::RootNode), -1);
    m_view.setImages({QIcon(red)});
    EXPECT_EQ(m_view.ImageDe(node(12)), 0);
}
