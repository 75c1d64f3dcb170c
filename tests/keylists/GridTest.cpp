// The way of Enter, the options, the columns, drawing and what assistive technologies are told.

#include "GridFixture.h"

#include <QAccessible>
#include <QPainter>

using namespace Zelmar01;

namespace {

class Grid : public GridFixture
{
protected:
    Grid() { show(m_query); }

    /// Row and column of the current cell: "0,1".
    std::string place() const
    {
        const auto index = m_grid.currentIndex();
        EXPECT_EQ(index.row(), m_query.RecNo() - 1);
        EXPECT_EQ(index.column(), m_grid.SelectedIndex());
        return std::to_string(index.row()) + ',' + std::to_string(index.column());
    }
    void set(TDBGridOption option, bool on)
    {
        m_grid.setOptions(on ? m_grid.Options() | option : m_grid.Options() & ~TDBGridOptions(option));
    }
    QImage picture() { return m_grid.grab().toImage(); }
};

} // namespace

TEST_F(Grid, enterGoesThroughTheWritableCells)
{
    m_grid.Columns()[3].setReadOnly(true);
    m_grid.Columns()[1].setVisible(false);
    const char *const places[] = {"0,0", // the first Enter only begins
                                  "0,2", "0,4", "1,2", "1,4", "2,2"};
    for (const auto *expected : places) {
        key(Qt::Key_Return);
        EXPECT_EQ(place(), expected);
    }
    // An editor that Enter ends goes the same way.
    type("7,5");
    key(Qt::Key_Enter);
    EXPECT_EQ(place(), "2,4");
    EXPECT_FALSE(editor());
    EXPECT_EQ(m_query.State(), dsEdit);
    key(Qt::Key_Return);
    EXPECT_EQ(place(), "3,2");
    EXPECT_EQ(stored("select PRIX from ARTICLE where ID = 3"), "7.50");
    // At the last record it stays there.
    key(Qt::Key_Return);
    key(Qt::Key_Return);
    EXPECT_EQ(place(), "3,2");
    m_grid.Edit(false);
    key(Qt::Key_Return);
    EXPECT_EQ(place(), "3,2") << "whole rows: nothing";
}

TEST_F(Grid, enterBehindTheLastWritableCellAsksWhereToGo)
{
    struct Asking : TzmGrid
    {
        int ValiderInsererLigneSaisie() override
        {
            Default = TzmGrid::ValiderInsererLigneSaisie();
            return Answer;
        }
        int Default = 0, Answer = 99;
    };
    auto &grid = m_form.Add<Asking>();
    grid.setDataSource(&m_source);
    QCoreApplication::processEvents();
    grid.setFocus();
    grid.Columns()[4].setReadOnly(true);
    grid.setSelectedIndex(3);
    key(Qt::Key_Return);
    key(Qt::Key_Return);
    EXPECT_EQ(grid.Default, 5) << "the position, which counts the indicator, and one";
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(1, 1)) << "the first cell but one of the next row";
    grid.setSelectedIndex(3);
    grid.Answer = 2;
    key(Qt::Key_Return);
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(1, 2));
    // Without a writable cell behind the first the nearest column there is.
    grid.Answer = 99;
    for (int column = 1; column < 5; ++column)
        grid.Columns()[column].setReadOnly(true);
    key(Qt::Key_Return);
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(2, 4));
}

TEST_F(Grid, keysGoThroughCellsAndRows)
{
    m_grid.Columns()[1].setVisible(false);
    const struct
    {
        int Key;
        Qt::KeyboardModifiers Modifiers;
        const char *Place;
    } moves[] = {
        {Qt::Key_Right, {}, "0,2"},
        {Qt::Key_Left, {}, "0,0"},
        {Qt::Key_Left, {}, "0,0"},
        {Qt::Key_End, {}, "0,4"},
        {Qt::Key_Tab, {}, "1,0"},
        {Qt::Key_Backtab, Qt::ShiftModifier, "0,4"},
        {Qt::Key_Down, {}, "1,4"},
        {Qt::Key_End, Qt::ControlModifier, "3,4"},
        {Qt::Key_Home, {}, "3,0"},
        {Qt::Key_Up, {}, "2,0"},
        {Qt::Key_PageUp, {}, "0,0"},
        {Qt::Key_PageDown, {}, "3,0"},
        {Qt::Key_Home, Qt::ControlModifier, "0,0"},
    };
    for (const auto &move : moves) {
        key(move.Key, move.Modifiers);
        EXPECT_EQ(place(), move.Place) << move.Key;
    }
    // The ends of the way that Tab goes.
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_FALSE(m_grid.hasFocus());
    m_grid.setFocus();
    set(dgTabs, false);
    key(Qt::Key_Tab);
    EXPECT_TRUE(m_other.hasFocus());
    // The host moves the cursor, or another control.
    m_query.Last();
    EXPECT_EQ(place(), "3,0");
}

TEST_F(Grid, allOptionsAct)
{
    const auto differs = [this](TDBGridOption option, bool on) {
        const auto before = picture();
        set(option, on);
        QCoreApplication::processEvents();
        return picture() != before;
    };
    EXPECT_TRUE(differs(dgColLines, false));
    EXPECT_TRUE(differs(dgRowLines, false));
    EXPECT_TRUE(differs(dgIndicator, false));
    EXPECT_TRUE(differs(dgTitles, false));
    m_grid.setOptions(dgTitles | dgEditing);
    EXPECT_EQ(m_grid.horizontalHeader()->sectionResizeMode(0), QHeaderView::Fixed);

    set(dgAlwaysShowEditor, true);
    m_grid.setFocus();
    ASSERT_TRUE(editor());
    EXPECT_TRUE(editor()->hasFocus());
    key(Qt::Key_Right); // from a text that is chosen as a whole
    key(Qt::Key_Down);
    EXPECT_EQ(place(), "1,1");
    ASSERT_TRUE(editor());
    EXPECT_EQ(editor()->text(), text("Étui"));
    key(Qt::Key_Home); // within the text, and so the next arrow
    key(Qt::Key_Right);
    EXPECT_EQ(place(), "1,1");
    key(Qt::Key_Left);
    key(Qt::Key_Left);
    EXPECT_EQ(place(), "1,0");
    set(dgAlwaysShowEditor, false);
    EXPECT_FALSE(editor());

    m_other.setFocus();
    EXPECT_TRUE(differs(dgAlwaysShowSelection, true));
    m_grid.setFocus();
    m_grid.Edit(false);
    EXPECT_EQ(m_grid.Options(), dgTitles | dgAlwaysShowSelection | dgRowSelect);
    EXPECT_TRUE(m_grid.selectionModel()->isRowSelected(1));
    m_grid.Edit(true);
    EXPECT_EQ(m_grid.Options(), dgTitles | dgAlwaysShowSelection | dgEditing);

    set(dgCancelOnExit, false);
    key(Qt::Key_Insert);
    m_other.setFocus();
    EXPECT_EQ(m_query.State(), dsInsert);
    m_query.Cancel();

    set(dgMultiSelect, true);
    clickCell(0, 0);
    clickCell(2, 0, Qt::ShiftModifier);
    clickCell(1, 0, Qt::ControlModifier);
    EXPECT_EQ(m_grid.SelectedRows(), QList<int>({0, 2}));
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_grid.SelectedRows().size(), 4);
    key(Qt::Key_Up);
    EXPECT_EQ(m_grid.SelectedRows(), QList<int>({0}));

    const auto middle = [&](int row) { return m_grid.visualRect(m_grid.model()->index(row, 0)).center(); };
    QTest::mousePress(m_grid.viewport(), Qt::LeftButton, {}, middle(1));
    QMouseEvent drag(QEvent::MouseMove, middle(3), m_grid.viewport()->mapToGlobal(middle(3)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(m_grid.viewport(), &drag);
    QTest::mouseRelease(m_grid.viewport(), Qt::LeftButton, {}, middle(3));
    EXPECT_EQ(m_grid.SelectedRows(), QList<int>({1, 2, 3}));
    EXPECT_EQ(m_grid.currentIndex().row(), 3);
    EXPECT_FALSE(m_grid.EditorMode());
}

TEST_F(Grid, theIndicatorChoosesARowAndADoubleClickOpensACell)
{
    show(m_query);
    set(dgIndicator, true);
    set(dgMultiSelect, true);
    QCoreApplication::processEvents();
    auto *indicator = m_grid.verticalHeader();
    const auto press = [&](int row, Qt::KeyboardModifiers modifiers) {
        QTest::mouseClick(indicator->viewport(), Qt::LeftButton, modifiers,
                          {5, m_grid.visualRect(m_grid.model()->index(row, 0)).center().y()});
    };
    press(1, {});
    press(3, Qt::ShiftModifier);
    EXPECT_EQ(m_grid.SelectedRows(), QList<int>({1, 2, 3}));
    EXPECT_EQ(m_grid.currentIndex().row(), 3);

    set(dgEditing, true);
    clickCell(0, 1);
    QTest::mouseDClick(m_grid.viewport(), Qt::LeftButton, {},
                       m_grid.visualRect(m_grid.model()->index(0, 1)).center());
    ASSERT_TRUE(editor());
    EXPECT_EQ(editor()->text(), text("bague"));
}

TEST_F(Grid, columnsComeFromLines)
{
    const QStringList lines{text("NOM;120;ReadOnly;Désignation ; du bijou"), text("ID;;Hidden"), text("PRIX"),
                            text("ABSENT")};
    m_grid.setColumns(lines);
    EXPECT_EQ(m_grid.property("Columns").toStringList(), lines);
    EXPECT_EQ(m_grid.model()->headerData(0, Qt::Horizontal).toString(), text("Désignation ; du bijou"));
    EXPECT_EQ(m_grid.columnWidth(0), 120);
    EXPECT_TRUE(m_grid.isColumnHidden(1));
    EXPECT_EQ(cell(0, 0), text("bague"));
    EXPECT_EQ(cell(0, 3), QString());
    // A width that the user gives is the column's from then on.
    auto *titles = m_grid.horizontalHeader();
    const QPoint edge(titles->sectionViewportPosition(0) + 119, titles->height() / 2);
    QTest::mousePress(titles->viewport(), Qt::LeftButton, {}, edge);
    QTest::mouseMove(titles->viewport(), edge + QPoint(30, 0));
    QTest::mouseRelease(titles->viewport(), Qt::LeftButton, {}, edge + QPoint(30, 0));
    EXPECT_EQ(m_grid.Columns()[0].Width(), 150);
    QTest::mouseDClick(titles->viewport(), Qt::LeftButton, {}, edge + QPoint(30, 0));
    const int needed = QFontMetrics(titles->font()).horizontalAdvance(text("Désignation ; du bijou"));
    EXPECT_GT(m_grid.Columns()[0].Width(), needed);
    EXPECT_LT(m_grid.Columns()[0].Width(), needed + 20) << "not as wide as its title and texts";
    EXPECT_TRUE(m_told.Take().isEmpty());

    m_grid.setColumns({text("PRIX;large;ReadOnly Caché"), text("NOM")});
    EXPECT_EQ(m_told.Take().size(), 1);
    EXPECT_EQ(m_grid.Columns().Count(), 2);
    EXPECT_TRUE(m_grid.Columns()[0].ReadOnly());
    m_grid.setColumns({});
    EXPECT_EQ(m_grid.Columns().Count(), 5) << "the dataset's fields";
    EXPECT_TRUE(m_grid.property("Columns").toStringList().isEmpty());
    EXPECT_THROW(m_grid.Columns()[5], EInvalidOperation);
    EXPECT_THROW(m_grid.ColumnByFieldName(text("PRI")), EInvalidOperation);

    m_grid.setDataSource(nullptr);
    EXPECT_EQ(m_grid.Columns().Count(), 0);
    m_grid.setColumns({text("NOM;80")});
    EXPECT_EQ(m_grid.model()->columnCount(), 1) << "titles stand without data, too";
}

TEST_F(Grid, aHostDrawsCells)
{
    QStringList drawn;
    QObject::connect(
        &m_grid, &TzmGrid::OnDrawColumnCell, &m_grid,
        [&](QPainter *canvas, const QRect &rect, int place, TGridColumn *column, TGridDrawState state) {
            if (column->FieldName() != u"PRIX")
                return;
            drawn << m_query.ValueAt(place, column->Field()->Index()).value<TDecimal>().ToText();
            canvas->fillRect(rect.adjusted(-50, -50, 50, 50), state & gdSelected ? Qt::red : Qt::green);
        });
    clickCell(1, 2);
    drawn.clear();
    const auto seen = picture();
    EXPECT_EQ(drawn, QStringList({text("1250.50"), text("35.00"), text("189.90"), text("0")}));
    const auto at = [&](int row, int column) {
        return seen.pixelColor(m_grid.viewport()->mapTo(
            &m_grid, m_grid.visualRect(m_grid.model()->index(row, column)).center()));
    };
    EXPECT_EQ(at(0, 2), QColor(Qt::green));
    EXPECT_EQ(at(1, 2), QColor(Qt::red));
    EXPECT_NE(at(1, 3), QColor(Qt::red)) << "drawn beyond the cell";
    QObject::connect(&m_grid, &TzmGrid::OnDrawColumnCell, &m_grid,
                     [](QPainter *, const QRect &, int, TGridColumn *, TGridDrawState) {
                         throw EInvalidOperation("non");
                     });
    picture();
    picture();
    EXPECT_EQ(m_told.Take().size(), 1);
}

TEST_F(Grid, assistiveTechnologiesReadAndMoveIt)
{
    auto *interface = QAccessible::queryAccessibleInterface(&m_grid);
    ASSERT_TRUE(interface && interface->tableInterface());
    EXPECT_EQ(interface->role(), QAccessible::Table);
    auto *table = interface->tableInterface();
    auto *cell = table->cellAt(1, 1);
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->text(QAccessible::Name), text("Étui"));
    EXPECT_EQ(cell->rect().topLeft(),
              m_grid.viewport()->mapToGlobal(m_grid.visualRect(m_grid.model()->index(1, 1)).topLeft()));
    m_grid.setCurrentIndex(m_grid.model()->index(2, 1)); // as they do
    EXPECT_EQ(place(), "2,1");
    key(Qt::Key_F2);
    ASSERT_TRUE(editor());
    EXPECT_EQ(editor()->accessibleName(), text("NOM"));
}

TEST_F(Grid, followsWhateverHappensToItsDataset)
{
    clickCell(2, 1);
    type("Bracelet");
    m_query.Close();
    EXPECT_FALSE(editor());
    EXPECT_EQ(m_grid.model()->rowCount(), 0);
    EXPECT_EQ(m_grid.Columns().Count(), 5) << "the titles stay";
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    key(Qt::Key_Insert);
    key(Qt::Key_C, Qt::ControlModifier);
    clickTitle("NOM");
    m_query.Open();
    EXPECT_EQ(shown(), "1 2 3 4");
    {
        TClientDataSet other;
        other.CreateDataSet({{text("CODE"), ftString, 8, false, false}});
        m_source.setDataSet(&other);
        EXPECT_EQ(m_grid.Columns().Count(), 1);
        type("AB");
        EXPECT_EQ(other.State(), dsInsert) << "typing in an empty table";
        key(Qt::Key_Up);
    }
    EXPECT_EQ(m_grid.model()->rowCount(), 0);
    key(Qt::Key_Down);
    EXPECT_EQ(picture().isNull(), false);
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_F(GridFixture, aMillionRowsAreSeenFromTheFirstToTheLast)
{
    m_query.setCommandText(text("with recursive N(ID) as (select 1 union all select ID + 1 from N "
                                "where ID < 1000000) select ID from N"));
    show(m_query);
    EXPECT_EQ(cell(0, 0), text("1"));
    key(Qt::Key_End, Qt::ControlModifier);
    const auto last = m_grid.visualRect(m_grid.model()->index(999'999, 0));
    EXPECT_TRUE(m_grid.viewport()->rect().contains(last)) << "not scrolled to the end";
    EXPECT_EQ(m_grid.indexAt(last.center()).row(), 999'999);
    key(Qt::Key_PageUp);
    EXPECT_EQ(m_grid.currentIndex().row(), 999'999 - m_grid.rowsInPage());
    EXPECT_GE(m_grid.visualRect(m_grid.currentIndex()).top(), 0);
}
