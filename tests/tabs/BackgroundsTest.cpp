#include "TabFixture.h"

#include <Zelmar01/tabs/Backgrounds.h>

#include <QLabel>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

// A picture whose every pixel tells its place: red counts columns, green lines.
QPixmap coordinates(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixelColor(x, y, QColor(x, y, 7));
    }
    return QPixmap::fromImage(image);
}

class Backgrounds : public TabFixture
{
protected:
    // What the events were fired with, in their order.
    struct TFired
    {
        bool Inside;
        int Page;
        QRegion Region, Clip;
        QColor Background;
        QPoint Origin;
    };

    void watch(TExtCustomTab &control)
    {
        QObject::connect(&control, &TExtCustomTab::OnDrawBkgndInside, &control,
                         [&](QWidget *, QPainter *painter, int page, const TRect &rect) {
                             m_fired.push_back({true, page, ToQRect(rect), painter->clipRegion(),
                                                painter->background().color(), painter->brushOrigin()});
                         });
        QObject::connect(
            &control, &TExtCustomTab::OnDrawBkgndOutside, &control,
            [&](QWidget *, QPainter *painter, const QRegion &region) {
                m_fired.push_back(
                    {false, -1, region, painter->clipRegion(), painter->background().color(), {}});
            });
    }

    std::vector<TFired> m_fired;
};

} // namespace

TEST_F(Backgrounds, firstInsideThenOutsideWithTheRegionsOfThePath)
{
    auto &control = pages({u"a"_s, u"b"_s, u"c"_s});
    control.Pages(0)->setTabVisible(false);
    control.SetActivePageIndex(2);
    watch(control);
    QRegion direct(control.rect());
    direct -= ToQRect(control.GetSheetRect());
    const auto buffered = direct;
    for (const int tab : {0, 1})
        direct -= ToQRect(control.GetTabRect(tab));

    // The first paint is direct, even in an active window.
    show();
    ASSERT_GE(m_fired.size(), 2U);
    EXPECT_TRUE(m_fired[0].Inside);
    EXPECT_EQ(m_fired[0].Page, 2) << "the page, not the tab";
    EXPECT_EQ(m_fired[0].Region, QRegion(ToQRect(control.GetSheetRect())));
    EXPECT_EQ(m_fired[0].Origin, QPoint(10 % 8, 20 % 8));
    EXPECT_FALSE(m_fired[1].Inside);
    EXPECT_EQ(m_fired[1].Region, direct);
    EXPECT_EQ(m_fired[1].Background, m_form.palette().color(QPalette::Window));

    m_fired.clear();
    control.repaint();
    ASSERT_EQ(m_fired.size(), 2U);
    EXPECT_EQ(m_fired[1].Region, buffered);

    // A tab under the arrows stays outside.
    TExtTabControl crowded;
    crowded.setTabs({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    crowded.setTabWidth(80);
    crowded.resize(200, 100);
    watch(crowded);
    m_fired.clear();
    crowded.grab();
    ASSERT_EQ(m_fired.size(), 2U);
    for (int tab = 0; tab < 2; ++tab) {
        const auto place = crowded.GetTabRect(tab);
        EXPECT_EQ(m_fired[1].Region.intersects(ToQRect(place)), place.Intersects(crowded.Strip().Arrows()));
    }

    // In a window that is not active only hot-tracking is buffered.
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    m_fired.clear();
    control.repaint();
    ASSERT_EQ(m_fired.size(), 2U);
    EXPECT_EQ(m_fired[1].Region, direct);
    control.Hottrack()->setEnabled(true);
    settle();
    m_fired.clear();
    moveTo(control, middleOf(control, 1));
    ASSERT_EQ(m_fired.size(), 2U);
    EXPECT_EQ(m_fired[1].Region, buffered);
    EXPECT_EQ(m_fired[1].Clip, QRegion(ToQRect(control.GetTabRect(1)))) << "of -1 nothing is painted";
}

TEST_F(Backgrounds, whatStandsOnAPageSeesThePageBehindIt)
{
    auto &outer = pages({u"Vente"_s});
    auto *panel = new QWidget(outer.Pages(0));
    panel->setGeometry(20, 20, 300, 200);
    TExtTabControl inner(panel);
    inner.setTabs({u"Or"_s});
    inner.setGeometry(10, 10, 200, 100);
    show();
    const auto seen = [&] {
        settle();
        const auto picture = m_form.grab().toImage();
        return std::pair(picture.pixelColor(inner.mapTo(&m_form, QPoint(100, 80))),
                         picture.pixelColor(inner.mapTo(&m_form, QPoint(190, 5))));
    };
    const auto window = m_form.palette().color(QPalette::Window);
    const QColor blue(0, 0, 90), green(0, 90, 0), red(90, 0, 0);
    EXPECT_EQ(seen(), std::pair(window, window));
    outer.setColor(blue);
    EXPECT_EQ(seen(), std::pair(blue, blue));
    inner.setColor(green);
    EXPECT_EQ(seen(), std::pair(green, blue));
    auto palette = panel->palette();
    palette.setColor(QPalette::Window, red);
    panel->setPalette(palette);
    panel->setAutoFillBackground(true);
    EXPECT_EQ(seen(), std::pair(green, red)) << "a panel in between that paints itself";
}

TEST_F(Backgrounds, thePageAreaHasTheControlsColourAndTheRestTheParents)
{
    auto &control = tabs({u"a"_s});
    auto palette = m_form.palette();
    palette.setColor(QPalette::Window, QColor(1, 2, 3));
    m_form.setPalette(palette);
    show();
    const auto inside = [&] { return control.grab().toImage().pixelColor(200, 150); };
    EXPECT_EQ(inside(), QColor(1, 2, 3)) << "as long as ParentColor is set";
    control.setColor(QColor(4, 5, 6));
    EXPECT_FALSE(control.ParentColor());
    EXPECT_EQ(inside(), QColor(4, 5, 6));
    EXPECT_EQ(control.grab().toImage().pixelColor(400, 2), QColor(1, 2, 3));
    control.setColor(clWindow);
    EXPECT_EQ(inside(), palette.color(QPalette::Base));
    control.setParentColor(true);
    EXPECT_EQ(inside(), QColor(1, 2, 3));
    control.setColor(QColor(4, 5, 6));
    QLabel label(&m_form);
    label.setPixmap(coordinates(120, 90));
    QObject::connect(&control, &TExtCustomTab::OnDrawBkgndInside, &control,
                     [&](QWidget *sender, QPainter *painter, int, const TRect &rect) {
                         ExtDrawBkgndImage(sender, painter, rect, &label);
                     });
    EXPECT_EQ(inside(), QColor(4, 5, 6)) << "and where the picture of a handler ends";
}

TEST_F(Backgrounds, tabsWithoutAColourOpenOntoTheirPicture)
{
    auto &control = tabs({u"Or"_s});
    control.setTabActiveColor(clNone);
    QObject::connect(&control, &TExtCustomTab::OnDrawBkgndOutside, &control,
                     [](QWidget *, QPainter *painter, const QRegion &region) {
                         for (const auto &rect : region)
                             painter->fillRect(rect, QColor(1, 2, 3));
                     });
    show();
    const auto item = control.Strip().DrawnItem(0), frame = control.Strip().PageFrame();
    const auto picture = control.grab().toImage();
    EXPECT_EQ(picture.pixelColor((item.Left + item.Right) / 2, frame.Top), QColor(1, 2, 3));
    EXPECT_NE(picture.pixelColor(item.Right + 9, frame.Top), QColor(1, 2, 3));
}

TEST_F(Backgrounds, aPictureLooksThroughTheControl)
{
    QLabel label(&m_form);
    label.setPixmap(coordinates(120, 90));
    label.setGeometry(30, 50, 200, 180);
    QWidget control(&m_form);
    control.setGeometry(40, 60, 300, 200);

    const auto painted = [&](const QRegion &region) {
        QImage image(300, 200, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setBackground(QColor(9, 9, 9));
        ExtDrawBkgndImageRgn(&control, &painter, region, &label);
        return image;
    };
    const QRegion two = QRegion(20, 20, 30, 30) + QRegion(100, 20, 30, 10);
    const auto image = painted(two);
    EXPECT_EQ(image.pixelColor(20, 20), QColor(30, 30, 7)) << "10 pixels right of the label and below it";
    EXPECT_EQ(image.pixelColor(49, 49), QColor(59, 59, 7));
    EXPECT_EQ(image.pixelColor(105, 25), QColor(115, 35, 7));
    EXPECT_EQ(image.pixelColor(125, 25), QColor(9, 9, 9)) << "beyond the picture";
    EXPECT_EQ(image.pixelColor(60, 25), QColor(Qt::white)) << "outside of the region";

    label.setScaledContents(true);
    const auto scaled = painted(two);
    EXPECT_NEAR(scaled.pixelColor(20, 20).red(), 30 * 120 / 200, 1);
    EXPECT_NEAR(scaled.pixelColor(20, 20).green(), 30 * 90 / 180, 1);

    EXPECT_EQ(painted({}), painted(QRegion(500, 500, 5, 5)));
    label.clear();
    EXPECT_EQ(painted(two).pixelColor(20, 20), QColor(Qt::white));
    QPainter none;
    ExtDrawBkgndImage(&control, &none, {0, 0, 9, 9}, nullptr);
}

TEST_F(Backgrounds, aTabsGraphicFillsItsRectangle)
{
    const auto painted = [](const QPixmap &graphic, bool stretch) {
        QImage image(60, 40, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        ExtDrawTabGraphic(&painter, graphic, {10, 10, 50, 30}, stretch);
        return image;
    };
    EXPECT_EQ(painted(coordinates(200, 200), false).pixelColor(49, 29), QColor(39, 19, 7)) << "cut";
    EXPECT_NEAR(painted(coordinates(200, 200), true).pixelColor(49, 29).red(), 197, 3) << "shrunk";
    EXPECT_NEAR(painted(coordinates(10, 10), false).pixelColor(49, 29).red(), 9, 1) << "enlarged";
    EXPECT_EQ(painted({}, false).pixelColor(30, 20), QColor(Qt::white));
    EXPECT_EQ(painted(coordinates(10, 10), true).pixelColor(50, 30), QColor(Qt::white));

    // What of a picture is transparent shows the colour of the tab, or what lies behind a tab without one.
    QPixmap clear(10, 10);
    clear.fill(Qt::transparent);
    auto &control = tabs({u""_s});
    control.setTabActiveFont_Color(QColor(Qt::white));
    QObject::connect(&control, &TExtCustomTab::OnDrawTab, &control,
                     [&](QWidget *, int, bool, const TRect &, const TRect &ground) {
                         ExtDrawTabGraphic(control.Canvas(), clear, ground, false);
                     });
    show();
    for (const QColor &colour : {QColor(1, 2, 3), QColor(Qt::transparent)}) {
        control.setTabActiveColor(colour);
        EXPECT_EQ(control.grab().toImage().pixelColor(middleOf(control, 0)),
                  colour.alpha() > 0 ? colour : m_form.palette().color(QPalette::Window));
    }
}
