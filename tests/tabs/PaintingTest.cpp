#include "TabFixture.h"

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

struct TDrawn
{
    int Index;
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
        QObject::connect(&control, &TExtCustomTab::OnDrawTab, &control,
                         [&](QWidget *, int index, bool active, const TRect &foreground,
                             const TRect &background, TOwnerDrawState state) {
                             m_drawn.push_back({index, active, foreground, background, state,
                                                control.Canvas()->brush().color(),
                                                control.Canvas()->pen().color()});
                         });
        return control;
    }

    const TDrawn *drawn(int index) const
    {
        const auto found = std::find_if(m_drawn.rbegin(), m_drawn.rend(),
                                        [&](const TDrawn &one) { return one.Index == index; });
        return found == m_drawn.rend() ? nullptr : &*found;
    }

    std::vector<TDrawn> m_drawn;
};

} // namespace

TEST_F(Painting, aRequestHasTheRectanglesOfItsSideAndState)
{
    auto &control = notedPages();
    show();
    control.clearFocus();
    const struct
    {
        TExtTabPosition Position;
        TExtTabStyle Style;
        TPoint Selected, Other; // how far the content is moved
        bool Grows;
    } cases[] = {{tabPosTop, tabStDefault, {0, -1}, {0, 1}, true},
                 {tabPosTop, tabStButton, {0, 0}, {0, 0}, false},
                 {tabPosBottom, tabStDefault, {0, 0}, {0, -2}, true},
                 {tabPosLeft, tabStDefault, {-2, 0}, {0, 0}, true},
                 {tabPosRight, tabStDefault, {2, 0}, {0, 0}, true}};
    for (const auto &[position, style, selectedShift, otherShift, grows] : cases) {
        control.setTabPosition(position);
        control.setTabStyle(style);
        m_drawn.clear();
        control.repaint();
        const auto *selected = drawn(1), *other = drawn(0);
        ASSERT_TRUE(selected && other);
        const auto place = control.GetTabRect(1), otherPlace = control.GetTabRect(0);
        EXPECT_EQ(selected->Foreground, place.Moved(selectedShift.X, selectedShift.Y));
        EXPECT_EQ(selected->Background, grows ? control.Strip().DrawnItem(1) : place);
        EXPECT_EQ(selected->Background == place, !grows);
        EXPECT_EQ(other->Foreground, otherPlace.Moved(otherShift.X, otherShift.Y));
        EXPECT_EQ(other->Background, otherPlace);
        EXPECT_TRUE(selected->Active);
        EXPECT_EQ(selected->State, TOwnerDrawState(odSelected));
        EXPECT_FALSE(other->Active);
        EXPECT_EQ(drawn(2)->State, TOwnerDrawState(odDisabled));
    }
}

TEST_F(Painting, hotTrackingChangesTheCaptionsColourOnly)
{
    auto &control = notedPages();
    control.setTabActiveColor(QColor(10, 20, 30));
    control.setTabInactiveColor(QColor(200, 210, 220));
    control.setTabActiveFont_Color(QColor(250, 250, 200));
    control.setTabInactiveFont_Color(QColor(100, 0, 0));
    control.setHottrack_TabActiveColor(QColor(0, 255, 0));
    control.setHottrack_TabInactiveColor(QColor(0, 0, 255));
    show();
    const struct
    {
        bool Enabled;
        int Hot;
        QColor Active, Inactive;
    } cases[] = {{false, 0, QColor(250, 250, 200), QColor(100, 0, 0)},
                 {true, -1, QColor(250, 250, 200), QColor(100, 0, 0)},
                 {true, 0, QColor(250, 250, 200), QColor(0, 0, 255)},
                 {true, 1, QColor(0, 255, 0), QColor(100, 0, 0)}};
    for (const auto &[enabled, hot, active, inactive] : cases) {
        control.Hottrack()->setEnabled(enabled);
        control.Hottrack()->HotTab = hot;
        control.repaint();
        EXPECT_EQ(drawn(1)->Text, active);
        EXPECT_EQ(drawn(1)->Ground, QColor(10, 20, 30));
        EXPECT_EQ(drawn(0)->Text, inactive);
        EXPECT_EQ(drawn(0)->Ground, QColor(200, 210, 220));
    }
    control.Hottrack()->setTabActiveColor(clNone);
    control.repaint();
    EXPECT_EQ(drawn(1)->Text, QColor(250, 250, 200));
}

TEST_F(Painting, fixedColoursStayReadableOnEveryDesktop)
{
    auto &control = notedPages();
    show();
    const auto light = QApplication::palette();
    QPalette dark(QColor(230, 230, 230), QColor(40, 40, 45));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(230, 230, 230));
    QPalette contrast(Qt::white, Qt::black);
    contrast.setColor(QPalette::Text, Qt::white);
    contrast.setColor(QPalette::Base, Qt::black);
    for (const auto &desktop : {light, dark, contrast}) {
        QApplication::setPalette(desktop);
        for (const auto &font : {clWindowText, TColor(QColor(120, 0, 0)), TColor(QColor(255, 255, 200))}) {
            control.TabActiveFont()->setColor(font);
            control.TabInactiveFont()->setColor(clWindowText);
            settle();
            control.repaint();
            for (const int tab : {0, 1})
                EXPECT_GE(ContrastOf(drawn(tab)->Text, drawn(tab)->Ground), 4.5) << tab;
        }
        EXPECT_EQ(control.TabInactiveColor(), TColor(0x00A4A0A0)) << "the property keeps its value";
    }
    QApplication::setPalette(light);
    settle();
    control.TabInactiveFont()->setColor(QColor(170, 170, 170));
    control.repaint();
    EXPECT_EQ(drawn(0)->Text, QColor(170, 170, 170)) << "both fixed: as the host wants it";
}

TEST_F(Painting, nothingIsPaintedBetweenBeginAndEnd)
{
    auto &control = notedPages();
    show();
    control.repaint();
    const auto before = m_form.grab().toImage();
    control.TakeRequests();

    control.BeginUpdate();
    control.BeginUpdate();
    control.setTabActiveColor(Qt::red);
    control.Pages(0)->setCaption(u"Autre"_s);
    control.repaint();
    settle();
    EXPECT_TRUE(control.TakeRequests().empty());
    EXPECT_EQ(m_form.grab().toImage(), before) << "the last picture stays";
    control.EndUpdate();
    settle();
    EXPECT_TRUE(control.TakeRequests().empty());
    control.TakePaints();
    control.EndUpdate();
    settle();
    EXPECT_EQ(control.TakePaints(), 1);
    EXPECT_EQ(control.TakeRequests().size(), 4U);
    EXPECT_NE(m_form.grab().toImage(), before);
    control.TakePaints();
    control.EndUpdate();
    settle();
    EXPECT_EQ(control.TakePaints(), 1) << "one end too many is no lock";
}

TEST_F(Painting, thePictureOfAnInactiveWindowStaysToo)
{
    auto &control = notedPages();
    show();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    control.repaint();
    const auto before = m_form.grab().toImage();
    control.repaint();
    control.BeginUpdate();
    control.setTabActiveColor(Qt::red);
    EXPECT_EQ(m_form.grab().toImage(), before);
    control.EndUpdate();
}

TEST_F(Painting, aControlThatIsLockedFromTheStartLeavesNoHole)
{
    auto &control = pages({u"Vente"_s});
    control.BeginUpdate();
    show();
    const auto picture = m_form.grab().toImage();
    EXPECT_EQ(picture.pixelColor(20, 30), m_form.palette().color(QPalette::Window));
    EXPECT_EQ(picture.pixelColor(200, 200), m_form.palette().color(QPalette::Window));
    EXPECT_TRUE(control.TakeRequests().empty());
}

TEST_F(Painting, theDirectAndTheBufferedPathMakeTheSamePicture)
{
    auto &control = pages({u"Vente"_s, u"&Fiche"_s, u"Stock"_s});
    QPixmap strip(48, 16);
    strip.fill(Qt::red);
    control.setTabGlyphs_Glyph(strip);
    control.setTabGlyphs_NumGlyphs(3);
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
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_TRUE(pictures() == buffered);
}

TEST_F(Painting, anUnchangedSettingPaintsNothing)
{
    auto &control = notedPages();
    show();
    control.TakePaints();
    control.setTabActiveColor(clBtnFace);
    control.setTabWordWrap(false);
    control.setTabHeight(24);
    control.setTabPosition(tabPosTop);
    control.Hottrack()->setTabActiveColor(clHighlight);
    control.TabGlyphs()->setSpacing(5);
    settle();
    EXPECT_EQ(control.TakePaints(), 0);
    control.setTabWordWrap(true);
    settle();
    EXPECT_EQ(control.TakePaints(), 1);
}

TEST_F(Painting, onlyTabsThatAreTouchedAreDrawn)
{
    auto &control = notedPages();
    show();
    control.TakeRequests();
    control.repaint(ToQRect(control.GetTabRect(3)));
    EXPECT_EQ(control.TakeRequests(), std::vector{3});
    control.repaint(QRect(100, 100, 50, 50));
    EXPECT_TRUE(control.TakeRequests().empty()) << "a page that paints itself draws no tab";
}

TEST_F(Painting, aDisabledCaptionIsEmbossedAndHasNoGlyph)
{
    auto &control = pages({u"Vente"_s, u"Stock"_s});
    QPixmap strip(32, 16);
    strip.fill(Qt::red);
    control.TabGlyphs()->setGlyph(strip);
    control.TabGlyphs()->setNumGlyphs(2);
    control.setTabInactiveColor(QColor(0, 0, 120));
    QFont font(u"DejaVu Sans"_s, 14, QFont::Black);
    control.setTabInactiveFont(font);
    show();
    const auto count = [&](const QColor &color) {
        const auto picture = control.grab(ToQRect(control.GetTabRect(1))).toImage();
        int pixels = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                pixels += picture.pixelColor(x, y) == color;
        }
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

TEST_F(Painting, captionsOfRightToLeftFormsHaveTheirGlyphOnTheRight)
{
    auto &control = pages({u"Vente"_s});
    QPixmap strip(16, 16);
    strip.fill(Qt::red);
    control.TabGlyphs()->setGlyph(strip);
    control.TabGlyphs()->setNumGlyphs(1);
    show();
    const auto glyphCentre = [&] {
        const auto picture = control.grab(ToQRect(control.GetTabRect(0))).toImage();
        int left = picture.width(), right = 0;
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, 12) == QColor(Qt::red)) {
                left = qMin(left, x);
                right = x;
            }
        }
        EXPECT_EQ(right - left, 15);
        return (left + right) / 2;
    };
    const int before = glyphCentre();
    EXPECT_LT(before, 40);
    control.setLayoutDirection(Qt::RightToLeft);
    settle();
    EXPECT_NEAR(glyphCentre(), 79 - before, 1);
}

TEST_F(Painting, theFocusIsSeen)
{
    auto &control = pages({u"Vente"_s, u"Stock"_s});
    show();
    control.clearFocus();
    const auto without = control.grab().toImage();
    control.setFocus();
    settle();
    EXPECT_NE(control.grab().toImage(), without);
    control.SetActivePage(nullptr);
    EXPECT_NE(control.grab(ToQRect(control.GetTabRect(0))).toImage(),
              control.grab(ToQRect(control.GetTabRect(1))).toImage())
        << "on the tab that the next key selects";
}

TEST_F(Painting, anErrorOfAHandlerReachesTheDisplayOnce)
{
    auto &control = pages({u"Vente"_s, u"Stock"_s});
    control.setObjectName(u"onglets"_s);
    show();
    QObject::connect(&control, &TExtCustomTab::OnDrawBkgndInside, &control, [] {});
    control.SetActivePage(nullptr);
    settle();
    control.repaint();
    control.repaint();
    settle();
    ASSERT_EQ(m_shown.size(), 1) << "no page has the tab -1";
    EXPECT_TRUE(m_shown[0].contains(u"CurrentTabIndex = -1"_s));
    EXPECT_EQ(control.Canvas(), nullptr);

    QObject::connect(&control, &TExtCustomTab::OnDrawTab, &control,
                     [] { throw EInvalidOperation("Pas d'encre"); });
    control.SetActivePageIndex(1);
    control.repaint();
    settle();
    EXPECT_EQ(m_shown.mid(1), QStringList{u"Pas d'encre"_s});
    EXPECT_EQ(control.Canvas(), nullptr);
}
