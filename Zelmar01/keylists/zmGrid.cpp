#include <Zelmar01/keylists/zmGrid.h>

#include "GridEditor.h"
#include "GridHeaders.h"

#include "GridModel.h"
#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/LeaveWatch.h>
#include <Zelmar01/core/WidgetBoxes.h>

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>

namespace Zelmar01 {

namespace {

constexpr TDBGridOptions startOptions = dgEditing | dgTitles | dgIndicator | dgColumnResize | dgColLines |
                                        dgRowLines | dgTabs | dgConfirmDelete | dgCancelOnExit;
constexpr TColor startFixedColor(0x00FFCCCC), startTitleColor(0x00800000); // the second one is navy
constexpr int cellMargin = 4;

QFont startTitleFont()
{
    QFont font(QStringLiteral("Tahoma"));
    font.setPixelSize(11);
    return font;
}

// How many characters a column shows that nobody has given a width.
int charactersOf(const TField &field)
{
    constexpr int unknownText = 20, leastText = 6, mostText = 30;
    switch (field.DataType()) {
    case ftString:
        return field.Size() == 0 ? unknownText : std::clamp(field.Size(), leastText, mostText);
    case ftInteger:
        return 9;
    case ftFloat:
    case ftBCD:
    case ftBytes:
        return 12;
    case ftBoolean:
        return 5;
    case ftDate:
        return 11;
    case ftTime:
        return 9;
    case ftDateTime:
        return 17;
    }
    return unknownText;
}

} // namespace

TzmGrid::TzmGrid(QWidget *parent)
    : TLongTableView(parent), m_model(new TGridModel(m_columns, this)), m_look(new TFixedLook),
      m_options(startOptions)
{
    UseMessageBoxes();
    // Before the editor's own: a new row is empty as long as the editor holds what was typed.
    connect(new TLeaveWatch(this), &TLeaveWatch::OnLeave, this,
            [this] { ShowingExceptions([this] { leave(); }); });
    m_editor = new TGridEditor(viewport());
    connect(m_editor, &TGridEditor::OnKey, this, [this](QKeyEvent *event) { takeEditorKey(*event); });

    *m_look = {startFixedColor, startTitleColor, true, true};
    setHorizontalHeader(new TTitleHeader(*m_look, this));
    auto *indicator = new TIndicatorHeader(
        [this](QPainter &painter, const QRect &part) { paintIndicator(painter, part); }, this);
    setVerticalHeader(indicator);
    // The corner between the two is one of them.
    if (auto *corner = findChild<QAbstractButton *>({}, Qt::FindDirectChildrenOnly))
        corner->installEventFilter(this);
    setModel(m_model);
    setTitleFont(startTitleFont());
    setFocusPolicy(Qt::StrongFocus);

    // A click on a title would choose the column.
    disconnect(horizontalHeader(), SIGNAL(sectionPressed(int)), this, nullptr);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int section) { tryTo([&] { TitleClick(m_columns[section]); }); });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section, int, int width) {
        if (!m_isSizing && width > 0)
            m_columns[section].setWidth(width);
        placeEditor();
    });
    connect(indicator, &TIndicatorHeader::OnPress, this, [this](int y, Qt::KeyboardModifiers modifiers) {
        const auto rows = rowsIn(QRect(0, y, 1, 1));
        if (rows.First <= rows.Last)
            tryTo([&] { moveTo(rows.First, choosingOf(modifiers)); });
    });
    connect(m_model, &TGridModel::OnRowsChanging, this, &TzmGrid::rowsChanging);
    connect(m_model, &TGridModel::OnRowsChanged, this, &TzmGrid::rowsChanged);
    connect(&m_columns, &TGridColumns::OnReset, this, &TzmGrid::layOutColumns);
    connect(&m_columns, &TGridColumns::OnColumnChange, this, &TzmGrid::layOutColumns);
    takeOptions();
}

TzmGrid::~TzmGrid()
{
    ShowingExceptions([this] { dropIndex(); });
    setDataSource(nullptr);
}

void TzmGrid::setDataSource(TDataSource *source)
{
    if (m_source == source)
        return;
    if (m_source)
        m_source->disconnect(this);
    m_source = source;
    m_editor->setDataSource(source);
    if (source) {
        connect(source, &TDataSource::DataSetReplaced, this, &TzmGrid::followSource);
        connect(source, &TDataSource::OnStateChange, this, &TzmGrid::followState);
        connect(source, &TDataSource::OnDataChange, this, [this](TDataSource *, const TField *field) {
            if (!field)
                follow();
        });
        connect(source, &QObject::destroyed, this, &TzmGrid::followSource);
    }
    followSource();
}

void TzmGrid::followSource()
{
    m_model->setDataSet(DataSet());
    followState();
}

void TzmGrid::followState()
{
    viewport()->update();
    verticalHeader()->viewport()->update();
    if (std::exchange(m_wasOpen, isOpen()) != isOpen())
        QTimer::singleShot(0, this, &TzmGrid::layOutColumns); // when the host has prepared the new fields
}

void TzmGrid::rowsChanging()
{
    ++m_showing;
}

void TzmGrid::rowsChanged()
{
    --m_showing;
    m_drawingFailed = false;
    follow();
    viewport()->update();
    verticalHeader()->viewport()->update();
}

// Makes the dataset's current record the current row.
void TzmGrid::follow()
{
    if (m_showing > 0)
        return;
    const QScopedValueRollback showing(m_showing, m_showing + 1);
    const int place = isOpen() ? DataSet()->ShownPlace() : -1;
    const auto index = place < 0 ? QModelIndex() : m_model->index(place, m_column);
    const auto before = currentIndex();
    if (index.row() != before.row() || !index.isValid())
        m_editor->Close();
    if (index != before || (index.isValid() && !selectionModel()->isSelected(index))) {
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                     (selectionBehavior() == SelectRows
                                                          ? QItemSelectionModel::Rows
                                                          : QItemSelectionModel::NoUpdate));
        m_anchor = place;
        viewport()->update();
        verticalHeader()->viewport()->update();
    }
    scrollTo(index);
    placeEditor();
    showEditorAlways();
}

// Somebody else than the grid's own mouse and keyboard has moved the current cell: an assistive technology.
void TzmGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    TLongTableView::currentChanged(current, previous);
    if (m_showing > 0 || !current.isValid())
        return;
    if (!tryTo([&] {
            moveTo(current.row());
            setSelectedIndex(current.column());
        }))
        follow();
}

// Columns.

void TzmGrid::setColumns(const QStringList &lines)
{
    ShowingExceptions([&] { m_columns.FromLines(lines); });
}

void TzmGrid::layOutColumns()
{
    const QScopedValueRollback sizing(m_isSizing, true);
    for (int i = 0; i < m_columns.Count(); ++i) {
        const auto &column = m_columns[i];
        setColumnHidden(i, !column.IsShown());
        if (column.IsShown())
            setColumnWidth(i, column.Width() > 0 ? column.Width() : widthOf(column));
    }
    const int column = nearestShown(m_column, 1);
    if (column != m_column) {
        m_editor->Close();
        m_column = column;
    }
    follow();
    viewport()->update();
}

// The rows have no part in it, which would take a look at each.
int TzmGrid::widthOf(const TGridColumn &column) const
{
    const QFontMetrics titles(horizontalHeader()->font());
    const int title = titles.horizontalAdvance(column.Title() + QStringLiteral(" >"));
    const auto *field = column.Field();
    const int text = field ? charactersOf(*field) * fontMetrics().horizontalAdvance(u'0') : 0;
    return std::max(title, text) + 2 * cellMargin + 1;
}

// The next visible column from that one on, or else the last before it.
int TzmGrid::nearestShown(int column, int step) const
{
    column = std::clamp(column, 0, std::max(m_columns.Count() - 1, 0));
    for (const int direction : {step, -step})
        for (int i = column; i >= 0 && i < m_columns.Count(); i += direction)
            if (m_columns[i].IsShown())
                return i;
    return 0;
}

void TzmGrid::setSelectedIndex(int column)
{
    column = nearestShown(column, 1);
    if (column == m_column)
        return;
    m_editor->Commit();
    m_editor->Close();
    m_column = column;
    follow();
}

// Options and looks.

void TzmGrid::setOptions(TDBGridOptions options)
{
    m_editor->Commit();
    m_options = options;
    takeOptions();
}

void TzmGrid::resetOptions()
{
    setOptions(startOptions);
}

void TzmGrid::Edit(bool editing)
{
    setOptions(m_options & ~TDBGridOptions(editing ? dgRowSelect : dgEditing));
    setOptions(m_options | (editing ? dgEditing : dgRowSelect));
}

void TzmGrid::takeOptions()
{
    const bool choosesRows = m_options & (dgRowSelect | dgMultiSelect);
    m_editor->Close();
    horizontalHeader()->setVisible(m_options & dgTitles);
    verticalHeader()->setVisible(m_options & dgIndicator);
    horizontalHeader()->setSectionResizeMode(m_options & dgColumnResize ? QHeaderView::Interactive
                                                                        : QHeaderView::Fixed);
    m_look->ColLines = m_options & dgColLines;
    m_look->RowLines = m_options & dgRowLines;
    setTabKeyNavigation(m_options & dgTabs);
    setSelectionBehavior(choosesRows ? SelectRows : SelectItems);
    setSelectionMode(m_options & dgMultiSelect ? ExtendedSelection : SingleSelection);
    selectionModel()->clearSelection();
    updateGeometries();
    follow();
    viewport()->update();
    updateFixed();
}

void TzmGrid::updateFixed()
{
    horizontalHeader()->viewport()->update();
    verticalHeader()->viewport()->update();
    if (auto *corner = findChild<QAbstractButton *>({}, Qt::FindDirectChildrenOnly))
        corner->update();
}

TColor TzmGrid::FixedColor() const
{
    return m_look->Ground;
}

void TzmGrid::setFixedColor(TColor color)
{
    m_look->Ground = color;
    updateFixed();
}

void TzmGrid::resetFixedColor()
{
    setFixedColor(startFixedColor);
}

QFont TzmGrid::TitleFont() const
{
    return horizontalHeader()->font();
}

void TzmGrid::setTitleFont(const QFont &font)
{
    horizontalHeader()->setFont(font);
    layOutColumns();
}

void TzmGrid::resetTitleFont()
{
    setTitleFont(startTitleFont());
}

TColor TzmGrid::TitleFont_Color() const
{
    return m_look->Text;
}

void TzmGrid::setTitleFont_Color(TColor color)
{
    m_look->Text = color;
    updateFixed();
}

void TzmGrid::resetTitleFont_Color()
{
    setTitleFont_Color(startTitleColor);
}

bool TzmGrid::eventFilter(QObject *watched, QEvent *event)
{
    auto *corner = qobject_cast<QAbstractButton *>(watched);
    if (!corner || event->type() != QEvent::Paint)
        return TLongTableView::eventFilter(watched, event);
    QPainter painter(corner);
    m_look->Fill(painter, corner->rect(), palette(), false);
    return true;
}

void TzmGrid::setDefaultDrawing(bool defaultDrawing)
{
    m_defaultDrawing = defaultDrawing;
    viewport()->update();
}

void TzmGrid::changeEvent(QEvent *event)
{
    TLongTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layOutColumns();
}

void TzmGrid::updateGeometries()
{
    TLongTableView::updateGeometries();
    placeEditor();
}

void TzmGrid::scrollContentsBy(int dx, int dy)
{
    TLongTableView::scrollContentsBy(dx, dy);
    placeEditor();
}

} // namespace Zelmar01
