#include <Zelmar01/tabs/TabText.h>

#include <gtest/gtest.h>

#include <QFont>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

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
    int widthOf(const QString &text) const { return m_metrics.horizontalAdvance(text); }

    TCaptionLayout layOut(const TRect &rect, TPoint offset, const QString &caption,
                          TAlignment alignment = taCenter, bool wordWrap = false) const
    {
        return LayOutCaption(rect, offset, caption, alignment, wordWrap, m_metrics);
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
    } cases[] = {{"&Vente", "Vente", 'V'},  {"Fi&che", "Fiche", 'C'}, {"Or && argent", "Or & argent", 0},
                 {"A&&B &C", "A&B C", 'C'}, {"Fin&", "Fin", 0},       {"Bagues & or", "Bagues  or", 0}};
    for (const auto &[caption, plain, key] : cases) {
        EXPECT_EQ(PlainCaption(QString::fromUtf8(caption)), QString::fromUtf8(plain));
        EXPECT_EQ(AcceleratorOf(QString::fromUtf8(caption)), key ? QChar::fromLatin1(key) : QChar());
    }
}

TEST_F(TabText, linesBreakAtBlanksOnly)
{
    const auto caption = u"Or jaune 18 carats"_s;
    const struct
    {
        QString Caption;
        int Width;
        QStringList Lines;
    } cases[] = {
        {caption, widthOf(caption), {caption}},
        {caption, widthOf(u"Or jaune 18"_s), {u"Or jaune 18"_s, u"carats"_s}},
        {caption, 1, {u"Or"_s, u"jaune"_s, u"18"_s, u"carats"_s}},
        {u"Porte-clés/médaille"_s, 10, {u"Porte-clés/médaille"_s}},
        {u"Bagues\r\net or"_s, 1000, {u"Bagues"_s, u"et or"_s}},
        {u"&Or && &argent"_s, widthOf(u"Or &"_s), {u"&Or &&"_s, u"&argent"_s}},
        {u""_s, 10, {u""_s}},
    };
    for (const auto &[text, width, lines] : cases)
        EXPECT_EQ(WrappedCaption(text, width, m_metrics), lines) << text.toStdString();
}

// A tab of 100 by 30, a glyph of 16 and a spacing of 5.
TEST_F(TabText, aCaptionLeavesRoomForItsGlyph)
{
    const TRect tab{10, 20, 110, 50};
    const auto caption = u"Vente"_s;
    const int width = widthOf(caption), top = 20 + 2 + (26 - m_metrics.height()) / 2;
    const struct
    {
        TAlignment Alignment;
        int Left;
    } cases[] = {{taCenter, 10 + 2 + 21 + (96 - width - 21) / 2},
                 {taLeftJustify, 10 + 2 + 21},
                 {taRightJustify, 110 - 2 - width}};
    for (const auto &[alignment, left] : cases) {
        const auto layout = layOut(tab, {21, 0}, caption, alignment);
        EXPECT_EQ(layout.Lines.at(0).Rect.Left, left);
        EXPECT_EQ(layout.Lines.at(0).Rect.Top, top);
        EXPECT_EQ(layout.GlyphCorner.Y, top);
        EXPECT_FALSE(layout.IsClipped);
    }
    EXPECT_EQ(layOut(tab, {21, 0}, caption).GlyphCorner.X, cases[0].Left - 21) << "centred together";
}

TEST_F(TabText, whatIsTooLongIsClippedAndShowsItsBeginning)
{
    const auto words = u"Montres homme et femme de plongee"_s;
    const auto one = layOut({0, 0, 60, 22}, {0, 0}, words);
    EXPECT_TRUE(one.IsClipped && one.Lines.size() == 1);
    EXPECT_TRUE(one.Box.Left == 2 && one.Box.Right == 58 && one.Lines[0].Rect.Left == 2);

    const auto wrapped = layOut({0, 0, 60, 22}, {0, 0}, words, taCenter, true);
    EXPECT_TRUE(wrapped.IsClipped && wrapped.Lines.size() > 2);
    EXPECT_TRUE(wrapped.Box.Top == 2 && wrapped.Box.Bottom == 20) << "never taller than the inner box";
    EXPECT_EQ(wrapped.Lines[1].Rect.Top, 2 + m_metrics.height());

    const auto block = layOut({0, 0, 100, 200}, {0, 21}, words, taCenter, true);
    const int height = static_cast<int>(block.Lines.size()) * m_metrics.height();
    EXPECT_FALSE(block.IsClipped);
    EXPECT_EQ(block.Box.Top, 2 + 21 + (196 - 21 - height) / 2);
    EXPECT_EQ(block.GlyphCorner.Y, block.Box.Top - 21);
}

// Glyphs of 16 by 12 and a spacing of 5, in a tab at (10, 20) of 100 by 31; the caption's corner is (40, 27).
TEST_F(TabText, captionAndGlyphAreOffsetByPositionAndState)
{
    const struct
    {
        TExtTabPosition Position;
        bool HasGlyph, Disabled;
        TExtGlyphPosition Where;
        std::pair<int, int> Offset;
        TAlignment Alignment;
        bool Shows;
        std::pair<int, int> Glyph;
    } cases[] = {
        {tabPosLeft, false, false, glPosLeft, {8, 0}, taLeftJustify, false, {}},
        {tabPosRight, false, true, glPosTop, {8, 0}, taLeftJustify, false, {}},
        {tabPosBottom, false, true, glPosLeft, {0, 0}, taCenter, false, {}},
        {tabPosLeft, true, true, glPosLeft, {0, 0}, taCenter, false, {}},
        {tabPosTop, true, true, glPosTop, {0, 0}, taCenter, false, {}},
        {tabPosRight, true, false, glPosLeft, {29, 0}, taLeftJustify, true, {18, 29}},
        {tabPosTop, true, false, glPosLeft, {21, 0}, taCenter, true, {40, 29}},
        {tabPosLeft, true, false, glPosTop, {0, 17}, taCenter, true, {52, 27}},
        {tabPosBottom, true, false, glPosTop, {0, 17}, taCenter, true, {52, 27}},
    };
    const TRect tab{10, 20, 110, 51};
    for (const auto &a : cases) {
        const TTabContent content{a.Position, a.HasGlyph, a.Disabled, a.Where, 16, 12, 5};
        const auto place = PlaceCaption(content);
        EXPECT_EQ(std::pair(place.Offset.X, place.Offset.Y), a.Offset);
        EXPECT_EQ(place.Alignment, a.Alignment);
        EXPECT_EQ(place.ShowsGlyph, a.Shows);
        const auto glyph = PlaceGlyph(content, tab, {40, 27});
        EXPECT_TRUE(!a.Shows || std::pair(glyph.X, glyph.Y) == a.Glyph);
    }
    const TTabContent high{tabPosTop, true, false, glPosLeft, 16, 40, 5};
    EXPECT_EQ(PlaceGlyph(high, tab, {40, 27}).Y, 20 - 4) << "truncated toward zero";
}

TEST_F(TabText, aTabThatFitsItsContentClipsNothing)
{
    const auto caption = u"Montres de plongée"_s;
    for (const auto position : {tabPosLeft, tabPosTop})
        for (const auto where : {glPosLeft, glPosTop})
            for (const int width : {0, 60, 110})
                for (const bool hasGlyph : {false, true}) {
                    const TTabContent content{position, hasGlyph, false, where, 16, 40, 5};
                    const auto size = ContentSize(content, caption, true, width, m_metrics);
                    const TRect tab{0, 0, width > 0 ? width : size.width() + 4, size.height() + 4};
                    const auto place = PlaceCaption(content);
                    const auto layout = layOut(tab, place.Offset, caption, place.Alignment, true);
                    const int glyph = PlaceGlyph(content, tab, layout.GlyphCorner).Y;
                    EXPECT_GE(tab.Height() - 4, m_metrics.height() * int(layout.Lines.size()));
                    EXPECT_TRUE(!hasGlyph || (glyph >= 0 && glyph + 40 <= tab.Bottom)) << glyph;
                    EXPECT_EQ(layout.Lines.size() > 1, width > 0 && widthOf(caption) > width - 4);
                }
}
