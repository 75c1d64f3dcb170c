#pragma once

#include "ReceiptReader.h"

#include <QWidget>

namespace Shop {

/// A ticket drawn as a strip of paper, in the palette's colours.
class ReceiptView : public QWidget
{
    Q_OBJECT
public:
    explicit ReceiptView(QWidget *parent = nullptr);

    /// Shows these lines; without any, it says that nothing has been printed.
    void SetLines(QList<TReceiptLine> lines);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void drawLine(QPainter &painter, const TReceiptLine &line, const QRectF &place) const;
    void drawMark(QPainter &painter, const TReceiptLine &line, const QRectF &place) const;
    qreal columnWidth() const;
    qreal lineHeight() const;
    qreal heightOf(const TReceiptLine &line) const;
    QSizeF paperSize() const;

    QList<TReceiptLine> m_lines;
};

} // namespace Shop
