#pragma once

#include <QListView>

namespace Zelmar01 {

/// A list view for very many rows of one height and one column: it lays out nothing and paints the rows in
/// sight only, so that opening, scrolling and going to a row take the same time for a hundred rows and for a
/// million. Texts that are too wide are cut off, and shown whole as a tool tip. Flow, wrapping, spacing,
/// grid, hidden rows and icon mode of QListView have no effect.
class TLongListView : public QListView
{
    Q_OBJECT
public:
    explicit TLongListView(QWidget *parent = nullptr);

    QRect visualRect(const QModelIndex &index) const override;
    QModelIndex indexAt(const QPoint &point) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    void doItemsLayout() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags flags) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;
    int horizontalOffset() const override { return 0; }
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex &) const override { return false; }
    QSize viewportSizeHint() const override;
    void rowsInserted(const QModelIndex &parent, int first, int last) override;
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QList<int> &roles) override;

private:
    int count() const { return model() ? model()->rowCount(rootIndex()) : 0; }
    QModelIndex indexOf(int row) const;
    int rowHeight() const;
    int rowsInPage() const;

    mutable int m_rowHeight = 0; // 0 until measured
};

} // namespace Zelmar01
