#include "TabFixture.h"

#include <QDir>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

// What one version of a font draws otherwise than another is small: a picture is compared after it was shrunk
// to a quarter, and a few of its pixels may be anything.
constexpr int shrink = 4, tolerance = 28;
constexpr double mayDiffer = 0.04;

double differing(const QImage &a, const QImage &b)
{
    const auto small = [](const QImage &image) {
        return image.scaled(image.size() / shrink, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_RGB32);
    };
    const auto first = small(a), second = small(b);
    if (first.size() != second.size())
        return 1;
    int count = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x) {
            const auto one = first.pixelColor(x, y), other = second.pixelColor(x, y);
            count += qAbs(one.red() - other.red()) > tolerance ||
                     qAbs(one.green() - other.green()) > tolerance ||
                     qAbs(one.blue() - other.blue()) > tolerance;
        }
    }
    return count / double(first.width() * first.height());
}

QPalette darkPalette()
{
    const QColor ground(0x2b, 0x2d, 0x31), text(0xe3, 0xe4, 0xe8);
    QPalette palette(text, ground, ground.lighter(150), ground.darker(170), ground.darker(130), text,
                     Qt::white, QColor(0x1e, 0x1f, 0x22), ground);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x80, 0x83, 0x8a));
    return palette;
}

QPixmap glyphs()
{
    QPixmap strip(64, 16);
    strip.fill(QColor(255, 0, 255));
    QPainter painter(&strip);
    for (int i = 0; i < 4; ++i)
        painter.fillRect(i * 16 + 2, 2, 12, 12, QColor::fromHsv(i * 80, 220, 200));
    return strip;
}

struct TPicture
{
    const char *Name;
    TExtTabPosition Position;
    TExtTabStyle Style = tabStDefault;
    TExtGlyphPosition Glyph = glPosLeft;
    bool Dark = false, RightToLeft = false;
    int Ratio = 1;
};

} // namespace

// The pictures are made anew with ZELMAR01_MAKE_PICTURES=1 in the environment, and looked at.
TEST_F(TabFixture, looksAsItDid)
{
    const TPicture pictures[] = {
        {"top-light", tabPosTop},
        {"top-dark-2x", tabPosTop, tabStDefault, glPosLeft, true, false, 2},
        {"buttons-light", tabPosTop, tabStButton},
        {"left-above-dark", tabPosLeft, tabStDefault, glPosTop, true},
        {"right-light-rtl", tabPosRight, tabStDefault, glPosLeft, false, true},
        {"bottom-above-light-2x", tabPosBottom, tabStDefault, glPosTop, false, false, 2},
    };
    QFont font(u"DejaVu Sans"_s);
    font.setPixelSize(12);
    const auto light = QApplication::palette();
    for (const auto &picture : pictures) {
        QPalette palette(QColor(240, 240, 240), QColor(240, 240, 240));
        palette.setColor(QPalette::Text, Qt::black);
        palette.setColor(QPalette::WindowText, Qt::black);
        palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(150, 150, 150));
        QWidget form;
        form.setPalette(picture.Dark ? darkPalette() : palette);
        form.setLayoutDirection(picture.RightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        form.setFixedSize(320, 180);
        TExtTabControl control(&form);
        control.setGeometry(8, 8, 304, 164);
        control.setTabActiveFont(font);
        control.setTabInactiveFont(font);
        control.setTabs({u"&Vente"_s, u"Fiche article"_s, u"Stock"_s});
        control.SetTabEnabled(2, false);
        control.TabGlyphs()->setGlyph(glyphs());
        control.TabGlyphs()->setNumGlyphs(4);
        control.TabGlyphs()->setPosition(picture.Glyph);
        control.setTabWordWrap(true);
        control.setTabWidth(84);
        control.setTabHeight(picture.Glyph == glPosTop ? 54 : 34);
        control.setTabPosition(picture.Position);
        control.setTabStyle(picture.Style);
        QImage seen(form.size() * picture.Ratio, QImage::Format_RGB32);
        seen.setDevicePixelRatio(picture.Ratio);
        form.render(&seen);
        const auto file = QDir(QStringLiteral(PICTURES)).filePath(QLatin1String(picture.Name) + u".png"_s);
        if (qEnvironmentVariableIsSet("ZELMAR01_MAKE_PICTURES")) {
            ASSERT_TRUE(seen.save(file));
            continue;
        }
        const QImage wanted(file);
        ASSERT_FALSE(wanted.isNull()) << file.toStdString();
        const double part = differing(seen, wanted);
        EXPECT_LE(part, mayDiffer) << picture.Name;
        if (part > mayDiffer)
            seen.save(QDir::temp().filePath(QLatin1String(picture.Name) + u"-seen.png"_s));
    }
    QApplication::setPalette(light);
}
