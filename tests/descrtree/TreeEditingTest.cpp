// What a user does in the window: renaming in place and the right mouse button.

#include "TreeOnSQLite.h"

#include <QLineEdit>
#include <QTest>

using namespace Zelmar01;

namespace {

class TreeEditing : public TreeOnSQLite
{
protected:
    TreeEditing()
    {
        m_view.setAfficherCodeStat(true);
        m_view.MettreAJourArbre(false);
        m_view.expandAll();
        m_view.resize(300, 300);
        m_view.show();
        m_view.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_view));
    }

    /// The open editor: one that was closed is hidden and goes a moment later.
    QLineEdit *editor() const
    {
        for (auto *line : m_view.findChildren<QLineEdit *>())
            if (!line->isHidden())
                return line;
        return nullptr;
    }

    /// Starts editing by the keyboard and waits for the editor; null when there is none after a while.
    QLineEdit *edit(int id)
    {
        select(id);
        QTest::keyClick(&m_view, Qt::Key_F2);
        return awaitEditor();
    }
    QLineEdit *awaitEditor()
    {
        // Longer than the view waits for its second start.
        return QTest::qWaitFor([this] { return editor() != nullptr; }, 100) ? editor() : nullptr;
    }
    QLineEdit *type(int id, const char *label)
    {
        auto *line = edit(id);
        if (line)
            line->setText(label);
        return line;
    }
    bool isTold()
    {
        return QTest::qWaitFor([this] { return !m_log.isEmpty(); });
    }
    bool isClosed()
    {
        return QTest::qWaitFor([this] { return editor() == nullptr; });
    }

    void click(int id, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(m_view.viewport(), button, {}, m_view.visualRect(index(id)).center());
    }

    void refuseUpdates()
    {
        execute("create trigger T before update on DESCR_ARTICLE begin select raise(abort, 'non'); end");
    }
};

const std::string refused = "error: La base de données a refusé l'opération";

} // namespace

TEST_F(TreeEditing, showsTheBareLabelAMomentLater)
{
    select(12);
    QTest::keyClick(&m_view, Qt::Key_F2);
    EXPECT_EQ(editor(), nullptr) << "the first start is refused";
    EXPECT_EQ(textOf(12), "OR");
    auto *line = awaitEditor();
    ASSERT_TRUE(line);
    EXPECT_EQ(line->text(), "OR");
    EXPECT_EQ(line->maxLength(), 200);
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_EQ(textOf(12), "1A-OR");
    EXPECT_TRUE(isClosed());

    m_view.setAfficherCodeStat(false);
    m_view.EditerNoeudSelectionne();
    EXPECT_TRUE(editor()) << "at once";
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_TRUE(isClosed());
    m_view.setAfficherCodeStat(true);
    click(12);
    click(12); // on the selected node
    EXPECT_TRUE(QTest::qWaitFor([this] { return editor() != nullptr; }));
    EXPECT_EQ(said(), "");
}

TEST_F(TreeEditing, whoMovesOnBeforeItStartsSeesTheCodeAgain)
{
    select(12);
    m_view.EditerNoeudSelectionne();
    select(13);
    EXPECT_FALSE(awaitEditor());
    EXPECT_EQ(textOf(12), "1A-OR");
    m_view.EditerNoeudSelectionne();
    m_view.MettreAJourArbre(true);
    EXPECT_FALSE(awaitEditor());
    EXPECT_EQ(textOf(13), "1A0-18 CARATS");

    ASSERT_TRUE(type(13, "half a wo"));
    m_view.MettreAJourArbre(true); // under the editor
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(textOf(13), "1A0-18 CARATS");
    EXPECT_EQ(said(), "");
    expectInStep();
}

TEST_F(TreeEditing, leavesTheRootAlone)
{
    EXPECT_FALSE(edit(0));
    m_view.EditerNoeudSelectionne();
    EXPECT_FALSE(awaitEditor());
    EXPECT_EQ(textOf(0), "Corvantix");
    m_view.setCurrentIndex({});
    m_view.EditerNoeudSelectionne();
    EXPECT_FALSE(awaitEditor());
}

TEST_F(TreeEditing, writesTheEditedNodeHoweverItEnds)
{
    int other = 4;
    const std::pair<const char *, std::function<void()>> ends[] = {
        {"Return", [this] { QTest::keyClick(editor(), Qt::Key_Return); }},
        {"click", [&] { click(other); }},
        {"selection", [&] { select(other); }}};
    for (const auto &[name, end] : ends) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(type(3, name));
        end();
        EXPECT_TRUE(isClosed());
        EXPECT_EQ(textOf(3), QString("1-") + name);
        EXPECT_EQ(m_view.Arbre()->LibLong(node(12)), QString(name) + " - OR");
        EXPECT_EQ(said(), "changed: 5 rows, 5 nodes");
        expectInStep();
    }

    // The user goes to a level that somebody has deleted, which is noticed on the way.
    other = 40;
    QObject::connect(&m_view, &TTreeViewDescr::OnNoeudModifie, &m_view, [this] {
        execute("delete from DESCR_ARTICLE where DESCR_ART_ID = 40");
        m_view.MettreAJourArbre(false);
    });
    for (const auto &[name, end] : ends) {
        SCOPED_TRACE(name);
        insert(m_connection, {40, 0, "", "", "", "8"});
        m_view.MettreAJourArbre(false);
        ASSERT_TRUE(type(12, name));
        end();
        EXPECT_TRUE(isClosed());
        EXPECT_EQ(textOf(12), QString("1A-") + name);
        expectInStep();
    }
}

TEST_F(TreeEditing, anErrorIsShownAndKeepsWhatWasTyped)
{
    refuseUpdates();
    const auto before = shown();
    ASSERT_TRUE(type(3, "ANNEAUX"));
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_TRUE(isTold());
    ASSERT_TRUE(awaitEditor());
    EXPECT_EQ(editor()->text(), "ANNEAUX");
    EXPECT_EQ(said(), refused);
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(shown(), stored());
    EXPECT_EQ(m_levels.State(), dsBrowse);

    execute("drop trigger T");
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(textOf(3), "1-ANNEAUX");
    EXPECT_EQ(said(), "changed: 5 rows, 5 nodes");
    expectInStep();

    refuseUpdates();
    ASSERT_TRUE(type(3, "BAGUES"));
    click(4); // somewhere else
    EXPECT_TRUE(isTold());
    EXPECT_EQ(said(), refused);
    ASSERT_TRUE(awaitEditor());
    EXPECT_EQ(editor()->text(), "BAGUES");
    QTest::keyClick(editor(), Qt::Key_Escape);
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(textOf(3), "1-ANNEAUX");
    EXPECT_EQ(shown(), stored());

    execute("delete from DESCR_ARTICLE where DESCR_ART_ID = 13");
    ASSERT_TRUE(type(13, "14 CARATS"));
    m_levels.Close();
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_TRUE(isTold());
    EXPECT_EQ(said(), "error: Le niveau « 1A0 » n'est plus dans la base");
}

TEST_F(TreeEditing, theRightButtonSelects)
{
    select(3);
    m_view.clearFocus();
    click(12, Qt::RightButton);
    EXPECT_EQ(m_view.DonnerIDSelectionne(), 12);
    EXPECT_TRUE(m_view.selectionModel()->isSelected(index(12)));
    EXPECT_TRUE(m_view.hasFocus());
    EXPECT_EQ(m_levels.FieldByName("DESCR_ART_ID").AsInteger(), 12);
    QTest::mouseClick(m_view.viewport(), Qt::RightButton, {}, {150, 290}); // below the last node
    EXPECT_EQ(m_view.DonnerIDSelectionne(), 12);
}

TEST_F(TreeEditing, mayGoWhileItIsEdited)
{
    auto view = std::make_unique<TTreeViewDescr>();
    view->setFichierSortie(inFolder("x"));
    view->setRequete(&m_source);
    view->MettreAJourArbre(false);
    view->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
    view->EditerNoeudSelectionne();
    view->findChild<QLineEdit *>()->setText("half a wo");
    const auto before = stored();
    view.reset();
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(said(), "");
}
