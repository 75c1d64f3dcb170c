#include <Zelmar01/tabs/ExtGlyphs.h>

#include <QGuiApplication>
#include <QPainter>
#include <QWidget>

namespace Zelmar01 {

TExtGlyphs::TExtGlyphs(QWidget *owner) : QObject(owner), m_imageList(new TImageList(owner)) {}

TExtGlyphs::~TExtGlyphs()
{
    delete m_imageList;
}

void TExtGlyphs::setGlyph(const QPixmap &glyph)
{
    m_glyph = glyph;
    ChangedGlyph();
}

void TExtGlyphs::SetImageList(const TImageList *images)
{
    if (!images)
        return;
    const int count = images->Count();
    const double ratio = count > 0 ? images->Image(0).devicePixelRatio() : 1;
    QImage strip((QSizeF(count * images->Width(), images->Height()) * ratio).toSize(),
                 QImage::Format_ARGB32_Premultiplied);
    strip.setDevicePixelRatio(ratio);
    strip.fill(m_transparentColor.Resolved(QGuiApplication::palette()));
    QPainter painter;
    if (!strip.isNull() && painter.begin(&strip)) {
        for (int i = 0; i < count; ++i)
            images->Draw(painter, i * images->Width(), 0, i);
        painter.end();
    }
    m_glyph = QPixmap::fromImage(strip);
    m_numGlyphs = count;
    ChangedGlyph();
}

void TExtGlyphs::setNumGlyphs(int count)
{
    count = qBound(0, count, GreatestWord);
    if (count == m_numGlyphs)
        return;
    m_numGlyphs = count;
    ChangedGlyph();
}

void TExtGlyphs::setPosition(TExtGlyphPosition position)
{
    if (position == m_position)
        return;
    m_position = position;
    Changed();
}

void TExtGlyphs::setSpacing(int spacing)
{
    if (spacing == m_spacing)
        return;
    m_spacing = spacing;
    Changed();
}

void TExtGlyphs::setTransparentColor(TColor color)
{
    if (color == m_transparentColor)
        return;
    m_transparentColor = color;
    ChangedGlyph();
}

void TExtGlyphs::Changed()
{
    emit OnChange(this);
}

void TExtGlyphs::ChangedGlyph()
{
    m_imageList->Clear();
    if (m_numGlyphs > 0 && !m_glyph.isNull()) {
        const auto size = m_glyph.deviceIndependentSize().toSize();
        m_imageList->SetSize(size.width() / m_numGlyphs, size.height());
        m_imageList->AddMasked(m_glyph.toImage(), m_transparentColor);
    }
    emit OnChangePicture(this);
}

} // namespace Zelmar01
