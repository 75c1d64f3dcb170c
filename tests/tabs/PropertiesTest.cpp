#include "TabFixture.h"

#include <Zelmar01/tabs/TabStyleWord.h>

#include <QDir>
#include <QFile>
#include <QMetaProperty>

#ifdef WITH_UITOOLS
#include <QUiLoader>
#endif

#include "ui_TabsForm.h"

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

using Properties = TabFixture;

#ifdef WITH_UITOOLS
// Knows the classes without a plugin.
class TLoader : public QUiLoader
{
public:
    QWidget *createWidget(const QString &name, QWidget *parent, const QString &objectName) override
    {
        QWidget *made = name == u"Zelmar01::TExtPageControl"_s  ? new TExtPageControl(parent)
                        : name == u"Zelmar01::TExtTabControl"_s ? new TExtTabControl(parent)
                        : name == u"Zelmar01::TTabSheet"_s
                            ? new TTabSheet(parent)
                            : QUiLoader::createWidget(name, parent, objectName);
        made->setObjectName(objectName);
        return made;
    }
};
#endif

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
    TExtGlyphs other(&last);
    other.setSpacing(99);
    last.SetTabGlyphs(&other);
    EXPECT_EQ(last.TabGlyphs()->Spacing(), 5) << "glyphs are set one by one";
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
    plain.setTabWidth(0);
    show();
    const int before = plain.GetTabRect(0).Width();
    const auto usual = QApplication::font();
    QApplication::setFont(large);
    settle();
    EXPECT_GT(plain.GetTabRect(0).Width(), before) << "tabs without a font of their own follow the desktop's";
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
    control.setTabWordWrap(true);
    control.setTabWidth(80);
    EXPECT_GT(size().height(), plain.height() + 24 + 5) << "two lines";
}

// A form in the way of the compiler, and in that of the loader.
TEST_F(Properties, aFormKeepsEverything)
{
    const struct
    {
        const char *Widget, *Name;
        QVariant Value;
    } kept[] = {
        {"pages", "Align", QVariant::fromValue(TPlacement::alClient)},
        {"pages", "ActivePage", u"fiche"_s},
        {"pages", "InitialPage", -1},
        {"pages", "Color", QColor(1, 2, 3)},
        {"pages", "MultiLine", true},
        {"pages", "ShowHint", false},
        {"pages", "Hottrack_Enabled", true},
        {"pages", "Hottrack_TabActiveColor", QColor(4, 5, 6)},
        {"pages", "Hottrack_TabInactiveColor", QColor(7, 8, 9)},
        {"pages", "TabActiveColor", QColor(10, 11, 12)},
        {"pages", "TabActiveFont_Color", QColor(13, 14, 15)},
        {"pages", "TabGlyphs_NumGlyphs", 4},
        {"pages", "TabGlyphs_Position", QVariant::fromValue(glPosTop)},
        {"pages", "TabGlyphs_Spacing", 9},
        {"pages", "TabGlyphs_TransparentColor", QColor(0, 0, 255)},
        {"pages", "TabHeight", 30},
        {"pages", "TabHints", QStringList{u"a"_s, u"b"_s}},
        {"pages", "TabInactiveColor", QColor(16, 17, 18)},
        {"pages", "TabInactiveFont_Color", QColor(19, 20, 21)},
        {"pages", "TabPosition", QVariant::fromValue(tabPosRight)},
        {"pages", "TabWidth", 90},
        {"pages", "TabWordWrap", true},
        {"vente", "Caption", u"&Vente"_s},
        {"vente", "TabVisible", false},
        {"vente", "Tag", 7},
        {"fiche", "PageIndex", 1},
        {"stock", "enabled", false},
        {"tabs", "Anchors", QVariant::fromValue(TPlacement::TAnchors(TPlacement::akBottom))},
        {"tabs", "InitialTab", 2},
        {"tabs", "ParentColor", true},
        {"tabs", "TabIndex", 1},
        {"tabs", "Tabs", QStringList{u"x"_s, u"y"_s, u"z"_s}},
        {"tabs", "TabStyle", QVariant::fromValue(tabStButton)},
    };
    const auto check = [&](QWidget &form) {
        for (const auto &[name, property, value] : kept) {
            const auto *widget = form.findChild<QWidget *>(QLatin1String(name));
            ASSERT_NE(widget, nullptr) << name;
            EXPECT_EQ(widget->property(property), value) << name << '.' << property;
        }
        const auto &pages = *form.findChild<TExtPageControl *>();
        EXPECT_EQ(pages.TabActiveFont()->SetParts().pointSize(), 17);
        EXPECT_TRUE(pages.TabInactiveFont()->SetParts().bold());
        EXPECT_EQ(pages.TabGlyphs()->ImageList()->Count(), 4);
        form.show();
        EXPECT_EQ(pages.ActivePage(), form.findChild<QWidget *>(u"fiche"_s));
        EXPECT_EQ(form.findChild<TExtTabControl *>(u"tabs"_s)->GetTabIndex(), 2) << "the initial one";
    };
    const struct TFolder
    {
        QString Before = QDir::currentPath();
        TFolder() { QDir::setCurrent(QStringLiteral(PICTURES)); }
        ~TFolder() { QDir::setCurrent(Before); }
    } pictures;
    QWidget compiled;
    Ui::TabsForm().setupUi(&compiled);
    check(compiled);
#ifdef WITH_UITOOLS
    QFile file(QStringLiteral(FORM));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const std::unique_ptr<QWidget> loaded(TLoader().load(&file));
    ASSERT_NE(loaded, nullptr);
    check(*loaded);
#endif
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
