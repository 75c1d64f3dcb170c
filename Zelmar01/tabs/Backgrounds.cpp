#include <Zelmar01/tabs/Backgrounds.h>

#include <Zelmar01/tabs/QtRect.h>

#include <QLabel>
#include <QPaintEngine>

namespace Zelmar01 {

void ExtStretchBlt(QPainter *dc, const TRect &destRect, const QPixmap &graphic, int srcX, int srcY, int srcW,
                   int srcH, QPainter::CompositionMode rop, int stretchW, int stretchH)
{
    if (srcW < 1 || srcH < 1 || destRect.IsEmpty())
        return;
    const double ratio = dc->paintEngine()->paintDevice()->devicePixelRatio();
    const auto ground = dc->background().color();
    QImage window((QSizeF(srcW, srcH) * ratio).toSize(),
                  ground.alpha() < 255 ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (window.isNull())
        return;
    window.setDevicePixelRatio(ratio);
    window.fill(ground);
    {
        QPainter painter(&window);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const bool natural = stretchW < 1 || stretchH < 1;
        if (natural)
            painter.drawPixmap(-srcX, -srcY, graphic);
        else
            painter.drawPixmap(QRect(-srcX, -srcY, stretchW, stretchH), graphic);
    }
    dc->save();
    dc->setCompositionMode(rop);
    dc->drawImage(ToQRect(destRect), window);
    dc->restore();
}

void ExtDrawBkgndImage(const QWidget *control, QPainter *dc, const TRect &rect, const QLabel *image)
{
    if (!image)
        return;
    const auto picture = image->pixmap(Qt::ReturnByValue);
    if (picture.isNull())
        return;
    const auto corner = image->mapFromGlobal(control->mapToGlobal(QPoint(0, 0)));
    const auto source = rect.Moved(corner.x(), corner.y());
    const auto stretched = image->hasScaledContents() ? image->size() : QSize(0, 0);
    ExtStretchBlt(dc, rect, picture, source.Left, source.Top, source.Width(), source.Height(),
                  QPainter::CompositionMode_SourceOver, stretched.width(), stretched.height());
}

void ExtDrawBkgndImageRgn(const QWidget *control, QPainter *dc, const QRegion &region, const QLabel *image)
{
    for (const auto &rect : region)
        ExtDrawBkgndImage(control, dc, FromQRect(rect), image);
}

void ExtDrawTabGraphic(QPainter *canvas, const QPixmap &graphic, const TRect &rect, bool stretch)
{
    if (graphic.isNull())
        return;
    if (stretch) {
        canvas->drawPixmap(ToQRect(rect), graphic);
        return;
    }
    const auto size = graphic.deviceIndependentSize().toSize().boundedTo({rect.Width(), rect.Height()});
    ExtStretchBlt(canvas, rect, graphic, 0, 0, size.width(), size.height(),
                  QPainter::CompositionMode_SourceOver, 0, 0);
}

} // namespace Zelmar01
