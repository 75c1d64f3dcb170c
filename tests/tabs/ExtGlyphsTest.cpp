#include <Zelmar01/tabs/ExtGlyphs.h>

#include <gtest/gtest.h>

#include <QPainter>
#include <QSignalSpy>
#include <QWidget>

using namespace Zelmar01;

namespace {

// Cells of one colour each, without a gap, and fuchsia at the top.
QPixmap strip(int cell, int height, int count, int rest = 0, int ratio = 1)
{
    QImage image((cell * count + rest) * ratio, height * ratio, QImage::Format_RGB32);
    image.fill(QColor(255, 0, 255));
    QPainter painter(&image);
    for (int i = 0; i < count; ++i)
        painter.fillRect(i * cell * ratio, ratio, cell * ratio, height * ratio, QColor(50 + i, 100, 0));
    painter.end();
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

TEST_F(ExtGlyphs, everyChangeGivesItsNotice)
{
    const QSignalSpy changed(&m_glyphs, &TExtGlyphs::OnChange);
    const QSignalSpy cut(&m_glyphs, &TExtGlyphs::OnChangePicture);
    m_glyphs.setGlyph(strip(16, 16, 2));
    m_glyphs.setGlyph(m_glyphs.Glyph());
    EXPECT_EQ(cut.size(), 2) << "a picture is always taken";
    m_glyphs.setNumGlyphs(2);
    m_glyphs.setNumGlyphs(2);
    m_glyphs.setTransparentColor(clNone);
    m_glyphs.setTransparentColor(clNone);
    EXPECT_EQ(cut.size(), 4);
    m_glyphs.setSpacing(7);
    m_glyphs.setSpacing(7);
    m_glyphs.setPosition(glPosTop);
    m_glyphs.setPosition(glPosTop);
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(cut.size(), 4);
}

TEST_F(ExtGlyphs, theTransparentColourIsLeftOutAndCellsDoNotBleed)
{
    m_glyphs.setGlyph(strip(16, 16, 3));
    m_glyphs.setNumGlyphs(3);
    for (const double ratio : {1.0, 1.5, 2.0}) {
        QImage screen((QSizeF(20, 20) * ratio).toSize(), QImage::Format_RGB32);
        screen.setDevicePixelRatio(ratio);
        screen.fill(Qt::white);
        {
            QPainter painter(&screen);
            m_glyphs.ImageList()->Draw(painter, 2, 2, 1);
        }
        for (int y = 0; y < screen.height(); ++y) {
            for (int x = 0; x < screen.width(); ++x) {
                const auto colour = screen.pixelColor(x, y);
                EXPECT_TRUE(colour == QColor(Qt::white) || colour == QColor(51, 100, 0))
                    << colour.name().toStdString() << " at " << x << ", " << y << " times " << ratio;
            }
        }
        EXPECT_EQ(screen.pixelColor(int(10 * ratio), int(2 * ratio)), QColor(Qt::white));
        EXPECT_EQ(screen.pixelColor(int(10 * ratio), int(10 * ratio)), QColor(51, 100, 0));
    }
    m_glyphs.setTransparentColor(clNone);
    EXPECT_EQ(m_glyphs.ImageList()->Image(0).pixelColor(0, 0), QColor(255, 0, 255));
}

TEST_F(ExtGlyphs, aStripForAFinerScreenKeepsItsPixels)
{
    m_glyphs.setGlyph(strip(16, 16, 2, 0, 2));
    m_glyphs.setNumGlyphs(2);
    EXPECT_EQ(m_glyphs.ImageList()->Width(), 16);
    EXPECT_EQ(m_glyphs.ImageList()->Image(1).width(), 32);
    EXPECT_EQ(m_glyphs.ImageList()->Image(1).pixelColor(31, 31), QColor(51, 100, 0));
}

TEST_F(ExtGlyphs, cellsOfHalfAPixelDoNotDriftApart)
{
    // Cells of 15 units are 22.5 pixels wide at 1.5.
    constexpr int count = 8, cell = 15;
    constexpr double ratio = 1.5;
    QImage image(qRound(cell * count * ratio), qRound(cell * ratio), QImage::Format_RGB32);
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y)
            image.setPixelColor(x, y, QColor(50 + int(x / (cell * ratio)), 100, 0));
    }
    image.setDevicePixelRatio(ratio);
    m_glyphs.setGlyph(QPixmap::fromImage(image));
    m_glyphs.setNumGlyphs(count);
    ASSERT_EQ(m_glyphs.ImageList()->Count(), count);
    for (int i = 0; i < count; ++i) {
        const auto cut = m_glyphs.ImageList()->Image(i);
        for (const int x : {1, cut.width() - 3})
            EXPECT_EQ(cut.pixelColor(x, 5), QColor(50 + i, 100, 0)) << i << " at " << x;
    }
}

TEST_F(ExtGlyphs, anIndexThatThereIsNotDrawsNothing)
{
    QImage screen(20, 20, QImage::Format_RGB32);
    screen.fill(Qt::white);
    const auto empty = screen;
    m_glyphs.setGlyph(strip(16, 16, 2));
    m_glyphs.setNumGlyphs(2);
    QPainter painter(&screen);
    for (const int index : {-1, 2, 1000})
        m_glyphs.ImageList()->Draw(painter, 0, 0, index);
    EXPECT_EQ(screen, empty);
    TImageList noWidth;
    noWidth.AddMasked(screen, clFuchsia);
    EXPECT_EQ(noWidth.Count(), 0);
}

TEST_F(ExtGlyphs, anotherListMakesAStrip)
{
    TImageList other;
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
