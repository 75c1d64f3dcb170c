#pragma once

#include <Zelmar01/tabs/Rect.h>

#include <QPainter>
#include <QPixmap>
#include <QRegion>

class QLabel;
class QWidget;

namespace Zelmar01 {

// For handlers of the events of tab controls: pictures as backgrounds. A picture is that of a label; it
// counts as lying at the label's top left corner, in its own size, or in the label's where its contents are
// scaled.

/// Paints into `rect` of a control's painter what of the picture lies behind it, as if the control were
/// transparent; the painter's background colour where the picture does not reach. Nothing without a picture.
void ExtDrawBkgndImage(const QWidget *control, QPainter *dc, const TRect &rect, const QLabel *image);

/// The same for each rectangle of a region.
void ExtDrawBkgndImageRgn(const QWidget *control, QPainter *dc, const QRegion &region, const QLabel *image);

/// Paints a picture into a tab. Without `stretch`, what of its top left part the tab has room for is scaled
/// to the tab, so that a picture smaller than it is enlarged. Nothing for an empty picture.
void ExtDrawTabGraphic(QPainter *canvas, const QPixmap &graphic, const TRect &rect, bool stretch);

/// Paints a window into a picture, scaled to `destRect`: the window begins at (srcX, srcY) and is srcW by
/// srcH pixels large. With stretchW and stretchH of at least 1 the picture itself is scaled to that size
/// first. Where the window leaves the picture it shows the painter's background colour.
void ExtStretchBlt(QPainter *dc, const TRect &destRect, const QPixmap &graphic, int srcX, int srcY, int srcW,
                   int srcH, QPainter::CompositionMode rop, int stretchW, int stretchH);

} // namespace Zelmar01
