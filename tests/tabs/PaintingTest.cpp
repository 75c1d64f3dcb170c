#include "TabFixture.h"

#include "support/Pictures.h"

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

struct TDrawn
{
    bool Active;
    TRect Foreground, Background;
    TOwnerDrawState State;
    QColor Ground, Text;
};

// Four tabs of 80 by 24, drawn by a handler that takes notes; the second is selected, the third disabled.
class Painting : public TabFixture
{
protected:
    TPageProbe &notedPages()
    {
        auto &control = pages({u"Vente"_s, u"Fiche"_s, u"Stock"_s, u"Atelier"_s});
        control.Pages(2)->setEnabled(false);
        control.SetActivePageIndex(1);
        QObject::connect(
            &control, &TExtCustomTab::OnDrawTab, &control,
            [&](QWidget *, int index, bool active, const TRect &foreground, const TRect &background,
                TOwnerDrawState state) {
                const auto &canvas = *control.Canvas();
                m_drawn[index] = {
                    active, foreground, background, state, canvas.brush().color(), canvas.pen().color()};
            });
        return control;
    }

    // Makes another window the active one, so that painting is direct.
    void leaveForm()
    {
        m_other.show();
        m_other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_other));
    }

    std::map<int, TDrawn> m_drawn;
    QWidget m_other;
};

} // namespace

TEST_F(Painting, aRequestHasTheRectanglesOfItsSideAndState)
{
    auto &control = notedPages();
    show();
    control.clearFocus();
    for (const auto position : {tabPosTop, tabPosBottom, tabPosLeft, tabPosRight}) {
        control.setTabPosition(position);
        m_drawn.clear();
        control.repaint();
        for (const int tab : {0, 1}) {
            const bool isSelected = tab == 1;
            const auto &drawn = m_drawn.at(tab);
            const auto shift = control.Strip().ContentShift(isSelected);
            EXPECT_EQ(drawn.Foreground, control.GetTabRect(tab).Moved(shift.X, shift.Y));
            EXPECT_EQ(drawn.Background, control.Strip().DrawnItem(tab));
            EXPECT_EQ(drawn.Active, isSelected);
            EXPECT_EQ(drawn.State, isSelected ? TOwnerDrawState(odSelected) : TOwnerDrawState());
        }
        EXPECT_EQ(m_drawn.at(2).State, TOwnerDrawState(odDisabled));
    }
}

TEST_F(Painting, hotTrackingChangesTheCaptionsColourOnly)
{
    auto &control = notedPages();
    control.setTabActiveColor(QColor(10, 20, 30));
    control.setTabInactiveColor(QColor(200, 210, 220));
    const QColor active(250, 250, 200), inactive(100, 0, 0), green(0, 255, 0), blue(0, 0, 255);
    control.setTabActiveFont_Color(active);
    control.setTabInactiveFont_Color(inactive);
    control.setHottrack_TabInactiveColor(blue);
    show();
    const struct
    {
        bool Enabled;
        int Hot;
        QColor HotActive, Active, Inactive;
    } cases[] = {{false, 0, green, active, inactive},
                 {true, -1, green, active, inactive},
                 {true, 0, green, active, blue},
                 {true, 1, green, green, inactive},
                 {true, 1, Qt::transparent, active, inactive}};
    for (const auto &a : cases) {
        control.Hottrack()->setEnabled(a.Enabled);
        control.Hottrack()->setTabActiveColor(a.HotActive);
        control.Hottrack()->HotTab = a.Hot;
        control.repaint();
        EXPECT_EQ(m_drawn[1].Text, a.Active);
        EXPECT_EQ(m_drawn[0].Text, a.Inactive);
        EXPECT_EQ(m_drawn[1].Ground, QColor(10, 20, 30));
        EXPECT_EQ(m_drawn[0].Ground, QColor(200, 210, 220));
    }
}

TEST_F(Painting, fixedColoursStayReadableOnEveryDesktop)
{
    auto &control = notedPages();
    show();
    Pictures::InEachPalette([&](const Pictures &pictures) {
        SCOPED_TRACE(pictures.Name().toStdString());
        for (const auto &font : {clWindowText, TColor(QColor(120, 0, 0)), TColor(QColor(255, 255, 200))}) {
            control.TabActiveFont()->setColor(font);
            control.repaint();
            for (const int tab : {0, 1})
                EXPECT_GE(ContrastOf(m_drawn[tab].Text, m_drawn[tab].Ground), 4.49);
        }
        EXPECT_EQ(control.TabInactiveColor(), TColor(0x00A4A0A0)) << "the property keeps its value";
    });
    control.TabInactiveFont()->setColor(QColor(170, 170, 170));
    control.repaint();
    EXPECT_EQ(m_drawn[0].Text, QColor(170, 170, 170)) << "both fixed: as the host wants it";
}

TEST_F(Painting, nothingIsPaintedBetweenBeginAndEnd)
{
    auto &control = notedPages();
    show();
    for (const bool active : {true, false}) {
        if (!active)
            leaveForm();
        control.setTabActiveColor(Qt::green);
        control.repaint();
        const auto before = m_form.grab().toImage();
        control.TakeRequests();
        control.BeginUpdate();
        control.BeginUpdate();
        control.TakeRequests();
        control.setTabActiveColor(Qt::red);
        control.repaint();
        settle();
        EXPECT_EQ(m_form.grab().toImage(), before) << "the last picture stays";
        control.EndUpdate();
        settle();
        EXPECT_TRUE(control.TakeRequests().empty());
        for (int i = 0; i < 2; ++i) {
            control.TakePaints();
            control.EndUpdate();
            settle();
            EXPECT_EQ(control.TakePaints(), 1) << "one end too many is no lock";
        }
        EXPECT_NE(m_form.grab().toImage(), before);
    }
}

TEST_F(Painting, noMoreIsPaintedThanNeeded)
{
    auto &control = notedPages();
    control.BeginUpdate();
    show();
    EXPECT_EQ(m_form.grab().toImage().pixelColor(200, 200), m_form.palette().color(QPalette::Window))
        << "a control that is locked from the start leaves no hole";
    EXPECT_TRUE(control.TakeRequests().empty());
    control.EndUpdate();
    settle();
    control.TakePaints();
    control.setTabWordWrap(true);
    settle();
    EXPECT_EQ(control.TakePaints(), 1);
    control.TakeRequests();
    control.repaint(ToQRect(control.GetTabRect(3)));
    EXPECT_EQ(control.TakeRequests(), std::vector{3});
    control.repaint(QRect(100, 100, 50, 50));
    EXPECT_TRUE(control.TakeRequests().empty()) << "a page that paints itself draws no tab";
}

TEST_F(Painting, theDirectAndTheBufferedPathMakeTheSamePicture)
{
    auto &control = pages({u"Vente"_s, u"&Fiche"_s, u"Stock"_s});
    control.setTabGlyphs_Glyph(glyphs());
    control.setTabGlyphs_NumGlyphs(4);
    show();
    control.clearFocus();
    const auto pictures = [&] {
        std::vector<QImage> taken;
        for (const double ratio : {1.0, 1.5, 2.0}) {
            QImage picture((QSizeF(control.size()) * ratio).toSize(), QImage::Format_RGB32);
            picture.setDevicePixelRatio(ratio);
            control.render(&picture);
            taken.push_back(picture);
        }
        return taken;
    };
    const auto buffered = pictures();
    leaveForm();
    EXPECT_TRUE(pictures() == buffered);
}

TEST_F(Painting, aDisabledCaptionIsEmbossedAndHasNoGlyph)
{
    auto &control = pages({u"Vente"_s, u"Stock"_s});
    QPixmap strip(32, 16);
    strip.fill(Qt::red);
    control.TabGlyphs()->setGlyph(strip);
    control.TabGlyphs()->setNumGlyphs(2);
    control.setTabInactiveColor(QColor(0, 0, 120));
    control.setTabInactiveFont(QFont(u"DejaVu Sans"_s, 14, QFont::Black));
    show();
    const auto count = [&](const QColor &color) {
        const auto picture = control.grab(ToQRect(control.GetTabRect(1))).toImage();
        int pixels = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                pixels += picture.pixelColor(x, y) == color;
        return pixels;
    };
    const auto light = QApplication::palette().color(QPalette::Light);
    EXPECT_EQ(count(Qt::red), 256);
    EXPECT_EQ(count(light), 0);
    control.Pages(1)->setEnabled(false);
    settle();
    EXPECT_EQ(count(Qt::red), 0);
    EXPECT_GT(count(light), 5);
}

TEST_F(Painting, aCaptionWithoutRoomLosesItsEnd)
{
    auto &control = tabs({u"Montres et bijoux anciens"_s});
    show();
    const auto seen = [&](Qt::LayoutDirection direction) {
        control.setLayoutDirection(direction);
        return control.grab(ToQRect(control.GetTabRect(0))).toImage();
    };
    EXPECT_EQ(seen(Qt::RightToLeft), seen(Qt::LeftToRight))
        << "French begins on the left, wherever it stands";
}

TEST_F(Painting, theFocusIsSeen)
{
    auto &control = pages({u"Vente"_s, u"Stock"_s});
    show();
    for (const int tab : {0, -1}) {
        control.SetActivePageIndex(tab);
        control.clearFocus();
        const auto place = ToQRect(control.GetTabRect(0));
        const auto without = control.grab(place).toImage();
        control.setFocus();
        EXPECT_NE(control.grab(place).toImage(), without) << "on the tab that the next key selects";
    }
}

TEST_F(Painting, anErrorOfAHandlerReachesTheDisplayOnce)
{
    auto &control = pages({u"Vente"_s, u"Stock"_s});
    show();
    QObject::connect(&control, &TExtCustomTab::OnDrawBkgndInside, &control, [] {});
    control.SetActivePage(nullptr);
    for (int i = 0; i < 3; ++i)
        control.repaint();
    settle();
    ASSERT_EQ(m_shown.size(), 1) << "no page has the tab -1";
    EXPECT_TRUE(m_shown[0].contains(u"CurrentTabIndex = -1"_s));

    QObject::connect(&control, &TExtCustomTab::OnDrawTab, &control,
                     [] { throw EInvalidOperation("Pas d'encre"); });
    control.SetActivePageIndex(1);
    control.repaint();
    settle();
    EXPECT_EQ(m_shown.mid(1), QStringList{u"Pas d'encre"_s});
    EXPECT_EQ(control.Canvas(), nullptr);
}
