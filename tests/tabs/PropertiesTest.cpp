#include "TabFixture.h"

#include <QMetaProperty>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

using Properties = TabFixture;

} // namespace

TEST_F(Properties, sizesAreSwappedWhereTabsAreRead)
{
    const struct
    {
        int Height, Width;
        std::vector<TExtTabPosition> Positions;
        std::vector<int> Sizes; // TabHeight, TabWidth, ItemHeight, ItemWidth
    } cases[] = {
        {0, 0, {tabPosLeft}, {35, 70, 70, 35}},
        {0, 0, {tabPosBottom}, {0, 0, 0, 0}},
        {0, 0, {tabPosRight, tabPosTop}, {35, 70, 35, 70}},
        {20, 0, {tabPosRight}, {20, 70, 70, 20}},
        {20, 90, {tabPosLeft, tabPosRight}, {20, 90, 90, 20}},
        {20, 90, {tabPosLeft, tabPosBottom, tabPosTop}, {20, 90, 20, 90}},
    };
    TExtTabControl last;
    for (const auto &[height, width, positions, sizes] : cases) {
        TExtTabControl control;
        control.setTabHeight(height);
        control.setTabWidth(width);
        for (const auto position : positions)
            control.setTabPosition(position);
        EXPECT_EQ(
            (std::vector{control.TabHeight(), control.TabWidth(), control.ItemHeight(), control.ItemWidth()}),
            sizes);
    }
    last.setTabPosition(tabPosLeft);
    last.setTabHeight(44);
    last.setTabWidth(1'000'000);
    EXPECT_EQ(last.ItemWidth(), 44) << "the height of a vertical tab runs along the strip";
    EXPECT_EQ(last.ItemHeight(), 0xFFFF);

    last.setTabStyle(tabStButton);
    EXPECT_EQ(last.TabPosition(), tabPosTop) << "where buttons are";
    EXPECT_EQ(last.WindowStyle(), 0x2100U);
    last.setTabPosition(tabPosRight);
    EXPECT_EQ(last.TabStyle(), tabStDefault);
    EXPECT_EQ(last.WindowStyle(), 0x2082U);
}

TEST_F(Properties, theWiderFontSizesTheTabs)
{
    TExtTabControl control;
    QFont small(u"DejaVu Sans"_s), large(u"DejaVu Sans"_s);
    small.setPixelSize(12);
    large.setPixelSize(20);
    control.setTabs({u"Montres"_s});
    for (const auto &[active, inactive] : {std::pair(small, large), std::pair(large, small)}) {
        control.setTabActiveFont(active);
        control.setTabInactiveFont(inactive);
        EXPECT_EQ(control.SizingFont().pixelSize(), 20);
        EXPECT_GT(control.GetTabRect(0).Width(), QFontMetrics(large).horizontalAdvance(u"Montres"_s));
    }
    auto same = small;
    same.setUnderline(true);
    control.setTabActiveFont(same);
    EXPECT_TRUE(control.SizingFont().underline()) << "the active one when both are as wide";

    control.setParentFont(false);
    QApplication::setFont(large, "QWidget");
    EXPECT_NE(control.font().pixelSize(), 20);
    control.setParentFont(true);
    EXPECT_EQ(control.font().pixelSize(), 20);
    QApplication::setFont(QFont(), "QWidget");

    auto &plain = tabs({u"Montres"_s});
    QFont bold;
    bold.setBold(true);
    plain.setTabActiveFont(bold);
    plain.setTabInactiveFont(bold);
    plain.setTabWidth(0);
    show();
    const int before = plain.GetTabRect(0).Width();
    const auto usual = QApplication::font();
    QApplication::setFont(large);
    settle();
    EXPECT_GT(plain.GetTabRect(0).Width(), before) << "what a form leaves open follows the desktop";
    QApplication::setFont(usual);
    settle();

    control.setTabHeight(21);
    control.setTabWidth(70);
    control.ChangeScale(3, 2);
    EXPECT_EQ(control.TabHeight(), 32);
    EXPECT_EQ(control.TabWidth(), 105);
    EXPECT_EQ(control.TabActiveFont()->Height(), -18);
}

TEST_F(Properties, tabsWithoutASizeFitTheirContent)
{
    auto &control = tabs({u"Or"_s, u"Montres de plongée"_s});
    control.setTabWidth(0);
    control.setTabHeight(0);
    const auto size = [&] { return ToQRect(control.GetTabRect(1)).size(); };
    const auto plain = size();
    EXPECT_LT(control.GetTabRect(0).Width(), plain.width());
    QPixmap strip(48, 24);
    strip.fill(Qt::red);
    control.TabGlyphs()->setGlyph(strip);
    EXPECT_EQ(size(), plain) << "no cells, no room";
    control.TabGlyphs()->setNumGlyphs(2);
    EXPECT_EQ(size().width(), plain.width() + 24 + 5);
    control.TabGlyphs()->setPosition(glPosTop);
    EXPECT_EQ(size(), plain + QSize(0, 24 + 5));
    control.TabGlyphs()->setSpacing(9);
    EXPECT_EQ(size(), plain + QSize(0, 24 + 9));
    control.setTabWordWrap(true);
    control.setTabWidth(80);
    EXPECT_GT(size().height(), plain.height() + 24 + 9) << "two lines";
}

TEST_F(Properties, whatCanBeResetGoesBackToItsDefault)
{
    TExtPageControl control, untouched;
    QFont bold;
    bold.setBold(true);
    const auto &meta = *control.metaObject();
    int count = 0;
    for (int i = QWidget::staticMetaObject.propertyCount(); i < meta.propertyCount(); ++i) {
        const auto property = meta.property(i);
        if (!property.isResettable())
            continue;
        const auto type = property.typeId();
        property.write(&control, type == QMetaType::QColor  ? QVariant(QColor(9, 8, 7))
                                 : type == QMetaType::QFont ? QVariant(bold)
                                 : type == QMetaType::QPixmap
                                     ? QVariant(QPixmap(4, 4))
                                     : QVariant(property.read(&control).toInt() == 1 ? 0 : 1));
        EXPECT_TRUE(property.reset(&control));
        const bool same = property.read(&control) == property.read(&untouched);
        EXPECT_TRUE(same || type == QMetaType::QPixmap) << property.name();
        ++count;
    }
    EXPECT_GE(count, 15);
    EXPECT_TRUE(control.TabGlyphs()->Glyph().isNull());
}
