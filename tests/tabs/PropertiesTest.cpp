#include "TabFixture.h"

#include <Zelmar01/tabs/TabStyleWord.h>

#include <QMetaEnum>
#include <QMetaProperty>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

using Properties = TabFixture;

} // namespace

TEST_F(Properties, sizesAreSwappedWhereTabsAreRead)
{
    struct TSizes
    {
        int Height, Width, ItemHeight, ItemWidth;
        bool operator==(const TSizes &) const = default;
    };
    const struct
    {
        int Height, Width;
        std::vector<TExtTabPosition> Positions;
        TSizes Sizes;
    } cases[] = {
        {0, 0, {tabPosLeft}, {35, 70, 70, 35}},
        {0, 0, {tabPosBottom}, {0, 0, 0, 0}},
        {0, 0, {tabPosRight, tabPosTop}, {35, 70, 35, 70}},
        {20, 0, {tabPosRight}, {20, 70, 70, 20}},
        {20, 90, {tabPosLeft, tabPosRight}, {20, 90, 90, 20}},
        {20, 90, {tabPosBottom}, {20, 90, 20, 90}},
        {20, 90, {tabPosLeft, tabPosBottom, tabPosTop}, {20, 90, 20, 90}},
    };
    for (const auto &[height, width, positions, sizes] : cases) {
        TExtTabControl control;
        control.setTabHeight(height);
        control.setTabWidth(width);
        for (const auto position : positions)
            control.setTabPosition(position);
        EXPECT_EQ(
            (TSizes{control.TabHeight(), control.TabWidth(), control.ItemHeight(), control.ItemWidth()}),
            sizes);
    }
    TExtTabControl control;
    control.setTabPosition(tabPosLeft);
    control.setTabHeight(44);
    EXPECT_EQ(control.ItemWidth(), 44) << "the height of a vertical tab runs along the strip";
    control.setTabWidth(1'000'000);
    EXPECT_EQ(control.ItemHeight(), 0xFFFF);
}

TEST_F(Properties, buttonsAreAtTheTopOnly)
{
    TExtTabControl control;
    control.setTabPosition(tabPosBottom);
    EXPECT_EQ(control.WindowStyle(), 0x2002U);
    control.setTabStyle(tabStButton);
    EXPECT_EQ(control.TabPosition(), tabPosTop);
    EXPECT_EQ(control.WindowStyle(), 0x2100U);
    control.setTabPosition(tabPosRight);
    EXPECT_EQ(control.TabStyle(), tabStDefault);
    EXPECT_EQ(control.WindowStyle(), 0x2082U);
    control.setMultiLine(true);
    EXPECT_EQ(control.WindowStyle(), 0x2282U);
    EXPECT_EQ(control.WindowStyle(), control.CreateParams());
}

TEST_F(Properties, theWiderFontSizesTheTabs)
{
    TExtTabControl control;
    QFont small(u"DejaVu Sans"_s), large(u"DejaVu Sans"_s);
    small.setPixelSize(12);
    large.setPixelSize(20);
    control.setTabs({u"Montres"_s});
    const struct
    {
        QFont Active, Inactive, Sizing;
    } cases[] = {{small, large, large}, {large, small, large}};
    for (const auto &[active, inactive, sizing] : cases) {
        control.setTabActiveFont(active);
        control.setTabInactiveFont(inactive);
        EXPECT_EQ(control.SizingFont().pixelSize(), sizing.pixelSize());
        EXPECT_GT(control.GetTabRect(0).Width(), QFontMetrics(large).horizontalAdvance(u"Montres"_s));
    }
    auto same = small;
    same.setUnderline(true);
    control.setTabActiveFont(same);
    control.setTabInactiveFont(small);
    EXPECT_TRUE(control.SizingFont().underline()) << "the active one when both are as wide";
}

TEST_F(Properties, tabsWithoutASizeFitTheirContent)
{
    auto &control = tabs({u"Or"_s, u"Montres de plongee"_s});
    control.setTabWidth(0);
    control.setTabHeight(0);
    const QFontMetrics metrics(control.SizingFont());
    const auto width = [&] { return control.GetTabRect(1).Width(); };
    const auto height = [&] { return control.GetTabRect(1).Height(); };
    EXPECT_GE(width(), metrics.horizontalAdvance(u"Montres de plongee"_s) + 4);
    EXPECT_LT(control.GetTabRect(0).Width(), width());
    const int plainWidth = width(), plainHeight = height();
    QPixmap strip(48, 24);
    strip.fill(Qt::red);
    control.TabGlyphs()->setGlyph(strip);
    EXPECT_EQ(width(), plainWidth) << "no cells, no room";
    control.TabGlyphs()->setNumGlyphs(2);
    EXPECT_EQ(width(), plainWidth + 24 + 5);
    control.TabGlyphs()->setPosition(glPosTop);
    EXPECT_EQ(width(), plainWidth);
    EXPECT_EQ(height(), plainHeight + 24 + 5);
}

TEST_F(Properties, scalingTakesTabsAndFontsAlong)
{
    TExtTabControl control;
    control.setTabHeight(21);
    control.setTabWidth(70);
    control.TabActiveFont()->setHeight(-12);
    control.ChangeScale(3, 2);
    EXPECT_EQ(control.TabHeight(), 32);
    EXPECT_EQ(control.TabWidth(), 105);
    EXPECT_EQ(control.TabActiveFont()->Height(), -18);
}

TEST_F(Properties, otherObjectsForGlyphsAndHotTrackingChangeNothing)
{
    TExtTabControl control, other;
    other.TabGlyphs()->setSpacing(99);
    other.Hottrack()->setEnabled(true);
    control.SetTabGlyphs(other.TabGlyphs());
    control.SetHottrack(other.Hottrack());
    EXPECT_EQ(control.TabGlyphs()->Spacing(), 5);
    EXPECT_FALSE(control.Hottrack()->Enabled());
}

// Everything a form can set, through the property system as a form does, and back to its default.
TEST_F(Properties, formsReachEverything)
{
    QPixmap strip(32, 16);
    strip.fill(Qt::red);
    QFont font(u"DejaVu Sans"_s);
    font.setBold(true);
    const struct
    {
        const char *Name;
        QVariant Value;
        bool CanBeReset;
    } cases[] = {
        {"Color", QColor(1, 2, 3), true},
        {"ParentColor", true, true},
        {"MultiLine", true, false},
        {"ShowHint", false, false},
        {"Hottrack_Enabled", true, false},
        {"Hottrack_TabActiveColor", QColor(4, 5, 6), true},
        {"Hottrack_TabInactiveColor", QColor(7, 8, 9), true},
        {"TabActiveColor", QColor(10, 11, 12), true},
        {"TabActiveFont", font, true},
        {"TabActiveFont_Color", QColor(13, 14, 15), true},
        {"TabGlyphs_NumGlyphs", 2, false},
        {"TabGlyphs_Position", QVariant::fromValue(glPosTop), false},
        {"TabGlyphs_Spacing", 9, true},
        {"TabGlyphs_TransparentColor", QColor(0, 0, 255), true},
        {"TabHeight", 30, false},
        {"TabHints", QStringList{u"a"_s, u"b"_s}, false},
        {"TabInactiveColor", QColor(16, 17, 18), true},
        {"TabInactiveFont", font, true},
        {"TabInactiveFont_Color", QColor(19, 20, 21), true},
        {"TabPosition", QVariant::fromValue(tabPosRight), true},
        {"TabWidth", 90, false},
        {"TabWordWrap", true, false},
        {"TabStyle", QVariant::fromValue(tabStButton), true},
        {"InitialTab", 2, true},
        {"Tabs", QStringList{u"x"_s, u"y"_s, u"z"_s}, false},
        {"TabIndex", 1, false},
    };
    TExtTabControl control, untouched;
    control.setProperty("TabGlyphs_Glyph", strip);
    for (const auto &[name, value, canBeReset] : cases) {
        const auto property = control.metaObject()->property(control.metaObject()->indexOfProperty(name));
        ASSERT_TRUE(property.isValid()) << name;
        EXPECT_TRUE(property.write(&control, value)) << name;
        EXPECT_EQ(property.read(&control), value) << name;
        EXPECT_EQ(property.isResettable(), canBeReset) << name;
        if (property.isResettable()) {
            EXPECT_TRUE(property.reset(&control));
            EXPECT_EQ(property.read(&control), property.read(&untouched)) << name;
        }
    }
    EXPECT_EQ(control.TabGlyphs()->ImageList()->Count(), 2);
}

TEST_F(Properties, enumerationsHaveTheirNamesInForms)
{
    const auto &meta = TExtPageControl::staticMetaObject;
    const struct
    {
        const char *Property;
        std::vector<const char *> Names;
    } cases[] = {{"TabPosition", {"tabPosLeft", "tabPosRight", "tabPosTop", "tabPosBottom"}},
                 {"TabStyle", {"tabStDefault", "tabStButton"}},
                 {"TabGlyphs_Position", {"glPosLeft", "glPosTop"}}};
    for (const auto &[property, names] : cases) {
        const auto enumerator = meta.property(meta.indexOfProperty(property)).enumerator();
        ASSERT_EQ(enumerator.keyCount(), static_cast<int>(names.size())) << property;
        for (int i = 0; i < enumerator.keyCount(); ++i) {
            EXPECT_STREQ(enumerator.key(i), names[static_cast<std::size_t>(i)]);
            EXPECT_EQ(enumerator.value(i), i);
        }
    }
    EXPECT_EQ(tabPosBottom, 3) << "the list that Qt reads and the one that is compiled are the same";
    EXPECT_EQ(tabStButton, 1);
    EXPECT_EQ(glPosTop, 1);
}

TEST_F(Properties, coloursAreFixedOrOfTheDesktopOrNone)
{
    EXPECT_EQ(TColor(QColor(160, 160, 164)).Value(), 0x00A4A0A0U);
    EXPECT_TRUE(TColor(QColor()).IsNone());
    EXPECT_TRUE(TColor(QColor(1, 2, 3, 0)).IsNone());
    EXPECT_EQ(TColor(QColor(1, 2, 3, 4)), TColor(QColor(1, 2, 3)));
    EXPECT_EQ(clNone.Resolved({}).alpha(), 0);
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(9, 8, 7));
    EXPECT_EQ(clWindow.Resolved(palette), QColor(9, 8, 7));

    EXPECT_NEAR(ContrastOf(Qt::black, Qt::white), 21, 0.01);
    for (int still = 0; still < 256; still += 15) {
        const QColor ground(still, 255 - still, still / 2);
        for (const auto &moving : {QColor(160, 160, 164), QColor(200, 0, 0), QColor(0, 0, 90)}) {
            const auto moved = WithContrast(moving, ground);
            EXPECT_GE(ContrastOf(moved, ground), 4.49);
            if (ContrastOf(moving, ground) >= 4.5) {
                EXPECT_EQ(moved, moving);
            }
        }
    }
}
