#include <Zelmar01/tabs/ExtCustomTab.h>

#include "CaptionPictures.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/tabs/QtRect.h>
#include <Zelmar01/tabs/TabStyleWord.h>

#include <QMetaMethod>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QTimer>

namespace Zelmar01 {

namespace {

constexpr int brushPeriod = 8;

// Lines are filled, since a pen lies half a pixel beside them on a finer screen.
void drawOutline(QPainter &painter, const TRect &rect, int width, const QColor &color)
{
    const int w = rect.Width(), h = rect.Height();
    painter.fillRect(rect.Left, rect.Top, w, width, color);
    painter.fillRect(rect.Left, rect.Bottom - width, w, width, color);
    painter.fillRect(rect.Left, rect.Top, width, h, color);
    painter.fillRect(rect.Right - width, rect.Top, width, h, color);
}

bool touches(const QRegion &region, const TRect &rect)
{
    return !rect.IsEmpty() && region.intersects(ToQRect(rect));
}

} // namespace

// A message box must not open in the middle of a paint event.
void TExtCustomTab::report(const std::exception_ptr &error)
{
    std::string text;
    try {
        std::rethrow_exception(error);
    } catch (const std::exception &exception) {
        text = exception.what();
    } catch (...) {
        text.clear();
    }
    if (m_reported.insert(text).second)
        QTimer::singleShot(0, this, [error] { ShowingExceptions([&] { std::rethrow_exception(error); }); });
}

void TExtCustomTab::paintEvent(QPaintEvent *event)
{
    if (m_paintLock > 0) {
        keepPicture(event->region());
        return;
    }
    const bool direct = !m_hotPaint && (m_firstPaint || !isActiveWindow());
    if (direct) {
        m_firstPaint = false;
        m_bufferIsCurrent = false;
        QPainter painter(this);
        painter.setClipRegion(event->region());
        paintAll(painter, event->region(), false);
        return;
    }

    QPainter screen(this);
    paintBuffer(event->region(), screen.paintEngine()->paintDevice()->devicePixelRatio());
    screen.drawImage(QPointF(), m_buffer);
}

void TExtCustomTab::paintBuffer(const QRegion &region, double ratio)
{
    const auto size = (QSizeF(this->size()) * ratio).toSize();
    if (m_buffer.size() != size || m_buffer.devicePixelRatio() != ratio) {
        m_buffer = QImage(size, QImage::Format_RGB32);
        m_buffer.setDevicePixelRatio(ratio);
        m_bufferIsCurrent = false;
    }
    constexpr double metresPerInch = 0.0254;
    m_buffer.setDotsPerMeterX(qRound(logicalDpiX() / metresPerInch));
    m_buffer.setDotsPerMeterY(qRound(logicalDpiY() / metresPerInch));
    {
        QPainter painter(&m_buffer);
        painter.setFont(font());
        painter.setLayoutDirection(layoutDirection());
        painter.setClipRegion(region);
        paintAll(painter, region, true);
    }
    m_bufferIsCurrent = m_bufferIsCurrent || region == QRegion(rect());
}

// What the buffer shows is as good as what the screen shows, and stays where something else lay on it.
void TExtCustomTab::keepPicture(const QRegion &region)
{
    QPainter screen(this);
    // Where there is no picture yet, the form shows.
    if (!m_bufferIsCurrent || m_buffer.deviceIndependentSize() != QSizeF(size()))
        screen.fillRect(region.boundingRect(), colors().Outside);
    if (m_bufferIsCurrent)
        screen.drawImage(QPointF(), m_buffer);
}

void TExtCustomTab::paintAll(QPainter &painter, const QRegion &region, bool inMemory)
{
    eraseBackground(painter, inMemory);
    drawPageFrame(painter);
    const auto &strip = Strip();
    for (const int tab : strip.DrawingOrder()) {
        const auto item = strip.DrawnItem(tab);
        if (!touches(region, item.Grown(2, 2)))
            continue;
        drawTabFrame(painter, tab);
        if (!touches(region, item))
            continue;
        auto state = TOwnerDrawState();
        state.setFlag(odSelected, tab == m_selected);
        state.setFlag(odFocused, tab == m_selected && hasFocus());
        state.setFlag(odDisabled, !isEnabled());
        guarded([&] { CNDrawTab({tab, static_cast<std::uint32_t>(state.toInt()), &painter, item}); });
    }
    if (hasFocus())
        drawFocus(painter);
}

void TExtCustomTab::eraseBackground(QPainter &painter, bool inMemory)
{
    static const auto inside = QMetaMethod::fromSignal(&TExtCustomTab::OnDrawBkgndInside);
    static const auto outside = QMetaMethod::fromSignal(&TExtCustomTab::OnDrawBkgndOutside);
    if (m_eraseLock > 0)
        return;
    painter.setBrushOrigin(x() % brushPeriod, y() % brushPeriod);
    const auto sheet = GetSheetRect();
    painter.fillRect(ToQRect(sheet), colors().Page);
    if (isSignalConnected(inside)) {
        painter.save();
        painter.setBackground(colors().Page);
        guarded([&] { emit OnDrawBkgndInside(this, &painter, indexOfTab(m_selected), sheet); });
        painter.restore();
    }

    QRegion around = QRegion(rect()) - ToQRect(sheet);
    if (!inMemory) {
        const auto &arrows = Strip().Arrows();
        for (int tab = 0; tab < TabCount(); ++tab) {
            const auto place = GetTabRect(tab);
            const bool active = tab == m_selected;
            FillTabBG(painter, active, place);
            if (!place.Intersects(arrows) && colors().Ground[active].alpha() > 0)
                around -= ToQRect(place);
        }
    }
    const auto brush = GroundBehind(*this);
    for (const auto &part : around)
        painter.fillRect(part, brush);
    if (isSignalConnected(outside)) {
        painter.save();
        painter.setBackground(colors().Outside);
        guarded([&] { emit OnDrawBkgndOutside(this, &painter, around); });
        painter.restore();
    }
}

void TExtCustomTab::FillTabBG(QPainter &painter, bool active, const TRect &rect)
{
    painter.fillRect(ToQRect(rect), colors().Ground[active]);
}

// The selected ordinary tab and the page area are one surface.
void TExtCustomTab::drawPageFrame(QPainter &painter) const
{
    const auto frame = Strip().PageFrame();
    QRegion outline = QRegion(ToQRect(frame)) - ToQRect(frame.Grown(-1, -1));
    const auto item = Strip().DrawnItem(m_selected);
    if (!item.IsEmpty() && !(m_style & TCS_BUTTONS)) {
        const auto joint =
            ToQRect(frame) & ToQRect(IsVertical(PositionOf(m_style)) ? item.Grown(1, 0) : item.Grown(0, 1));
        outline -= joint;
        painter.fillRect(joint, colors().Ground[true]);
    }
    for (const auto &part : outline)
        painter.fillRect(part, colors().Frame);
}

void TExtCustomTab::drawTabFrame(QPainter &painter, int tab) const
{
    const auto item = Strip().DrawnItem(tab);
    const auto &color = colors().Frame;
    if (m_style & TCS_BUTTONS) {
        const int width = tab == m_selected ? 2 : 1;
        drawOutline(painter, item.Grown(width, width), width, color);
        return;
    }
    // Three sides, without the outer corners: the side of the page is left open.
    auto outerSide = PositionOf(m_style);
    if (isRightToLeft() && IsVertical(outerSide))
        outerSide = outerSide == tabPosLeft ? tabPosRight : tabPosLeft;
    if (outerSide != tabPosRight)
        painter.fillRect(item.Left - 1, item.Top, 1, item.Height(), color);
    if (outerSide != tabPosLeft)
        painter.fillRect(item.Right, item.Top, 1, item.Height(), color);
    if (outerSide != tabPosBottom)
        painter.fillRect(item.Left, item.Top - 1, item.Width(), 1, color);
    if (outerSide != tabPosTop)
        painter.fillRect(item.Left, item.Bottom, item.Width(), 1, color);
}

void TExtCustomTab::drawFocus(QPainter &painter) const
{
    const int tab = focusTab();
    const auto item = Strip().DrawnItem(tab);
    if (item.IsEmpty())
        return;
    painter.setPen(QPen(colors().Text[tab == m_selected], 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(ToQRect(item).adjusted(1, 1, -2, -2));
}

void TExtCustomTab::CNDrawTab(const TTabDrawRequest &request)
{
    if (request.ItemID < 0)
        return;
    const int index = indexOfTab(request.ItemID);
    auto state = TOwnerDrawState::fromInt(static_cast<int>(request.ItemState & 0xFFFF));
    if (!IsTabEnabled(request.ItemID))
        state |= odDisabled;
    const bool selected = state & odSelected;
    const auto place = GetTabRect(request.ItemID);
    const auto shift = Strip().ContentShift(selected);
    const auto content = place.Moved(shift.X, shift.Y);
    const auto ground = selected && m_tabStyle == tabStDefault ? request.RcItem : place;

    auto &painter = *request.DC;
    painter.save();
    m_canvas = &painter;
    m_canvasActive = selected;
    const auto detach = qScopeGuard([&] {
        m_canvas = nullptr;
        painter.restore();
    });
    const bool hot = m_hottrack->Enabled() && m_hottrack->HotTab == request.ItemID;
    painter.setBrush(colors().Ground[selected]);
    painter.setBackground(colors().Ground[selected]);
    painter.setFont((selected ? m_activeFont : m_inactiveFont)->Font());
    painter.setPen((hot ? colors().HotText : colors().Text)[selected]);
    DrawTab(index, selected, content, ground, state);
}

void TExtCustomTab::DrawTab(int index, bool activeTab, const TRect &rectFg, const TRect &rectBg,
                            TOwnerDrawState state)
{
    static const auto drawTab = QMetaMethod::fromSignal(&TExtCustomTab::OnDrawTab);
    if (!m_canvas)
        return;
    m_canvas->fillRect(ToQRect(rectBg), m_canvas->brush());
    if (isSignalConnected(drawTab))
        emit OnDrawTab(this, index, activeTab, rectFg, rectBg, state);
    else
        DefaultDrawTab(index, rectFg, state);
}

TTabContent TExtCustomTab::contentOf(TOwnerDrawState state) const
{
    const auto *images = m_glyphs->ImageList();
    return {m_tabPosition,
            !m_glyphs->Glyph().isNull(),
            state.testFlag(odDisabled),
            m_glyphs->Position(),
            images->Width(),
            images->Height(),
            m_glyphs->Spacing()};
}

void TExtCustomTab::DefaultDrawTab(int index, const TRect &rect, TOwnerDrawState state)
{
    if (!m_canvas)
        return;
    const auto content = contentOf(state);
    const auto place = PlaceCaption(content);
    const auto corner = TabTextOut(rect, place.Offset, captionOf(index), place.Alignment, content.IsDisabled);
    if (!place.ShowsGlyph)
        return;
    // What the corner means is mirrored with it.
    const int axis = rect.Left + rect.Right;
    const bool mirrored = isRightToLeft();
    auto at = PlaceGlyph(content, rect, mirrored ? TPoint{axis - corner.X, corner.Y} : corner);
    if (mirrored)
        at.X = axis - at.X - content.GlyphWidth;
    m_glyphs->ImageList()->Draw(*m_canvas, at.X, at.Y, GetGlyphIndex(index));
}

TPoint TExtCustomTab::TabTextOut(const TRect &rect, TPoint offset, const QString &caption,
                                 TAlignment alignment, bool disabled)
{
    if (!m_canvas)
        return {};
    auto &painter = *m_canvas;
    const auto layout = LayOutCaption(rect, offset, caption, alignment, m_wordWrap, painter.fontMetrics());
    const int axis = rect.Left + rect.Right;
    const auto mirror = [&](const TRect &part) { return isRightToLeft() ? part.Mirrored(axis) : part; };
    const auto box = mirror(layout.Box);
    // What finds no room loses its end, on whatever side that is.
    const auto leftOf = [&](const TCaptionLayout::TLine &line) {
        if (line.Rect.Width() <= box.Width())
            return mirror(line.Rect).Left;
        return line.Text.isRightToLeft() ? box.Right - line.Rect.Width() : box.Left;
    };
    const auto draw = [&](int shift) {
        if (layout.IsClipped) {
            painter.save();
            painter.setClipRect(ToQRect(box.Moved(shift, shift)), Qt::IntersectClip);
        }
        for (const auto &line : layout.Lines)
            m_captions->Draw(painter, line.Text, {leftOf(line) + shift, line.Rect.Top + shift});
        if (layout.IsClipped)
            painter.restore();
    };
    if (disabled) {
        const auto pen = painter.pen();
        painter.setPen(colors().Embossed);
        draw(1);
        painter.setPen(colors().Disabled[m_canvasActive]);
        draw(0);
        painter.setPen(pen);
    } else {
        draw(0);
    }
    return isRightToLeft() ? TPoint{axis - layout.GlyphCorner.X, layout.GlyphCorner.Y} : layout.GlyphCorner;
}

int TExtCustomTab::GetGlyphIndex(int index) const
{
    return index;
}

} // namespace Zelmar01
