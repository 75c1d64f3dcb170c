#include "Levels.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/descrtree/DescrTree.h>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <memory>
#include <random>
#include <tuple>

using namespace Zelmar01;

namespace {

// The same tree in the simplest form.
struct PlainNode
{
    TDescr Descr;
    PlainNode *Parent = nullptr;
    std::vector<std::unique_ptr<PlainNode>> Children;

    template<class Visit>
    void Walk(Visit visit)
    {
        visit(*this);
        for (auto &child : Children)
            child->Walk(visit);
    }

    void Cascade()
    {
        for (auto &child : Children) {
            child->Descr.LibLong = Descr.LibLong + " - " + child->Descr.Libelle;
            child->Cascade();
        }
    }
};

// Both trees, changed in step.
class TreePair
{
public:
    TreePair(const TDescrRows &rows, unsigned seed) : m_tree("Racine", rows), m_random(seed)
    {
        std::vector<PlainNode *> path{&m_plain};
        for (std::size_t row = 0; row < rows.Count(); ++row) {
            path.resize(rows.Depth(row));
            path.push_back(add(*path.back(), rows.Descr(row)));
        }
    }

    void Change()
    {
        TDescrTree::TNode node = 0;
        PlainNode *plain = nullptr;
        std::tie(node, plain) = any();
        switch (m_random() % 4) {
        case 0:
        case 1: {
            const auto label = anyLabel();
            const TDescr descr(static_cast<int>(m_random() % 400) - 20, m_tree.ID(node),
                               ChainedLabel(plain->Descr.LibLong, label), label, label.left(3),
                               plain->Descr.Code + QChar(u'A'));
            m_tree.AddChild(node, descr);
            add(*plain, descr);
            break;
        }
        case 2:
            if (plain->Parent && plain->Children.empty()) {
                m_tree.RemoveLeaf(node);
                std::erase_if(plain->Parent->Children,
                              [&](const auto &child) { return child.get() == plain; });
            } else {
                EXPECT_THROW(m_tree.RemoveLeaf(node), EInvalidOperation);
            }
            break;
        default:
            if (plain->Parent) {
                auto &descr = plain->Descr;
                descr.Libelle = anyLabel();
                descr.LibLong = LongLabel(plain->Parent->Descr.LibLong, descr.Libelle);
                m_tree.SetLevel(node, descr.Code, descr.Libelle, descr.LibCourt, descr.LibLong);
            }
            m_tree.CascadeLongLabels(node);
            plain->Cascade();
        }
    }

    void Compare()
    {
        auto node = TDescrTree::Root;
        std::size_t index = 0;
        std::map<int, TDescrTree::TNode> firstOfId;
        m_plain.Walk([&](PlainNode &plain) {
            ASSERT_NE(node, TDescrTree::None);
            if (index > 0) {
                ASSERT_EQ(m_tree.Descr(node), plain.Descr);
                firstOfId.emplace(plain.Descr.ID, node);
            }
            ASSERT_EQ(m_tree.AtIndex(index), node);
            ASSERT_EQ(m_tree.ChildCount(node), plain.Children.size());
            for (std::size_t row = 0; row < plain.Children.size(); ++row) {
                ASSERT_EQ(m_tree.Row(m_tree.Child(node, row)), row);
                ASSERT_EQ(m_tree.Parent(m_tree.Child(node, row)), node);
            }
            ++index;
            node = m_tree.Next(node);
        });
        ASSERT_EQ(node, TDescrTree::None);
        ASSERT_EQ(m_tree.Count(), index);
        ASSERT_EQ(m_tree.AtIndex(index), TDescrTree::None);
        firstOfId[0] = TDescrTree::None;
        for (int id = -30; id < 400; ++id)
            ASSERT_EQ(m_tree.Find(id), firstOfId.count(id) ? firstOfId[id] : TDescrTree::None) << id;
    }

private:
    static PlainNode *add(PlainNode &parent, const TDescr &descr)
    {
        parent.Children.push_back(std::make_unique<PlainNode>(PlainNode{descr, &parent, {}}));
        return parent.Children.back().get();
    }

    std::pair<TDescrTree::TNode, PlainNode *> any()
    {
        auto index = m_random() % m_tree.Count();
        const auto node = m_tree.AtIndex(index);
        PlainNode *found = nullptr;
        m_plain.Walk([&](PlainNode &plain) { found = index-- == 0 ? &plain : found; });
        return {node, found};
    }

    QString anyLabel()
    {
        static const QStringList labels{
            "OR", "", "Bagues d'été", "L'\"œuvre\" à 5 €", "עברית", QString(200, QChar(u'é'))};
        return labels[static_cast<int>(m_random() % 6)];
    }

    TDescrTree m_tree;
    PlainNode m_plain;
    std::mt19937 m_random;
};

} // namespace

TEST(DescrTree, staysInStepWithAPlainTree)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        TreePair pair(seed % 2 ? rowsOf(someLevels()) : TDescrRows(), seed);
        for (int change = 0; change < 400 && !testing::Test::HasFatalFailure(); ++change) {
            pair.Change();
            if (change % 10 == 0)
                pair.Compare();
        }
        pair.Compare();
    }
}

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
    TDescrTree tree("R", rowsOf(someLevels()));
    for (int round = 0; round < 3'000; ++round)
        tree.SetLevel(1, "1", QString(200, QChar(u'x')), "", "");
    EXPECT_LT(tree.Memory(), 30'000U);
    EXPECT_EQ(tree.Libelle(3), "OR");
}
