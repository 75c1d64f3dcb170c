#include "ShopIcons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <initializer_list>

namespace Shop {

namespace {

// The drawings are made on a square of this side, and stand on one that is larger by a margin all around.
constexpr double side = 16, margin = 1;
constexpr double lineWidth = 1.2;

struct TDrawing
{
    QPainterPath Body;  // filled and outlined
    QPainterPath Lines; // outlined
};

using TPoints = std::initializer_list<QPointF>;

void addLine(QPainterPath &path, TPoints points)
{
    path.addPolygon(QPolygonF(QList<QPointF>(points)));
}

QPainterPath shape(TPoints points)
{
    QPainterPath path;
    addLine(path, points);
    path.closeSubpath();
    return path;
}

void addPlus(QPainterPath &path, QPointF centre, double arm)
{
    addLine(path, {centre - QPointF(arm, 0), centre + QPointF(arm, 0)});
    addLine(path, {centre - QPointF(0, arm), centre + QPointF(0, arm)});
}

TDrawing gem()
{
    TDrawing drawing{shape({{4.5, 2.5}, {11.5, 2.5}, {15, 6.5}, {8, 14}, {1, 6.5}}), {}};
    addLine(drawing.Lines, {{1, 6.5}, {15, 6.5}});
    addLine(drawing.Lines, {{4.5, 2.5}, {5.5, 6.5}, {8, 14}, {10.5, 6.5}, {11.5, 2.5}});
    addLine(drawing.Lines, {{5.5, 6.5}, {8, 2.5}, {10.5, 6.5}});
    return drawing;
}

TDrawing tag()
{
    TDrawing drawing{shape({{2, 2}, {8, 2}, {14.2, 8.2}, {8.2, 14.2}, {2, 8}}), {}};
    drawing.Lines.addEllipse(QPointF(5.2, 5.2), 1.2, 1.2);
    return drawing;
}

TDrawing addDepartment()
{
    TDrawing drawing;
    drawing.Body.addRoundedRect(QRectF(2, 2, 12, 12), 2, 2);
    addPlus(drawing.Lines, {8, 8}, 3);
    return drawing;
}

TDrawing addSection()
{
    TDrawing drawing{shape({{1.5, 1.5}, {6.5, 1.5}, {11, 6}, {6, 11}, {1.5, 6.5}}), {}};
    drawing.Lines.addEllipse(QPointF(4.2, 4.2), 0.9, 0.9);
    addPlus(drawing.Lines, {12, 12}, 2.8);
    return drawing;
}

TDrawing pencil()
{
    TDrawing drawing{shape({{11.5, 1.8}, {14.2, 4.5}, {5.5, 13.2}, {1.8, 14.2}, {2.8, 10.5}}), {}};
    addLine(drawing.Lines, {{9.5, 3.8}, {12.2, 6.5}});
    return drawing;
}

TDrawing bin()
{
    TDrawing drawing{shape({{3.5, 4.5}, {12.5, 4.5}, {11.7, 14.2}, {4.3, 14.2}}), {}};
    addLine(drawing.Lines, {{2, 4.5}, {14, 4.5}});
    addLine(drawing.Lines, {{6, 4.5}, {6, 2}, {10, 2}, {10, 4.5}});
    addLine(drawing.Lines, {{6.6, 7}, {6.8, 11.7}});
    addLine(drawing.Lines, {{9.4, 7}, {9.2, 11.7}});
    return drawing;
}

TDrawing reload()
{
    TDrawing drawing;
    const QRectF circle(2.5, 2.5, 11, 11);
    drawing.Lines.arcMoveTo(circle, 40);
    drawing.Lines.arcTo(circle, 40, 290);
    addLine(drawing.Lines, {{8.8, 4.6}, {12.4, 4.6}, {12.4, 1}});
    return drawing;
}

TDrawing cylinder()
{
    TDrawing drawing;
    drawing.Body.moveTo(2.5, 3.8);
    drawing.Body.lineTo(2.5, 12.2);
    drawing.Body.arcTo(QRectF(2.5, 10.2, 11, 4), 180, 180);
    drawing.Body.lineTo(13.5, 3.8);
    drawing.Body.arcTo(QRectF(2.5, 1.8, 11, 4), 0, 180);
    for (const double top : {1.8, 6.0}) {
        drawing.Lines.arcMoveTo(QRectF(2.5, top, 11, 4), 180);
        drawing.Lines.arcTo(QRectF(2.5, top, 11, 4), 180, 180);
    }
    return drawing;
}

TDrawing levels()
{
    TDrawing drawing;
    for (const auto &place : {QPointF(1.5, 1.5), QPointF(6, 6.2), QPointF(6, 11)})
        drawing.Body.addRect(QRectF(place, QSizeF(8.5, 3.5)));
    addLine(drawing.Lines, {{3.2, 5}, {3.2, 12.8}, {6, 12.8}});
    addLine(drawing.Lines, {{3.2, 8}, {6, 8}});
    return drawing;
}

TDrawing back()
{
    TDrawing drawing;
    addLine(drawing.Lines, {{14, 8}, {2.5, 8}});
    addLine(drawing.Lines, {{7, 3.5}, {2.5, 8}, {7, 12.5}});
    return drawing;
}

TDrawing drawingOf(TShopIcon which)
{
    switch (which) {
    case TShopIcon::Gem:
        return gem();
    case TShopIcon::Tag:
        return tag();
    case TShopIcon::AddDepartment:
        return addDepartment();
    case TShopIcon::AddSection:
        return addSection();
    case TShopIcon::Rename:
        return pencil();
    case TShopIcon::Delete:
        return bin();
    case TShopIcon::Reload:
        return reload();
    case TShopIcon::Rebuild:
        return cylinder();
    case TShopIcon::Levels:
        return levels();
    case TShopIcon::Back:
        return back();
    }
    return {};
}

class ShopIconEngine : public QIconEngine
{
public:
    explicit ShopIconEngine(TShopIcon which) : m_which(which) {}

    QIconEngine *clone() const override { return new ShopIconEngine(m_which); }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const bool isSelected = mode == QIcon::Selected;
        const auto line = palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::ButtonText);
        auto ground = isSelected || mode == QIcon::Disabled ? line : palette.color(QPalette::Highlight);
        ground.setAlpha(mode == QIcon::Disabled ? 30 : 90);

        const auto drawing = drawingOf(m_which);
        const double length = qMin(rect.width(), rect.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center() - QPointF(length, length) / 2);
        painter->scale(length / (side + 2 * margin), length / (side + 2 * margin));
        painter->translate(margin, margin);
        painter->setPen(QPen(line, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(ground);
        painter->drawPath(drawing.Body);
        painter->setBrush(Qt::NoBrush);
        painter->drawPath(drawing.Lines);
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

private:
    const TShopIcon m_which;
};

} // namespace

QIcon ShopIcon(TShopIcon which)
{
    return QIcon(new ShopIconEngine(which));
}

} // namespace Shop
