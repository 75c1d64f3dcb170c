#include "GridFixture.h"

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/keylists/FieldLists.h>

using namespace Zelmar01;

namespace {

using GridSort = GridFixture;

// The fields of the temporary index, its descending ones, and whether it compares without letter case.
std::string indexOf(const TClientDataSet &rows)
{
    if (rows.IndexName() != u"IDTEMP")
        return "none";
    const auto &def = rows.IndexDefs().Find(QStringLiteral("IDTEMP"));
    return (def.Fields + u'|' + def.DescFields).toStdString() +
           (def.Options.testFlag(ixCaseInsensitive) ? " folded" : "");
}

} // namespace

TEST(FieldLists, holdNamesThatBeginWithOneAnother)
{
    const struct
    {
        const char *Field, *List;
        int Position;
        const char *Fronted, *Removed;
    } cases[] = {
        {"NOM", "NOM", 1, "NOM", ""},
        {"NOM", "NOM_LONG;NOM", 10, "NOM;NOM_LONG", "NOM_LONG"},
        {"NOM_LONG", "NOM;NOM_LONG;PRIX", 5, "NOM_LONG;NOM;PRIX", "NOM;PRIX"},
        {"PRIX", "NOM;PRIX", 5, "PRIX;NOM", "NOM"},
        {"nom", "NOM;PRIX", 0, "NOM;PRIX", "NOM;PRIX"},
    };
    for (const auto &c : cases) {
        const QString list = QString::fromLatin1(c.List);
        const int position = ChercherChamp(QString::fromLatin1(c.Field), list);
        EXPECT_EQ(position, c.Position) << c.List;
        auto fronted = list, removed = list;
        MettreEnTete(position, fronted);
        SupprimerChampAtPos(position, removed);
        EXPECT_EQ(fronted.toStdString(), c.Fronted);
        EXPECT_EQ(removed.toStdString(), c.Removed);
    }
}

TEST_F(GridSort, aQueryGoesThroughTheStatesThatAllColumnsShare)
{
    show(m_query);
    m_grid.InitGrid(text("upper(NOM), ID"), text("nom"), m_sql, true);
    const struct
    {
        const char *Column, *Order, *Title, *Shown;
    } clicks[] = {
        {"NOM", " order by upper(NOM), ID", "NOM >", "1 3 4 2"},
        {"ID", " order by ID desc", "ID <", "4 3 2 1"},
        {"ID", "", "ID", "1 2 3 4"},
        {"ID", " order by ID", "ID >", "1 2 3 4"},
        {"PRIX", " order by PRIX desc", "PRIX <", "1 3 2 4"},
        {"PRIX", "", "PRIX", "1 2 3 4"},
    };
    for (const auto &click : clicks) {
        m_query.Last();
        clickTitle(click.Column);
        EXPECT_EQ(m_query.CommandText(), m_sql + text(click.Order));
        EXPECT_EQ(title(click.Column).toStdString(), click.Title);
        EXPECT_EQ(shown(), click.Shown);
        EXPECT_EQ(m_grid.currentIndex().row(), 0) << "not on the first record";
        EXPECT_EQ(m_query.RecNo(), 1);
    }
    EXPECT_EQ(title("NOM").toStdString(), "NOM >") << "another column's mark went";
    m_grid.BloquerTris();
    QSignalSpy clicked(&m_grid, &TzmGrid::OnTitleClick);
    clickTitle("PRIX");
    EXPECT_EQ(m_query.CommandText(), m_sql);
    EXPECT_EQ(clicked.count(), 1);
    // The keyboard sorts by the current column.
    m_grid.InitGrid({}, {}, m_sql, true);
    m_grid.setSelectedIndex(2);
    key(Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(title("PRIX").toStdString(), "PRIX >");
    EXPECT_EQ(m_grid.SelectedIndex(), 2);
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_F(GridSort, aTextThatTheDatabaseRefusesChangesNothing)
{
    show(m_query);
    m_grid.InitGrid(text("NOWHERE"), text("NOM"), m_sql, true);
    m_query.FieldByName(text("PRIX")).setDisplayLabel(text("Prix TTC"));
    m_grid.Columns()[1].setWidth(150);
    clickTitle("PRIX");
    EXPECT_EQ(title("PRIX").toStdString(), "Prix TTC >");
    m_query.setRecNo(3);
    clickTitle("NOM");
    EXPECT_EQ(m_told.Take().size(), 1);
    EXPECT_THROW(m_grid.TitleClick(m_grid.ColumnByFieldName(text("NOM"))), EDatabaseError);
    EXPECT_EQ(m_query.CommandText(), m_sql + text(" order by PRIX"));
    EXPECT_EQ(title("NOM"), text("NOM"));
    EXPECT_EQ(m_grid.SortState(), 1);
    EXPECT_EQ(shown(), "4 2 3 1");
    EXPECT_EQ(m_grid.currentIndex().row(), 2);
    clickTitle("PRIX");
    EXPECT_EQ(title("PRIX").toStdString(), "Prix TTC <") << "label lost when the query was opened again";
    EXPECT_EQ(m_grid.columnWidth(1), 150);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(GridSort, theTextsMayHaveOtherFieldsThanTheQueryHad)
{
    show(m_query);
    m_grid.InitGrid({}, {}, text("select ID, PRIX, NOM from ARTICLE"), true);
    clickTitle("NOM");
    EXPECT_EQ(shown(), "3 4 1 2");
    EXPECT_EQ(title("NOM"), text("NOM"));
    clickTitle("NOM");
    EXPECT_EQ(shown(), "2 1 4 3");
    EXPECT_EQ(title("NOM"), text("NOM <"));
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_F(GridSort, aSlowDatabaseShowsAWaitCursorAndEndsInTime)
{
    show(m_query);
    m_grid.InitGrid({}, {}, m_sql, true);
    Qt::CursorShape cursor{};
    QObject::connect(&m_connection, &TConnection::OnCommand, &m_grid, [&] {
        if (const auto *shown = QGuiApplication::overrideCursor())
            cursor = shown->shape();
    });
    m_query.setRecNo(3);
    m_connection.setCommandTimeout(1);
    TConnection other;
    other.setDatabaseName(m_connection.DatabaseName());
    other.Execute(text("begin exclusive"));
    clickTitle("PRIX");
    EXPECT_EQ(cursor, Qt::WaitCursor);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(m_told.Take().size(), 1);
    EXPECT_EQ(shown(), "1 2 3 4") << "the rows went with the lock";
    EXPECT_EQ(m_query.RecNo(), 3);
    other.Execute(text("rollback"));
    clickTitle("PRIX");
    EXPECT_EQ(shown(), "4 2 3 1");
}

TEST_F(GridSort, aClientDataSetGetsAnIndexOfTwoFields)
{
    show(m_memory);
    m_grid.InitGrid(text("PRIX"), text("Nom"), {}, true);
    m_memory.setRecNo(2); // ID 2
    const struct
    {
        const char *Column, *Index, *Shown;
    } clicks[] = {
        {"NOM", "NOM| folded", "1 3 4 2"},
        {"NOM", "NOM|NOM", "2 1 4 3"}, // with letter case
        {"NOM", "NOM| folded", "1 3 4 2"},
        {"ID", "NOM;PRIX| folded", "3 1 4 2"}, // every other column means the expression
        {"PRIX", "PRIX;NOM|PRIX", "1 3 2 4"},
        {"NOM", "NOM;PRIX|PRIX;NOM", "2 1 4 3"},
        {"ENTREE", "PRIX;NOM|NOM", "4 2 3 1"},
    };
    for (const auto &click : clicks) {
        clickTitle(click.Column);
        EXPECT_EQ(indexOf(m_memory), click.Index);
        EXPECT_EQ(shown(), click.Shown) << click.Index;
        EXPECT_EQ(title(click.Column), text(click.Column)) << "no marks on this path";
        EXPECT_EQ(m_memory.FieldByName(text("ID")).AsInteger(), 2) << "current row lost";
        EXPECT_EQ(m_grid.currentIndex().row(), m_memory.RecNo() - 1);
    }
    // A third field, after another InitGrid, is refused without a word.
    m_grid.InitGrid(text("ENTREE"), text("NOM"), {}, true);
    clickTitle("ID");
    EXPECT_EQ(indexOf(m_memory), "PRIX;NOM|NOM");
    EXPECT_TRUE(m_asked.isEmpty() && m_told.Take().isEmpty());
}

TEST_F(GridSort, anIndexThatCannotBeIsToldAndTheSortGoesOn)
{
    show(m_memory);
    m_grid.InitGrid({}, {}, {}, true);
    clickTitle("NOM"); // no field is called "**--**"
    EXPECT_EQ(m_asked, QStringList(text("TfmPanelVide TriGrilleColonne 02")));
    EXPECT_EQ(shown(), "1 2 3 4");
    m_memory.DeleteIndex(text("IDTEMP"));
    m_memory.AddIndex(text("AUTRE"), text("PRIX"));
    m_asked.clear();
    clickTitle("NOM");
    EXPECT_EQ(m_asked, QStringList({text("TfmPanelVide TriGrilleColonne 01"),
                                    text("TfmPanelVide TriGrilleColonne 02")}));
    m_grid.TriGrilleColonne(m_memory, {}); // still the expression
    m_grid.InitGrid(text("x"), text("y"), {}, true);
    EXPECT_EQ(m_memory.IndexDefs().IndexOf(text("AUTRE")), 0);
}

TEST_F(GridSort, theIndexGoesWithTheGrid)
{
    show(m_query);
    for (const bool active : {true, false, true}) { // the second grid leaves its index to the third one
        m_memory.LoadFrom(m_query);
        TDataSource source;
        source.setDataSet(&m_memory);
        {
            TzmGrid grid;
            grid.setDataSource(&source);
            grid.InitGrid(text("ID"), text("NOM"), {}, true);
            grid.TitleClick(grid.ColumnByFieldName(text("NOM")));
            EXPECT_EQ(indexOf(m_memory), "NOM| folded");
            m_memory.setActive(active);
        }
        EXPECT_EQ(m_memory.IndexDefs().Count(), active ? 0 : 1);
        EXPECT_EQ(m_memory.IndexName().isEmpty(), active);
    }
}

TEST_F(GridSort, whatIsBeingEditedIsPostedFirst)
{
    show(m_query);
    m_grid.InitGrid({}, {}, m_sql, true);
    clickCell(0, 1);
    type("Zirconia");
    clickTitle("NOM");
    EXPECT_EQ(stored("select NOM from ARTICLE where ID = 1"), "Zirconia");
    EXPECT_EQ(shown(), "3 4 1 2");
    // A refused record keeps its order, and the user in it.
    key(Qt::Key_F2);
    ASSERT_TRUE(editor());
    editor()->selectAll();
    key(Qt::Key_Backspace);
    clickTitle("NOM");
    EXPECT_EQ(m_told.Take().size(), 1);
    EXPECT_EQ(shown(), "3 4 1 2");
    EXPECT_EQ(m_query.State(), dsEdit);
    EXPECT_EQ(m_grid.SortState(), 1);
}
