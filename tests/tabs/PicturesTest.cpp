#include "TabFixture.h"

#include "support/Pictures.h"

#include <QDir>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

// One version of a font draws other letters than another, and nothing else: the contents of tabs are compared
// by the mean colours of all squares of 16 pixels in them, everything around them pixel by pixel.
constexpr int shrink = 4, square = 16 / shrink;
constexpr int meanMayDiffer = 36, pixelMayDiffer = 8;

/// How far two pictures are apart in a colour, at most.
int distanceOf(const QImage &a, const QImage &b)
{
    int farthest = a.size() == b.size() ? 0 : 255;
    for (int y = 0; farthest < 255 && y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const auto one = a.pixel(x, y), other = b.pixel(x, y);
            farthest = qMax(farthest, qAbs(qRed(one) - qRed(other)));
            farthest = qMax(farthest, qAbs(qGreen(one) - qGreen(other)));
            farthest = qMax(farthest, qAbs(qBlue(one) - qBlue(other)));
        }
    return farthest;
}

/// The mean colours of all squares in a place.
QImage meansOf(const QImage &picture, const QRect &place)
{
    const double ratio = picture.devicePixelRatio();
    const auto part = picture.copy(QRectF(place.topLeft() * ratio, place.size() * ratio).toRect());
    const auto small = part.scaled(place.size() / shrink, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage means(small.size() - QSize(square, square), QImage::Format_RGB32);
    for (int y = 0; y < means.height(); ++y)
        for (int x = 0; x < means.width(); ++x)
            means.setPixel(x, y,
                           small.copy(x, y, square, square)
                               .scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                               .pixel(0, 0));
    return means;
}

QImage without(QImage picture, const std::vector<QRect> &places)
{
    QPainter painter(&picture);
    for (const auto &place : places)
        painter.fillRect(place, Qt::black);
    return picture;
}

} // namespace

// The pictures are made anew with ZELMAR01_MAKE_PICTURES=1 in the environment, and looked at.
TEST_F(TabFixture, looksAsItDid)
{
    const struct
    {
        TExtTabPosition Position;
        TExtTabStyle Style;
        TExtGlyphPosition Glyph;
        bool RightToLeft;
        QRect Place;
    } looks[] = {{tabPosTop, tabStDefault, glPosLeft, false, {4, 4, 288, 72}},
                 {tabPosTop, tabStButton, glPosLeft, false, {300, 4, 288, 72}},
                 {tabPosBottom, tabStDefault, glPosTop, false, {4, 80, 288, 88}},
                 {tabPosTop, tabStDefault, glPosTop, true, {300, 80, 288, 88}},
                 {tabPosLeft, tabStDefault, glPosLeft, false, {4, 172, 140, 128}},
                 {tabPosRight, tabStDefault, glPosTop, false, {152, 172, 140, 200}},
                 {tabPosLeft, tabStDefault, glPosLeft, true, {300, 172, 140, 128}},
                 {tabPosRight, tabStDefault, glPosTop, true, {448, 172, 140, 200}}};
    QFont font(u"DejaVu Sans"_s);
    font.setPixelSize(12);
    Pictures::InEachPalette([&](const Pictures &pictures) {
        SCOPED_TRACE(pictures.Name().toStdString());
        QWidget form;
        form.setFixedSize(592, 376);
        for (const auto &look : looks) {
            auto *control = new TExtTabControl(&form);
            control->setGeometry(look.Place);
            control->setLayoutDirection(look.RightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
            control->setTabActiveFont(font);
            control->setTabInactiveFont(font);
            control->setTabs({u"&Vente"_s, u"Fiche article"_s, u"Stock"_s});
            control->SetTabEnabled(2, false);
            control->TabGlyphs()->setGlyph(glyphs());
            control->TabGlyphs()->setNumGlyphs(4);
            control->TabGlyphs()->setPosition(look.Glyph);
            control->setTabWordWrap(true);
            control->setTabWidth(84);
            control->setTabHeight(look.Glyph == glPosTop ? 54 : 34);
            control->setTabPosition(look.Position);
            control->setTabStyle(look.Style);
        }
        const auto seen = pictures.Take(form, u"tabs"_s);
        const auto file = QDir(QStringLiteral(PICTURES)).filePath(pictures.Name() + u".png"_s);
        if (qEnvironmentVariableIsSet("ZELMAR01_MAKE_PICTURES")) {
            ASSERT_TRUE(seen.save(file));
        }
        QImage wanted(file);
        ASSERT_EQ(wanted.size(), seen.size());
        wanted.setDevicePixelRatio(seen.devicePixelRatio());
        std::vector<QRect> contents;
        for (const auto *control : form.findChildren<TExtTabControl *>())
            for (int tab = 0; tab < control->TabCount(); ++tab) {
                contents.push_back(
                    ToQRect(control->GetTabRect(tab).Grown(-1, -1)).translated(control->pos()));
                EXPECT_LE(distanceOf(meansOf(seen, contents.back()), meansOf(wanted, contents.back())),
                          meanMayDiffer)
                    << control->TabPosition() << ' ' << tab;
            }
        EXPECT_LE(distanceOf(without(seen, contents), without(wanted, contents)), pixelMayDiffer);
    });
}
