#pragma once

#include <Zelmar01/tabs/Rect.h>
#include <Zelmar01/tabs/TabTypes.h>

#include <QFontMetrics>
#include <QStringList>

#include <vector>

namespace Zelmar01 {

// How the content of a tab is laid out: functions on rectangles and font metrics, without a window. Captions
// carry mnemonics: "&" marks the character behind it and "&&" is one ampersand.

enum TAlignment { taLeftJustify, taRightJustify, taCenter };

/// A caption as it is shown, without the marks.
QString PlainCaption(const QString &caption);

/// The character that Alt selects the tab by, in upper case; null for none.
QChar AcceleratorOf(const QString &caption);

/// The lines of a caption: broken at line ends, and at blanks where a line would be wider than `width`. A
/// word that is wider stays whole. The blanks that a line is broken at belong to no line. Marks are kept.
QStringList WrappedCaption(const QString &caption, int width, const QFontMetrics &metrics);

/// A caption in place.
struct TCaptionLayout
{
    struct TLine
    {
        QString Text; ///< with marks
        TRect Rect;   ///< as wide as the text, which may be wider than the box
    };

    TRect Box; ///< what the lines are clipped to
    std::vector<TLine> Lines;
    bool IsClipped = false; ///< whether a line leaves the box
    TPoint GlyphCorner;     ///< where a glyph that belongs to the caption goes
};

/// Lays a caption out in `rect`, less 2 pixels a side. `offset` is kept free for a glyph, left of the caption
/// or above it. The lines stand in the middle between top and bottom; centred ones have the offset and the
/// text together in the middle. A text that is wider than the box shows its beginning.
TCaptionLayout LayOutCaption(const TRect &rect, TPoint offset, const QString &caption, TAlignment alignment,
                             bool wordWrap, const QFontMetrics &metrics);

/// What a tab's content is made of.
struct TTabContent
{
    TExtTabPosition Position = tabPosTop;
    bool HasGlyph = false; ///< whether there is a strip of glyphs at all
    bool IsDisabled = false;
    TExtGlyphPosition GlyphPosition = glPosLeft;
    int GlyphWidth = 0, GlyphHeight = 0, Spacing = 0;
};

/// How the caption of such a tab is placed. A disabled tab shows no glyph.
struct TCaptionPlace
{
    TPoint Offset;
    TAlignment Alignment = taCenter;
    bool ShowsGlyph = false;
};
TCaptionPlace PlaceCaption(const TTabContent &content);

/// The room that caption and glyph of such a tab take. Where `wordWrap` is set and `width` is not 0, that is
/// the width of the tab in which the caption is wrapped.
QSize ContentSize(const TTabContent &content, const QString &caption, bool wordWrap, int width,
                  const QFontMetrics &metrics);

/// The top left corner of the glyph in `rect`, once the caption lies in it.
TPoint PlaceGlyph(const TTabContent &content, const TRect &rect, TPoint captionsCorner);

} // namespace Zelmar01
