// What a user does to rows and cells.

#include "GridFixture.h"

#include <Zelmar01/data/DataErrors.h>

#include <QClipboard>

using namespace Zelmar01;

namespace {

class GridEdit : public GridFixture, public testing::WithParamInterface<bool>
{
protected:
    GridEdit() { show(GetParam() ? static_cast<TDataSet &>(m_memory) : m_query); }

    std::string value(const char *field) { return rows().FieldByName(text(field)).AsString().toStdString(); }
    /// What the database holds, when there is one behind the rows.
    void expectStored(const char *sql, const char *expected)
    {
        if (GetParam())
            return;
        EXPECT_EQ(stored(sql), expected);
    }
    int count() { return rows().RecordCount(); }
};

INSTANTIATE_TEST_SUITE_P(, GridEdit, testing::Values(false, true),
                         [](const auto &test) { return test.param ? "InMemory" : "SQLite"; });

// Dates and numbers as the tests read them, with plain blanks.
QString plain(QString text)
{
    return text.replace(QChar(0x202f), u' ').replace(QChar(0xa0), u' ');
}

} // namespace

TEST_P(GridEdit, cellsShowValuesInTheUsersForm)
{
    EXPECT_EQ(plain(cell(0, 2)).toStdString(), "1 250,50");
    EXPECT_EQ(plain(cell(1, 2)).toStdString(), "35,00");
    EXPECT_EQ(cell(3, 2), QString());
    EXPECT_EQ(cell(0, 3).toStdString(), "14/03/2024");
    const auto alignment = [&](int column) {
        return m_grid.model()->index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    };
    EXPECT_EQ(alignment(2) & Qt::AlignHorizontal_Mask, Qt::AlignRight);
    EXPECT_EQ(alignment(1) & Qt::AlignHorizontal_Mask, Qt::AlignLeft);
}

TEST_P(GridEdit, typingEditsAndLeavingTheRowPosts)
{
    const struct
    {
        int Column;
        const char *Typed, *Field, *Value;
    } cases[] = {
        {1, "Alliance", "NOM", "Alliance"},
        {2, "1 299,90", "PRIX", "1299.90"},
        {2, "12.5", "PRIX", "12.50"},
        {3, "28/02/2026", "ENTREE", "2026-02-28"},
    };
    for (const auto &c : cases) {
        clickCell(0, c.Column);
        EXPECT_EQ(rows().State(), dsBrowse);
        type(c.Typed);
        ASSERT_TRUE(editor());
        EXPECT_EQ(rows().State(), dsEdit);
        key(Qt::Key_Down);
        EXPECT_FALSE(editor());
        EXPECT_EQ(rows().State(), dsBrowse) << c.Typed;
        EXPECT_EQ(m_grid.currentIndex().row(), 1);
        rows().First();
        EXPECT_EQ(value(c.Field), c.Value);
    }
    // Looking changes nothing, and a click on the current cell looks.
    clickCell(1, 2);
    clickCell(1, 2);
    ASSERT_TRUE(editor());
    EXPECT_EQ(editor()->text().toStdString(), "35,00");
    EXPECT_EQ(editor()->selectedText(), editor()->text());
    key(Qt::Key_Delete); // the editor's own
    EXPECT_EQ(editor()->text(), QString());
    clickCell(2, 1);
    EXPECT_EQ(m_grid.model()->index(1, 2).data(Qt::EditRole), QVariant()) << "an emptied amount is null";
    EXPECT_TRUE(m_told.Take().isEmpty());
    expectStored("select NOM from ARTICLE where ID = 1", "Alliance");
}

TEST_P(GridEdit, whatIsRefusedKeepsTheUserThere)
{
    const std::function<void()> ways[] = {
        [this] { key(Qt::Key_Down); },   [this] { key(Qt::Key_PageDown); }, [this] { key(Qt::Key_Tab); },
        [this] { key(Qt::Key_Return); }, [this] { clickCell(2, 1); },       [this] { clickCell(0, 1); },
        [this] { m_other.setFocus(); },  [this] { clickTitle("NOM"); },
    };
    m_grid.InitGrid(text("PRIX"), text("NOM"), m_sql, true);
    for (const auto &way : ways) {
        clickCell(0, 2);
        key(Qt::Key_F2);
        ASSERT_TRUE(editor());
        editor()->selectAll();
        type("dix");
        way();
        EXPECT_EQ(m_told.Take().size(), 1);
        ASSERT_TRUE(editor());
        EXPECT_TRUE(editor()->hasFocus());
        EXPECT_EQ(editor()->text(), text("dix"));
        EXPECT_EQ(m_grid.currentIndex(), m_grid.model()->index(0, 2));
        key(Qt::Key_Escape);
        EXPECT_FALSE(editor());
        EXPECT_EQ(plain(cell(0, 2)).toStdString(), "1 250,50");
        key(Qt::Key_Escape);
        EXPECT_EQ(rows().State(), dsBrowse);
    }
    // A record that the dataset refuses: the value went to its field, the row stays.
    QObject::connect(&rows(), &TDataSet::BeforePost, &m_grid,
                     [](TDataSet *, QString &refusal) { refusal = QStringLiteral("Prix trop haut"); });
    clickCell(0, 2);
    type("9");
    key(Qt::Key_Down);
    EXPECT_EQ(m_told.Take(), QStringList(text("Prix trop haut")));
    EXPECT_EQ(m_grid.currentIndex(), m_grid.model()->index(0, 2));
    EXPECT_EQ(rows().State(), dsEdit);
    EXPECT_THROW(rows().Next(), EDatabaseError);
}

TEST_P(GridEdit, aRowIsInsertedAtTheEndAndGivenUp)
{
    key(Qt::Key_End, Qt::ControlModifier);
    key(Qt::Key_Down);
    EXPECT_EQ(rows().State(), dsInsert);
    EXPECT_EQ(m_grid.model()->rowCount(), 5);
    EXPECT_EQ(m_grid.currentIndex().row(), 4);
    key(Qt::Key_Down); // an empty one is enough
    EXPECT_EQ(m_grid.model()->rowCount(), 5);
    key(Qt::Key_Up);
    EXPECT_EQ(m_grid.model()->rowCount(), 4);
    EXPECT_EQ(m_grid.currentIndex().row(), 3);
    clickCell(0, 0);
    key(Qt::Key_Insert);
    EXPECT_EQ(m_grid.currentIndex(), m_grid.model()->index(4, 0));
    type("9");
    key(Qt::Key_Tab);
    type("Jonc");
    key(Qt::Key_Down); // posts it, and begins the next
    EXPECT_EQ(rows().State(), dsInsert);
    EXPECT_EQ(m_grid.model()->rowCount(), 6);
    key(Qt::Key_Escape);
    EXPECT_EQ(rows().State(), dsBrowse);
    EXPECT_EQ(shown(), "1 2 3 4 9");
    expectStored("select NOM from ARTICLE where ID = 9", "Jonc");
    // An empty row is given up with the focus, one with a value is not.
    key(Qt::Key_Insert);
    m_other.setFocus();
    EXPECT_EQ(m_grid.model()->rowCount(), 5);
    m_grid.setFocus();
    key(Qt::Key_Insert);
    type("10");
    m_other.setFocus();
    EXPECT_EQ(rows().State(), dsInsert);
    EXPECT_EQ(value("NOM"), "10");
    rows().Cancel();
    m_grid.setReadOnly(true);
    m_grid.setFocus();
    key(Qt::Key_Insert);
    EXPECT_EQ(rows().State(), dsBrowse);
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_P(GridEdit, escapeTakesBackTheCellThenTheRow)
{
    clickCell(0, 1);
    type("Alliance");
    key(Qt::Key_Tab); // to the price
    EXPECT_EQ(value("NOM"), "Alliance");
    type("1");
    key(Qt::Key_Escape);
    EXPECT_FALSE(editor());
    EXPECT_EQ(value("PRIX"), "1250.50");
    EXPECT_EQ(value("NOM"), "Alliance");
    key(Qt::Key_Escape);
    EXPECT_EQ(rows().State(), dsBrowse);
    EXPECT_EQ(value("NOM"), "bague");
    EXPECT_TRUE(m_grid.hasFocus());
}

TEST_P(GridEdit, deletesAfterAQuestionAndNeverByDeleteAlone)
{
    struct Grid : TzmGrid
    {
        void Supprimer() override { ++Called; }
        int Called = 0;
    };
    auto &grid = m_form.Add<Grid>();
    grid.setDataSource(&m_source);
    QCoreApplication::processEvents();
    grid.setFocus();
    key(Qt::Key_Delete);
    EXPECT_EQ(grid.Called, 1);
    grid.setDeleteEnabled(false);
    key(Qt::Key_Delete);
    EXPECT_EQ(grid.Called, 1);
    EXPECT_EQ(count(), 4);
    m_grid.setFocus();
    m_answer = mbCancel;
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(count(), 4);
    EXPECT_EQ(m_asked.size(), 1);
    m_answer = mbOK;
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(shown(), "2 3 4");
    m_grid.setOptions((m_grid.Options() | dgMultiSelect) & ~TDBGridOptions(dgConfirmDelete));
    clickCell(0, 1);
    clickCell(2, 1, Qt::ControlModifier);
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(shown(), "3");
    EXPECT_EQ(m_asked.size(), 2);
    expectStored("select count(*) from ARTICLE", "1");
}

TEST_P(GridEdit, whatMustNotBeChangedIsNot)
{
    const std::function<void()> guards[] = {
        [this] { m_grid.setReadOnly(true); },
        [this] { m_grid.Edit(false); },
        [this] { m_grid.setOptions(m_grid.Options() & ~TDBGridOptions(dgEditing)); },
        [this] { m_grid.ColumnByFieldName(text("nom")).setReadOnly(true); },
        [this] { rows().FieldByName(text("NOM")).setReadOnly(true); },
        [this] { m_source.setAutoEdit(false); },
    };
    for (const auto &guard : guards) {
        guard();
        clickCell(0, 1);
        clickCell(0, 1);
        type("x");
        key(Qt::Key_F2);
        EXPECT_FALSE(editor());
        EXPECT_EQ(rows().State(), dsBrowse);
        m_grid.setReadOnly(false);
        m_grid.Edit(true);
        m_grid.ColumnByFieldName(text("NOM")).setReadOnly(false);
        rows().FieldByName(text("NOM")).setReadOnly(false);
        m_source.setAutoEdit(true);
    }
    clickCell(0, 1);
    type("x");
    EXPECT_TRUE(editor()) << "nothing forbids it any more";
}

TEST_P(GridEdit, boxesAreToggled)
{
    const auto box = [&](int row) { return m_grid.model()->index(row, 4).data(Qt::CheckStateRole); };
    ASSERT_EQ(box(0), QVariant(Qt::Unchecked));
    EXPECT_EQ(box(3), QVariant(Qt::PartiallyChecked));
    clickCell(0, 4);
    EXPECT_EQ(box(0), QVariant(Qt::Unchecked)) << "going there changes nothing";
    clickCell(0, 4);
    EXPECT_EQ(box(0), QVariant(Qt::Checked));
    key(Qt::Key_Space);
    EXPECT_EQ(box(0), QVariant(Qt::Unchecked));
    key(Qt::Key_Space);
    key(Qt::Key_Down);
    rows().First();
    EXPECT_EQ(value("SOLDE"), "1");
}

TEST_P(GridEdit, copiesTheCellOrTheChosenRows)
{
    const auto copied = [this] {
        key(Qt::Key_C, Qt::ControlModifier);
        return QGuiApplication::clipboard()->text().toStdString();
    };
    clickCell(0, 2);
    EXPECT_EQ(copied(), "1250,50");
    m_grid.ColumnByFieldName(text("SOLDE")).setVisible(false);
    m_grid.setOptions(m_grid.Options() | dgMultiSelect);
    clickCell(0, 2);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(copied(), "1\tbague\t1250,50\t14/03/2024\n2\tÉtui\t35,00\t01/12/2023\n");
    m_grid.setOptions(m_grid.Options() & ~TDBGridOptions(dgMultiSelect));
    m_grid.Edit(false);
    clickCell(3, 1);
    EXPECT_EQ(copied(), "4\tCollier\t\t02/01/2024\n");
}

TEST_P(GridEdit, theEditorClosesWithTheGrid)
{
    clickCell(0, 1);
    // "ê" as the dead keys of a French keyboard give it.
    QInputMethodEvent composed;
    composed.setCommitString(text("ê"));
    QCoreApplication::sendEvent(&m_grid, &composed);
    ASSERT_TRUE(editor());
    EXPECT_EQ(editor()->text(), text("ê"));
    m_other.setFocus();
    QCoreApplication::processEvents();
    EXPECT_FALSE(editor());
    EXPECT_TRUE(m_other.hasFocus());
    EXPECT_EQ(value("NOM"), "ê");
    EXPECT_EQ(rows().State(), dsEdit);
}

// A row that moves to another place when it is posted does not lead a click astray.
TEST_F(GridFixture, aClickMeansTheRowThatIsClicked)
{
    show(m_memory);
    m_grid.InitGrid(text("PRIX"), text("NOM"), {}, true);
    clickTitle("NOM");
    ASSERT_EQ(shown(), "1 3 4 2");
    clickCell(0, 1);
    type("zircon");
    clickCell(2, 1);
    EXPECT_EQ(shown(), "3 4 1 2");
    EXPECT_EQ(rows().FieldByName(text("ID")).AsInteger(), 4);
    EXPECT_EQ(m_grid.currentIndex().row(), 1);
}
