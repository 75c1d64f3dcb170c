#include <Zelmar01/tabs/ExtGlyphs.h>

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QPainter>
#include <QWidget>

using namespace Zelmar01;

namespace {

// A strip of cells, each in a colour of its own, with a line of fuchsia at the top.
QPixmap strip(int cell, int height, int count, double ratio = 1)
{
    QImage image((QSizeF(cell * count, height) * ratio).toSize(), QImage::Format_RGB32);
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y)
            image.setPixelColor(
                x, y, y < ratio ? QColor(Qt::magenta) : QColor(50 + int(x / (cell * ratio)), 100, 0));
    image.setDevicePixelRatio(ratio);
    return QPixmap::fromImage(image);
}

class ExtGlyphs : public testing::Test
{
protected:
    QWidget m_owner;
    TExtGlyphs m_glyphs{&m_owner};
};

} // namespace

TEST_F(ExtGlyphs, aStripIsCutIntoWholeCells)
{
    const struct
    {
        int PixmapWidth, Number, CellWidth, Cells;
    } cases[] = {{64, 3, 21, 3}, {64, 0, 21, 0}, {64, 4, 16, 4}, {3, 5, 0, 0}, {0, 3, 0, 0}};
    for (const auto &[width, number, cellWidth, cells] : cases) {
        m_glyphs.setGlyph(width ? strip(width, 16, 1) : QPixmap());
        m_glyphs.setNumGlyphs(number);
        EXPECT_EQ(m_glyphs.ImageList()->Width(), cellWidth);
        EXPECT_EQ(m_glyphs.ImageList()->Count(), cells);
    }
}

// Neither on a finer screen, nor in a strip whose cells are 22.5 pixels wide.
TEST_F(ExtGlyphs, cellsDoNotBleedAndTheTransparentColourIsLeftOut)
{
    for (const auto &[cell, stripRatio] : {std::pair(16, 1.0), std::pair(15, 1.5), std::pair(16, 2.0)}) {
        m_glyphs.setGlyph(strip(cell, 16, 8, stripRatio));
        m_glyphs.setNumGlyphs(8);
        ASSERT_EQ(m_glyphs.ImageList()->Count(), 8);
        for (const double ratio : {1.0, 2.0}) {
            QImage screen((QSizeF(20, 20) * ratio).toSize(), QImage::Format_RGB32);
            screen.setDevicePixelRatio(ratio);
            screen.fill(Qt::white);
            {
                QPainter painter(&screen);
                for (const int index : {5, -1, 8})
                    m_glyphs.ImageList()->Draw(painter, 2, 2, index);
            }
            const auto at = [&](double x, double y) {
                return screen.pixelColor(int(x * ratio), int(y * ratio));
            };
            for (const double x : {3.0, 9.0, cell - 0.0})
                EXPECT_EQ(at(x, 10), QColor(55, 100, 0)) << cell << ' ' << ratio << ' ' << x;
            EXPECT_EQ(at(10, 2), QColor(Qt::white));
            EXPECT_EQ(at(1, 10), QColor(Qt::white));
            EXPECT_EQ(at(2 + cell, 10), QColor(Qt::white));
        }
    }
    m_glyphs.setTransparentColor(clNone);
    EXPECT_EQ(m_glyphs.ImageList()->Image(0).pixelColor(0, 0), QColor(Qt::magenta));

    // A strip on the colour of the desktop.
    QPixmap plain(32, 16);
    plain.fill(QGuiApplication::palette().color(QPalette::Window));
    m_glyphs.setTransparentColor(clBtnFace);
    m_glyphs.setGlyph(plain);
    EXPECT_EQ(m_glyphs.ImageList()->Image(0).pixelColor(1, 1).alpha(), 0);
}

TEST_F(ExtGlyphs, anotherListMakesAStrip)
{
    TImageList other;
    other.AddMasked(strip(10, 12, 3).toImage(), clFuchsia);
    EXPECT_EQ(other.Count(), 0) << "cells without a size";
    other.SetSize(10, 12);
    other.AddMasked(strip(10, 12, 3).toImage(), clFuchsia);
    m_glyphs.SetImageList(nullptr);
    EXPECT_EQ(m_glyphs.NumGlyphs(), 0);
    m_glyphs.SetImageList(&other);
    EXPECT_EQ(m_glyphs.NumGlyphs(), 3);
    EXPECT_EQ(m_glyphs.Glyph().size(), QSize(30, 12));
    EXPECT_EQ(m_glyphs.ImageList()->Image(2).pixelColor(5, 5), QColor(52, 100, 0));
    EXPECT_EQ(m_glyphs.ImageList()->Image(2).pixelColor(5, 0).alpha(), 0) << "transparent stays so";
}
