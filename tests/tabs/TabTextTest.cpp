#include <Zelmar01/tabs/TabText.h>

#include <gtest/gtest.h>

#include <QFont>

#include <ostream>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace Zelmar01 {

void PrintTo(const TPoint &point, std::ostream *out)
{
    *out << '{' << point.X << ", " << point.Y << '}';
}

} // namespace Zelmar01

namespace {

class TabText : public testing::Test
{
protected:
    static QFont font()
    {
        QFont font(u"DejaVu Sans"_s);
        font.setPixelSize(13);
        return font;
    }

    // A caption of "x"s that is at most so wide, and how wide it is.
    std::pair<QString, int> captionOfAbout(int width) const
    {
        QString caption;
        while (m_metrics.horizontalAdvance(caption + u'x') <= width)
            caption += u'x';
        return {caption, m_metrics.horizontalAdvance(caption)};
    }

    QFontMetrics m_metrics{font()};
};

} // namespace

TEST_F(TabText, marksAreReadAndLeftOut)
{
    const struct
    {
        const char *Caption, *Plain;
        char Key;
    } cases[] = {
        {"&Vente", "Vente", 'V'},        {"Fi&che", "Fiche", 'C'}, {"Or && argent", "Or & argent", 0},
        {"A&&B &C", "A&B C", 'C'},       {"Fin&", "Fin", 0},       {"", "", 0},
        {"Bagues & or", "Bagues  or", 0}};
    for (const auto &[caption, plain, key] : cases) {
        EXPECT_EQ(PlainCaption(QString::fromUtf8(caption)), QString::fromUtf8(plain));
        EXPECT_EQ(AcceleratorOf(QString::fromUtf8(caption)), key ? QChar::fromLatin1(key) : QChar());
    }
}

TEST_F(TabText, linesBreakAtBlanksOnly)
{
    const auto about = [&](const char *text) { return m_metrics.horizontalAdvance(QString::fromUtf8(text)); };
    const struct
    {
        QString Caption;
        int Width;
        QStringList Lines;
    } cases[] = {
        {u"Or jaune 18 carats"_s, about("Or jaune 18 carats"), {u"Or jaune 18 carats"_s}},
        {u"Or jaune 18 carats"_s, about("Or jaune 18"), {u"Or jaune 18"_s, u"carats"_s}},
        {u"Or jaune 18 carats"_s, 1, {u"Or"_s, u"jaune"_s, u"18"_s, u"carats"_s}},
        {u"Porte-cl\u00e9s/m\u00e9daille"_s, 10, {u"Porte-cl\u00e9s/m\u00e9daille"_s}},
        {u"Bagues\r\net or"_s, 1000, {u"Bagues"_s, u"et or"_s}},
        {u"&Or && &argent"_s, about("Or &"), {u"&Or &&"_s, u"&argent"_s}},
        {u""_s, 10, {u""_s}},
    };
    for (const auto &[caption, width, lines] : cases)
        EXPECT_EQ(WrappedCaption(caption, width, m_metrics), lines) << caption.toStdString();
}

// A tab 100 wide, a glyph of 16 and a spacing of 5: text and glyph are centred together.
TEST_F(TabText, aCentredCaptionSharesTheMiddleWithItsGlyph)
{
    const TRect tab{10, 20, 110, 50};
    const auto [caption, width] = captionOfAbout(40);
    const auto layout = LayOutCaption(tab, {21, 0}, caption, taCenter, false, m_metrics);
    const int left = 10 + 2 + 21 + (96 - width - 21) / 2;
    ASSERT_EQ(layout.Lines.size(), 1U);
    EXPECT_EQ(layout.Lines[0].Rect.Left, left);
    EXPECT_EQ(layout.Lines[0].Rect.Width(), width);
    EXPECT_EQ(layout.Lines[0].Rect.Top, 20 + 2 + (26 - m_metrics.height()) / 2);
    EXPECT_EQ(layout.GlyphCorner, (TPoint{left - 21, layout.Lines[0].Rect.Top}));
    EXPECT_FALSE(layout.IsClipped);
}

TEST_F(TabText, otherAlignmentsKeepToTheirSide)
{
    const TRect tab{0, 0, 100, 30};
    const auto [caption, width] = captionOfAbout(40);
    EXPECT_EQ(LayOutCaption(tab, {8, 0}, caption, taLeftJustify, false, m_metrics).Lines[0].Rect.Left, 10);
    EXPECT_EQ(LayOutCaption(tab, {8, 0}, caption, taLeftJustify, false, m_metrics).GlyphCorner.X, 2);
    EXPECT_EQ(LayOutCaption(tab, {0, 0}, caption, taRightJustify, false, m_metrics).Lines[0].Rect.Right, 98);
}

TEST_F(TabText, whatIsTooLongIsClippedAndShowsItsBeginning)
{
    const TRect tab{0, 0, 60, 22};
    const auto words = u"Montres homme et femme de plongee"_s;
    const auto one = LayOutCaption(tab, {0, 0}, words, taCenter, false, m_metrics);
    EXPECT_EQ(one.Lines.size(), 1U);
    EXPECT_TRUE(one.IsClipped);
    EXPECT_EQ(one.Box.Left, 2);
    EXPECT_EQ(one.Box.Right, 58);
    EXPECT_EQ(one.Lines[0].Rect.Left, 2);

    const auto wrapped = LayOutCaption(tab, {0, 0}, words, taCenter, true, m_metrics);
    EXPECT_GT(wrapped.Lines.size(), 2U);
    EXPECT_TRUE(wrapped.IsClipped);
    EXPECT_EQ(wrapped.Box.Top, 2);
    EXPECT_EQ(wrapped.Box.Bottom, 20) << "never taller than the tab's inner box";
    EXPECT_EQ(wrapped.Lines[0].Rect.Top, 2);
    EXPECT_EQ(wrapped.Lines[1].Rect.Top, 2 + m_metrics.height());

    const TRect high{0, 0, 100, 200};
    const auto block = LayOutCaption(high, {0, 21}, words, taCenter, true, m_metrics);
    const int textHeight = static_cast<int>(block.Lines.size()) * m_metrics.height();
    EXPECT_FALSE(block.IsClipped);
    EXPECT_EQ(block.Box.Top, 2 + 21 + (196 - 21 - textHeight) / 2);
    EXPECT_EQ(block.GlyphCorner.Y, block.Box.Top - 21);
}

// Glyphs of 16 by 12 with a spacing of 5, in a tab at (10, 20) of 100 by 31; the caption's corner is (40,
// 27).
TEST_F(TabText, captionAndGlyphAreOffsetByPositionAndState)
{
    const TRect tab{10, 20, 110, 51};
    const struct
    {
        TExtTabPosition Position;
        bool HasGlyph, Disabled;
        TExtGlyphPosition Where;
        TPoint Offset;
        TAlignment Alignment;
        bool Shows;
        TPoint Glyph;
    } cases[] = {
        {tabPosLeft, false, false, glPosLeft, {8, 0}, taLeftJustify, false, {}},
        {tabPosRight, false, true, glPosTop, {8, 0}, taLeftJustify, false, {}},
        {tabPosTop, false, false, glPosLeft, {0, 0}, taCenter, false, {}},
        {tabPosBottom, false, true, glPosLeft, {0, 0}, taCenter, false, {}},
        {tabPosLeft, true, true, glPosLeft, {0, 0}, taCenter, false, {}},
        {tabPosTop, true, true, glPosTop, {0, 0}, taCenter, false, {}},
        {tabPosLeft, true, false, glPosLeft, {29, 0}, taLeftJustify, true, {18, 29}},
        {tabPosRight, true, false, glPosLeft, {29, 0}, taLeftJustify, true, {18, 29}},
        {tabPosTop, true, false, glPosLeft, {21, 0}, taCenter, true, {40, 29}},
        {tabPosBottom, true, false, glPosLeft, {21, 0}, taCenter, true, {40, 29}},
        {tabPosLeft, true, false, glPosTop, {0, 17}, taCenter, true, {52, 27}},
        {tabPosTop, true, false, glPosTop, {0, 17}, taCenter, true, {52, 27}},
    };
    for (const auto &a : cases) {
        const TTabContent content{a.Position, a.HasGlyph, a.Disabled, a.Where, 16, 12, 5};
        const auto place = PlaceCaption(content);
        EXPECT_EQ(place.Offset, a.Offset);
        EXPECT_EQ(place.Alignment, a.Alignment);
        EXPECT_EQ(place.ShowsGlyph, a.Shows);
        if (a.Shows) {
            EXPECT_EQ(PlaceGlyph(content, tab, {40, 27}), a.Glyph);
        }
    }
    const TTabContent high{tabPosTop, true, false, glPosLeft, 16, 40, 5};
    EXPECT_EQ(PlaceGlyph(high, tab, {40, 27}).Y, 20 - 4) << "truncated toward zero";
}
