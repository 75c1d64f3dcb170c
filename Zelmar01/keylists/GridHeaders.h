#pragma once

#include <Zelmar01/core/Colors.h>

#include <QHeaderView>

#include <functional>

namespace Zelmar01 {

/// How the fixed cells of a grid look.
struct TFixedLook
{
    TColor Ground = clBtnFace;
    TColor Text = clBtnText;
    bool ColLines = true, RowLines = true;

    QColor GroundOn(const QPalette &palette) const { return Ground.Resolved(palette); }
    /// The colour of texts and marks; moved where one of the two colours is the desktop's.
    QColor TextOn(const QPalette &palette) const;
    /// Fills a fixed cell and draws its lines.
    void Fill(QPainter &painter, const QRect &place, const QPalette &palette, bool isPressed) const;
};

/// The titles of a grid.
class TTitleHeader : public QHeaderView
{
    Q_OBJECT
public:
    /// The look is owned by the caller and outlives the header.
    TTitleHeader(const TFixedLook &look, QWidget *parent);

protected:
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;
    QSize sectionSizeFromContents(int logicalIndex) const override;

private:
    const TFixedLook &m_look;
};

/// The indicator column of a grid: a vertical header without sections, painted by its grid.
class TIndicatorHeader : public QHeaderView
{
    Q_OBJECT
public:
    TIndicatorHeader(std::function<void(QPainter &, const QRect &)> paint, QWidget *parent);

    // There are no sections to keep, however many rows there are.
    void setModel(QAbstractItemModel *) override {}
    void setSelectionModel(QItemSelectionModel *) override {}
    QSize sizeHint() const override;

signals:
    /// The user has pressed the mouse at that height.
    void OnPress(int y, Qt::KeyboardModifiers modifiers);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    std::function<void(QPainter &, const QRect &)> m_paint;
};

} // namespace Zelmar01
