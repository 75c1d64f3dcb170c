#include "Levels.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/descrtree/DescrTree.h>

#include <gtest/gtest.h>

#include <limits>

using namespace Zelmar01;

TEST(DescrTree, hangsLevelsByTheLengthOfTheirCodes)
{
    // A code that is not its parent's and an identifier of nobody: the order alone decides.
    const TDescrTree tree(
        "R", rowsOf({{7, 99, "", "a", "", "1"}, {8, 98, "", "b", "", "X0"}, {9, 0, "", "c", "", ""}}));
    EXPECT_EQ(tree.Parent(2), 1U);
    EXPECT_EQ(tree.IDPere(2), 98);
    EXPECT_EQ(tree.Parent(3), TDescrTree::Root);
    EXPECT_EQ(tree.Text(TDescrTree::Root, {}), "R");

    try {
        const TDescrTree orphaned("R", rowsOf({{1, 0, "", "a", "", "1"}, {2, 1, "", "b", "", "1AB"}}));
        FAIL() << "a level without a parent";
    } catch (const EConvertError &error) {
        EXPECT_STREQ(error.what(), "Niveau sans parent au rang 2, code 1AB");
    }
}

TEST(DescrTree, findsIdentifiersThatAreFarApart)
{
    const int least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
    TDescrTree tree(
        "R", rowsOf({{most, 0, "", "a", "", "1"}, {least, 0, "", "b", "", "2"}, {5, 0, "", "c", "", "3"}}));
    EXPECT_EQ(tree.Find(most), 1U);
    EXPECT_EQ(tree.Find(least), 2U);
    EXPECT_EQ(tree.Find(-1), TDescrTree::None);
    tree.RemoveLeaf(2);
    EXPECT_EQ(tree.Find(least), TDescrTree::None);
    EXPECT_EQ(tree.AtIndex(2), 3U);

    TDescrTree close("R", rowsOf({{10, 0, "", "a", "", "1"}, {11, 0, "", "b", "", "2"}}));
    for (const int id : {most, least, 9, 100'000})
        EXPECT_EQ(close.Descr(close.AddChild(1, {id, 10, "", "", "", ""})).ID, id);
    EXPECT_EQ(close.ID(close.Find(9)), 9);
    EXPECT_EQ(close.ID(close.Find(most)), most);
    EXPECT_EQ(close.Find(8), TDescrTree::None);
}

TEST(DescrTree, findsTheFirstOfLevelsWithOneIdentifier)
{
    TDescrTree tree("R", rowsOf({{4, 0, "", "a", "", "1"}, {5, 0, "", "b", "", "2"}}));
    const auto added = tree.AddChild(1, {5, 4, "", "c", "", "1A"});
    EXPECT_EQ(tree.Find(5), added) << "which stands before the other";
    EXPECT_THROW(tree.RemoveLeaf(1), EInvalidOperation);
    tree.RemoveLeaf(added);
    EXPECT_EQ(tree.Find(5), 2U);
}

TEST(DescrTree, passesOverWhatTheVisitorRefuses)
{
    const TDescrTree tree("R", rowsOf(someLevels()));
    QStringList visited;
    tree.WalkLongLabels(1, "ANNEAUX", [&](TDescrTree::TNode node, const QString &libLong) {
        visited << libLong;
        return tree.Code(node) != "1A";
    });
    EXPECT_EQ(visited, QStringList({"ANNEAUX - ARGENT", "ANNEAUX - OR"}));
    EXPECT_EQ(tree.LibLong(2), "BAGUES - ARGENT");
}

TEST(DescrTree, winsBackTheMemoryOfReplacedTexts)
{
    auto levels = someLevels();
    levels[3].Libelle = "עברית";
    TDescrTree tree("R", rowsOf(levels));
    levels[0].Libelle = QString(200, QChar(u'x'));
    for (int round = 0; round < 3'000; ++round)
        tree.SetLevel(1, "1", levels[0].Libelle, "BAG", "BAGUES");
    EXPECT_LT(tree.Memory(), 30'000U);
    EXPECT_EQ(levelsOf(tree), levels);
}
