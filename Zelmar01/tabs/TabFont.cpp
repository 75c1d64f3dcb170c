#include <Zelmar01/tabs/TabFont.h>

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>

namespace Zelmar01 {

QFont TTabFont::Font() const
{
    return m_font.resolve(QApplication::font());
}

void TTabFont::setFont(const QFont &font)
{
    m_font = font;
    emit OnChange(this);
}

void TTabFont::setColor(TColor color)
{
    m_color = color;
    emit OnChange(this);
}

int TTabFont::Height() const
{
    return -QFontInfo(Font()).pixelSize();
}

void TTabFont::setHeight(int height)
{
    if (height == 0)
        return;
    auto font = m_font;
    font.setPixelSize(qAbs(height));
    if (height > 0) {
        const int line = QFontMetrics(font.resolve(QApplication::font())).height();
        font.setPixelSize(qMax(1, height * height / line));
    }
    setFont(font);
}

void TTabFont::Assign(const TTabFont &other)
{
    m_color = other.m_color;
    setFont(other.m_font);
}

} // namespace Zelmar01
