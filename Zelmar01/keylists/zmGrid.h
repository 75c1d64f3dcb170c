#pragma once

#include <Zelmar01/core/Colors.h>
#include <Zelmar01/data/DataSource.h>
#include <Zelmar01/keylists/GridColumns.h>
#include <Zelmar01/keylists/GridOrder.h>
#include <Zelmar01/keylists/LongTableView.h>

#include <functional>
#include <memory>

namespace Zelmar01 {

class TClientDataSet;
class TGridEditor;
class TGridModel;
class TQuery;
struct TFixedLook;

/// How a cell is drawn.
enum TGridDrawStateFlag {
    gdSelected = 1, ///< it is chosen, by itself or with its row
    gdFocused = 2,  ///< it is the current cell
};
using TGridDrawState = QFlags<TGridDrawStateFlag>;
Q_DECLARE_OPERATORS_FOR_FLAGS(TGridDrawState)

/// A grid over a dataset: a row a record, whose rows a click on a title sorts, and whose cells are edited in
/// place.
///
/// The current row is the dataset's current record, in both directions. Leaving a row posts a changed record;
/// when that is refused the user stays there and is told why. A new row is begun at the end, with Insert or
/// with Down on the last row, and given up with Escape. Rows have one height and cost nothing until they are
/// painted, however many there are.
///
/// Sorting has to be allowed by InitGrid(). A TQuery is opened again with another "order by"; a
/// TClientDataSet gets the index "IDTEMP" of up to two fields and keeps its current record. Any other dataset
/// cannot be sorted.
///
/// Operations called by the host raise; what the user starts goes to the exception display. The host owns the
/// data source and the dataset.
class TzmGrid : public TLongTableView
{
    Q_OBJECT
    Q_PROPERTY(QStringList Columns READ columnLines WRITE setColumns)
    Q_PROPERTY(TDBGridOptions Options READ Options WRITE setOptions RESET resetOptions)
    Q_PROPERTY(QColor FixedColor READ shownFixedColor WRITE setFixedColor RESET resetFixedColor)
    Q_PROPERTY(QFont TitleFont READ TitleFont WRITE setTitleFont RESET resetTitleFont)
    Q_PROPERTY(
        QColor TitleFont_Color READ shownTitleColor WRITE setTitleFont_Color RESET resetTitleFont_Color)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
    Q_PROPERTY(bool DefaultDrawing READ DefaultDrawing WRITE setDefaultDrawing)
    Q_PROPERTY(bool DeleteEnabled READ DeleteEnabled WRITE setDeleteEnabled)
public:
    enum TDBGridOption {
        dgEditing = 0x0001,             ///< cells can be edited, and rows inserted
        dgAlwaysShowEditor = 0x0002,    ///< the editor stands open wherever the user goes, also with arrows
        dgTitles = 0x0004,              ///< there are titles
        dgIndicator = 0x0008,           ///< a column in front marks the current row and its state
        dgColumnResize = 0x0010,        ///< the user can change the widths of columns
        dgColLines = 0x0020,            ///< lines between columns
        dgRowLines = 0x0040,            ///< lines between rows
        dgTabs = 0x0080,                ///< Tab goes from cell to cell
        dgRowSelect = 0x0100,           ///< whole rows are chosen, and no cell is edited
        dgAlwaysShowSelection = 0x0200, ///< the current cell is marked without the focus, too
        dgConfirmDelete = 0x0400,       ///< asks before Ctrl+Delete deletes
        dgCancelOnExit = 0x0800,        ///< leaving the grid gives up a new row in which nothing was entered
        dgMultiSelect = 0x1000,         ///< several rows can be chosen, with Ctrl and Shift
    };
    Q_DECLARE_FLAGS(TDBGridOptions, TDBGridOption)
    Q_FLAG(TDBGridOptions)

    explicit TzmGrid(QWidget *parent = nullptr);
    /// Takes the index of its own sorting away from a client dataset.
    ~TzmGrid() override;

    TDataSource *DataSource() const { return m_source; }
    void setDataSource(TDataSource *source);
    /// Null without a data source or a dataset behind it.
    TDataSet *DataSet() const { return m_source ? m_source->DataSet() : nullptr; }

    void keyboardSearch(const QString &) override {} // letters begin to edit

    // Columns.

    TGridColumns &Columns() { return m_columns; }
    const TGridColumns &Columns() const { return m_columns; }
    /// The columns for forms, a line each: "FIELD;width;words;title". Width, words and title may be left out;
    /// the words are ReadOnly and Hidden, and the title may hold further ";". Without lines there is a column
    /// for each field. What a line says wrongly goes to the exception display, and the rest of it counts.
    void setColumns(const QStringList &lines);
    /// The column on a field, in any letter case. Raises EInvalidOperation when there is none.
    TGridColumn &ColumnByFieldName(const QString &name) const { return m_columns.ByFieldName(name); }

    /// The current column, from 0. A place out of range means the nearest column, an invisible one the next
    /// visible one.
    int SelectedIndex() const { return m_column; }
    void setSelectedIndex(int column);

    // Appearance and behaviour.

    TDBGridOptions Options() const { return m_options; }
    void setOptions(TDBGridOptions options);
    /// Switches between editing cells (true) and choosing whole rows.
    void Edit(bool editing);

    /// The ground of titles and indicator column, RGB CC CC FF at first.
    TColor FixedColor() const;
    void setFixedColor(TColor color);
    /// The font of the titles and its colour: Tahoma of 11 pixels in navy blue at first.
    QFont TitleFont() const;
    void setTitleFont(const QFont &font);
    TColor TitleFont_Color() const;
    void setTitleFont_Color(TColor color);

    bool ReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly) { m_readOnly = readOnly; }
    /// Whether the grid draws its cells before OnDrawColumnCell; true at first.
    bool DefaultDrawing() const { return m_defaultDrawing; }
    void setDefaultDrawing(bool defaultDrawing);
    /// Draws a cell as the grid does by itself; for handlers of OnDrawColumnCell.
    void DefaultDrawColumnCell(QPainter *canvas, const QRect &rect, int place, const TGridColumn &column,
                               TGridDrawState state);

    /// Whether the Delete key calls Supprimer(); true at first.
    bool DeleteEnabled() const { return m_deleteEnabled; }
    void setDeleteEnabled(bool enabled) { m_deleteEnabled = enabled; }

    // Sorting.

    /// Sets sorting up. On a query the column of `field` sorts by `expression` and every other one by its own
    /// field; on a client dataset it is the other way round: `field` sorts by itself, and every other column
    /// by `expression`, which must be the name of a field then. An empty expression or field means none that
    /// there is. `sql` is the query's text without any "order by". The order shown stays as it is, and on a
    /// client dataset its two fields stay known: one more field than these is refused without a message.
    void InitGrid(const QString &expression, const QString &field, const QString &sql, bool enabled);
    /// Title clicks sort no longer.
    void BloquerTris() { m_sortEnabled = false; }

    /// What a click on a column's title does: emits OnTitleClick and sorts, when that is allowed. A changed
    /// record is posted first. On a query the clicked column's title becomes the field's display label with
    /// " >" (ascending), " <" (descending) or no mark, in turn over all columns; other titles keep theirs. A
    /// text that the database refuses leaves query, order, title and state as they were and raises.
    virtual void TitleClick(TGridColumn &column);
    /// Sorts a client dataset as a click on that field's column does.
    void TriGrilleColonne(TClientDataSet &dataSet, const QString &fieldName);
    /// 0 unsorted, 1 ascending, -1 descending. It is that of the next query; client datasets only count on.
    int SortState() const { return m_sortState; }

    // Editing.

    /// What Enter does from the second time on: goes to the next visible, writable column. Behind the last
    /// one it asks ValiderInsererLigneSaisie() where to go on; when that is behind the last column too, it
    /// goes to the next record, to its first such column but the very first.
    void EditingChanged();
    /// Called when Enter finds no further column to write in: a host checks or inserts the row here and
    /// returns the column to go on with, from 0. The grid itself returns the place after the next.
    virtual int ValiderInsererLigneSaisie();
    /// The Delete key. The grid itself does nothing.
    virtual void Supprimer() {}

    /// Whether the editor of the current cell is open.
    bool EditorMode() const;
    /// Opens it, if the cell can be edited, or ends it; a value that the field refuses raises, and the editor
    /// stays open.
    void setEditorMode(bool open);

    /// Begins a new row at the end.
    void InsererLigne();
    /// Deletes the current row, or all chosen ones, once the user has agreed (see dgConfirmDelete).
    void SupprimerLignes();
    /// The places of the chosen rows, from 0: with dgMultiSelect those that the user chose, else the current.
    QList<int> SelectedRows() const;
    /// The chosen rows as text, a line each with the columns separated by tabs; without dgRowSelect and
    /// several chosen rows the current cell. Numbers have no separators between thousands.
    QString CopiedText() const;

signals:
    void OnTitleClick(Zelmar01::TGridColumn *column);
    /// A cell has been drawn, unless DefaultDrawing is off: the host draws over it, or all of it. `place` is
    /// that of the row, for TDataSet::ValueAt(). The painter has the cell's font and pen.
    void OnDrawColumnCell(QPainter *canvas, const QRect &rect, int place, Zelmar01::TGridColumn *column,
                          Zelmar01::TGridDrawState state);

protected:
    virtual void DrawColumnCell(QPainter *canvas, const QRect &rect, int place, TGridColumn &column,
                                TGridDrawState state);

    void paintCell(QPainter &painter, const QRect &place, const QModelIndex &index) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    int sizeHintForColumn(int column) const override;
    bool edit(const QModelIndex &, EditTrigger, QEvent *) override { return false; }
    using TLongTableView::edit;

protected slots:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    /// How a move treats the rows that were chosen.
    enum TChoosing { ChooseCurrent, ChooseUpTo, ChooseToo };

    // The data.
    void followSource();
    void followState();
    void follow();
    void rowsChanging();
    void rowsChanged();
    void layOutColumns();
    int widthOf(const TGridColumn &column) const;
    int nearestShown(int column, int step) const;
    QStringList columnLines() const { return m_columns.ToLines(); }

    // Appearance.
    QColor shownFixedColor() const { return FixedColor().Resolved(palette()); }
    QColor shownTitleColor() const { return TitleFont_Color().Resolved(palette()); }
    void resetOptions();
    void resetFixedColor();
    void resetTitleFont();
    void resetTitleFont_Color();
    void takeOptions();
    void updateFixed();
    void paintIndicator(QPainter &painter, const QRect &part);
    TGridDrawState drawStateOf(const QModelIndex &index) const;
    void drawCell(QPainter &painter, const QRect &rect, int place, const TGridColumn &column,
                  TGridDrawState state);
    bool hasFocusInside() const;

    // Sorting.
    void sortQuery(TQuery &query, TGridColumn &column);
    void dropIndex();

    // What the user does.
    bool isOpen() const { return DataSet() && DataSet()->Active(); }
    bool canChange() const;
    bool canEdit() const;
    bool tryTo(const std::function<void()> &work);
    bool takesKey(QKeyEvent &event);
    bool takesRowKey(QKeyEvent &event);
    bool takesColumnKey(const QKeyEvent &event);
    void takeEditorKey(QKeyEvent &event);
    void pressEnter();
    bool tab(int step);
    void moveBy(int rows, TChoosing choosing = ChooseCurrent);
    void moveTo(int place, TChoosing choosing = ChooseCurrent);
    TChoosing choosingOf(Qt::KeyboardModifiers modifiers) const;
    void choose(TChoosing choosing);
    void escape();
    void openEditor();
    void closeEditor();
    void showEditorAlways();
    void placeEditor();
    void toggle();
    bool type(const QString &text);
    void leave();
    bool isNewAndEmpty() const;

    QPointer<TDataSource> m_source;
    TGridColumns m_columns{this};
    TGridModel *m_model;
    TGridEditor *m_editor;
    std::unique_ptr<TFixedLook> m_look;
    TDBGridOptions m_options;
    int m_column = 0;
    int m_anchor = 0;  // where choosing several rows began
    int m_showing = 0; // the view follows the dataset: not the user's doing
    bool m_readOnly = false, m_defaultDrawing = true, m_deleteEnabled = true;
    bool m_isSizing = false, m_wasOpen = false;
    bool m_drawingFailed = false; // and was told

    TIndexOrder m_indexOrder;
    TSortKeys m_sortKeys;
    QString m_baseSql;
    bool m_sortEnabled = false;
    bool m_enterPending = false;
    int m_sortState = 0;
};

using TDBGridOption = TzmGrid::TDBGridOption;
using TDBGridOptions = TzmGrid::TDBGridOptions;
using enum TzmGrid::TDBGridOption;
Q_DECLARE_OPERATORS_FOR_FLAGS(TDBGridOptions)

} // namespace Zelmar01
