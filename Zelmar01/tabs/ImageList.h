#pragma once

#include <Zelmar01/core/Colors.h>

#include <QImage>
#include <QObject>

#include <vector>

class QPainter;

namespace Zelmar01 {

/// Images of one size, drawn by their numbers. Sizes are in pixels of the widgets: an image made for a finer
/// screen (QImage::devicePixelRatio) keeps its own.
class TImageList : public QObject
{
    Q_OBJECT
public:
    explicit TImageList(QObject *owner = nullptr) : QObject(owner) {}

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int Count() const { return static_cast<int>(m_images.size()); }

    /// Setting the size removes the images.
    void SetSize(int width, int height);
    void Clear() { m_images.clear(); }

    /// Cuts a strip into as many whole cells as it has, from left to right, each on its own, and adds them.
    /// Pixels of the colour `mask` become transparent. Adds nothing while the width or the height is 0.
    void AddMasked(const QImage &strip, TColor mask);

    /// Null for an index that there is not.
    QImage Image(int index) const;
    /// Draws an image, enlarged on a finer screen without smoothing; nothing for an index that there is not.
    void Draw(QPainter &painter, int x, int y, int index) const;

private:
    int m_width = 0, m_height = 0;
    std::vector<QImage> m_images;
};

} // namespace Zelmar01
