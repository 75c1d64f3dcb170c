#pragma once

#include <QTableView>

namespace Zelmar01 {

/// A table view for very many rows of one height: it lays out nothing and knows no sections of rows, so that
/// showing, scrolling and going to a row take the same time for a hundred rows and for a million. Spans,
/// hidden rows and rows of their own height of QTableView have no effect. The vertical header has no
/// sections; a descendant paints it row by row, see rowHeight() and verticalOffset().
///
/// Cells are painted by the descendant.
class TLongTableView : public QTableView
{
    Q_OBJECT
public:
    explicit TLongTableView(QWidget *parent = nullptr);

    QRect visualRect(const QModelIndex &index) const override;
    QModelIndex indexAt(const QPoint &point) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    void setModel(QAbstractItemModel *model) override;

    int rowHeight() const;
    /// How many rows are seen as a whole; at least 1.
    int rowsInPage() const;
    int verticalOffset() const override;
    /// The rows that a part of the viewport shows; `Last` is below `First` when there are none.
    struct TRows
    {
        int First, Last;
    };
    TRows rowsIn(const QRect &part) const;

protected:
    /// Paints one cell; `place` is the whole of it, in coordinates of the viewport.
    virtual void paintCell(QPainter &painter, const QRect &place, const QModelIndex &index) = 0;

    void paintEvent(QPaintEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags flags) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;
    bool isIndexHidden(const QModelIndex &index) const override { return isColumnHidden(index.column()); }
    void rowsInserted(const QModelIndex &parent, int first, int last) override;
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QList<int> &roles) override;

private:
    int count() const { return model() ? model()->rowCount() : 0; }
    void updateVerticalBar();

    mutable int m_rowHeight = 0; // 0 until measured
};

} // namespace Zelmar01
