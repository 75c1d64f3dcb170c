#include "TreeOnEngines.h"

#include <Zelmar01/descrtree/DescrQueries.h>

#include <map>
#include <random>

using namespace Zelmar01;

namespace {

class TreeLife : public TreeOnEngines
{
protected:
    /// The texts that the tree itself gave, without those of the dataset.
    static QStringList questions(const QStringList &commands)
    {
        QStringList own;
        for (const auto &command : commands)
            if (command.contains("descr_article", Qt::CaseInsensitive) && !command.startsWith("select *"))
                own << command;
        return own;
    }
};

// The levels in a plain list, in the order of their codes.
using TPlainList = std::map<QString, TDescr>;

QString longLabel(const TPlainList &list, const QString &code, const QString &label)
{
    const auto above = list.find(code.chopped(1));
    return above == list.end() ? label : above->second.LibLong + " - " + label;
}

void rename(TPlainList &list, const QString &code, const QString &label)
{
    if (list[code].Libelle.compare(label, Qt::CaseInsensitive) == 0)
        return;
    list[code].Libelle = label;
    for (auto &[below, level] : list)
        if (below.startsWith(code))
            level.LibLong = longLabel(list, below, level.Libelle);
}

bool hasChildren(const TPlainList &list, const QString &code)
{
    const auto next = list.upper_bound(code);
    return next != list.end() && next->first.startsWith(code);
}

QString nextCode(const TPlainList &list, const QString &above)
{
    for (const QChar last : QString(above.isEmpty() ? "123456789" : "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"))
        if (!list.contains(above + last))
            return above + last;
    return {};
}

std::vector<TDescr> levelsOf(const TPlainList &list)
{
    std::vector<TDescr> levels;
    for (const auto &entry : list)
        levels.push_back(entry.second);
    return levels;
}

} // namespace

TEST_P(TreeLife, asksInTheseWords)
{
    m_given.clear();
    m_atServer.clear();
    m_view.MettreAJourArbre(false);
    m_view.DonnerProchainCode(TTreeViewDescr::RootNode);
    m_view.DonnerProchainCode(node(12));
    m_view.EstDisponibleCode(node(12), "1a0");
    m_view.MettreAJourArbre(true);
    const QStringList words{CountQuery(), ChildCodesQuery(0), ChildCodesQuery(12), CodeQuery("1a0"),
                            LevelsQuery()};
    EXPECT_EQ(questions(m_given).join('\n').toStdString(), words.join('\n').toStdString());
    EXPECT_EQ(questions(m_atServer).join('\n').toStdString(),
              QString(words.join('\n')).remove("with (nolock)").toStdString());
}

TEST_P(TreeLife, letterCaseIsNothingToACode)
{
    EXPECT_FALSE(m_view.EstDisponibleCode(node(3), "1a"));
    EXPECT_TRUE(m_view.EstDisponibleCode(node(3), "1b"));
    insert(m_connection, {50, 3, "", "", "", "11"});
    insert(m_connection, {51, 3, "", "", "", "12"});
    for (const QChar last : QString("3456789b"))
        insert(m_connection, {60 + last.unicode(), 3, "", "", "", QString("1") + last});
    EXPECT_EQ(m_view.DonnerProchainCode(node(3)), "1C") << "10 to 19, 1A and 1b are taken, in this order";
}

TEST_P(TreeLife, isThatOfAPlainList)
{
    std::mt19937 random(11);
    const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random()) % limit; };
    const QString labels[] = {"OR",     "or",       "L'été", "\"18\" CARATS",    "Œuvre à 5 €",
                              "a  b",   "%_\\ ? ;", "שרשרת", QString(200, u'É'), "",
                              "ARGENT", "1-A"};
    TPlainList list;
    for (const auto &level : someLevels())
        list[level.Code] = level;
    m_view.setAfficherCodeStat(true);
    for (int round = 0; round < 150; ++round) {
        SCOPED_TRACE(round);
        const auto &label = labels[below(std::size(labels))];
        const auto chosen = std::next(list.begin(), static_cast<int>(below(list.size())));
        const bool isRoot = below(5) == 0;
        const auto level = isRoot ? TDescr() : chosen->second;
        select(level.ID);
        switch (below(6)) {
        case 0:
        case 1: {
            auto code = nextCode(list, level.Code);
            EXPECT_EQ(m_view.DonnerProchainCode(node(level.ID)), code);
            if (below(3) == 0)
                code = level.Code + QString("1a5Bz9").at(static_cast<int>(below(6)));
            m_view.AjouterFilsCode(100 + round, code, label, "c");
            code = code.toUpper();
            const bool isAdded = (!isRoot || code < "A") && !code.isEmpty() && !list.contains(code);
            EXPECT_EQ(said().starts_with("inserted"), isAdded) << code.toStdString();
            if (isAdded)
                list[code] = TDescr(100 + round, level.ID, longLabel(list, code, label), label, "c", code);
            break;
        }
        case 2:
        case 3:
            if (isRoot)
                break;
            m_view.MettreAJourNoeud(level.ID, level.Code, label, level.LibCourt,
                                    m_view.Arbre()->LibLong(m_view.Arbre()->Parent(node(level.ID))));
            rename(list, level.Code, label);
            break;
        case 4:
            m_view.SupprimerNoeudSelectionne();
            if (!isRoot && !hasChildren(list, level.Code) && list.size() > 1)
                list.erase(chosen);
            break;
        default:
            m_view.MettreAJourArbre(below(2) == 0);
            EXPECT_TRUE(::levelsOf(*m_view.Arbre()) == levelsOf(list));
            EXPECT_TRUE(!files().Exist() ||
                        ::levelsOf(ReadCacheFiles(files(), {true, "-"})) == levelsOf(list));
        }
        said();
        ASSERT_EQ(shown(), lines(levelsOf(list)));
        ASSERT_EQ(stored(), shown());
        ASSERT_EQ(m_levels.State(), dsBrowse);
    }
    EXPECT_GT(list.size(), 20U);
    EXPECT_EQ(inDatabase("with recursive BELOW(ID, DEPTH, LABELS) as ("
                         "select DESCR_ART_ID, 1, cast(DESCR_ART_LIBELLE as text) from DESCR_ARTICLE "
                         "where DESCR_ART_ID_PERE = 0 union all "
                         "select d.DESCR_ART_ID, DEPTH + 1, LABELS || ' - ' || d.DESCR_ART_LIBELLE "
                         "from DESCR_ARTICLE d join BELOW on d.DESCR_ART_ID_PERE = BELOW.ID) "
                         "select count(*) from BELOW join DESCR_ARTICLE d on d.DESCR_ART_ID = BELOW.ID "
                         "where LABELS = DESCR_ART_LIB_LONG and DEPTH = length(DESCR_ART_CODE)"),
              QString::number(list.size()));
}

INSTANTIATE_TEST_SUITE_P(All, TreeLife,
                         testing::Values(TWay{"QSQLITE", false}, TWay{"QPSQL", true}, TWay{"QODBC", true}),
                         nameOfWay);
