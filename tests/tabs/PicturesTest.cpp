#include "TabFixture.h"

#include "support/Pictures.h"

#include <QDir>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

// What one version of a font draws otherwise than another is small: pictures are compared after they were
// shrunk to a quarter, and a few of their pixels may be anything.
constexpr int shrink = 4, tolerance = 28;
constexpr double mayDiffer = 0.02;

double differing(const QImage &a, const QImage &b)
{
    const auto small = [&](const QImage &image) {
        return image.scaled(a.size() / shrink, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    if (a.size() != b.size())
        return 1;
    const auto first = small(a), second = small(b);
    int count = 0;
    for (int y = 0; y < first.height(); ++y)
        for (int x = 0; x < first.width(); ++x) {
            const QColor one(first.pixel(x, y)), other(second.pixel(x, y));
            count += qAbs(one.red() - other.red()) > tolerance ||
                     qAbs(one.green() - other.green()) > tolerance ||
                     qAbs(one.blue() - other.blue()) > tolerance;
        }
    return count / double(first.width() * first.height());
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
        const QImage wanted(file);
        ASSERT_EQ(wanted.size(), seen.size()) << file.toStdString();
        const int ratio = static_cast<int>(seen.devicePixelRatio());
        for (const auto &look : looks) {
            const QRect place(look.Place.topLeft() * ratio, look.Place.size() * ratio);
            EXPECT_LE(differing(seen.copy(place), wanted.copy(place)), mayDiffer)
                << pictures.Name().toStdString() << ' ' << look.Position << look.Style << look.RightToLeft;
        }
    });
}
