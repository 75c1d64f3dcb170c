#include <Zelmar01/tabs/ImageList.h>

#include <QGuiApplication>
#include <QPainter>

namespace Zelmar01 {

namespace {

void makeTransparent(QImage &image, QRgb mask)
{
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if ((line[x] | 0xFF000000) == mask)
                line[x] = 0;
        }
    }
}

} // namespace

void TImageList::SetSize(int width, int height)
{
    Clear();
    m_width = width;
    m_height = height;
}

void TImageList::AddMasked(const QImage &strip, TColor mask)
{
    if (m_width <= 0 || m_height <= 0 || strip.isNull())
        return;
    auto masked = strip.convertToFormat(QImage::Format_ARGB32);
    if (!mask.IsNone())
        makeTransparent(masked, mask.Resolved(QGuiApplication::palette()).rgb());
    masked = masked.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const double ratio = strip.devicePixelRatio();
    const int width = qRound(m_width * ratio), height = qRound(m_height * ratio);
    const int count = strip.deviceIndependentSize().toSize().width() / m_width;
    for (int i = 0; i < count; ++i) {
        m_images.push_back(masked.copy(qRound(i * m_width * ratio), 0, width, height));
        m_images.back().setDevicePixelRatio(ratio);
    }
}

QImage TImageList::Image(int index) const
{
    return index < 0 || index >= Count() ? QImage() : m_images[static_cast<std::size_t>(index)];
}

void TImageList::Draw(QPainter &painter, int x, int y, int index) const
{
    if (index >= 0 && index < Count())
        painter.drawImage(QRect(x, y, m_width, m_height), m_images[static_cast<std::size_t>(index)]);
}

} // namespace Zelmar01
