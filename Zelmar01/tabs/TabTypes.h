#pragma once

namespace Zelmar01 {

/// The greatest size and the greatest number of glyphs that a property holds.
inline constexpr int GreatestWord = 0xFFFF;

/// Where a glyph is drawn: left of the caption, or above it.
enum TExtGlyphPosition { glPosLeft, glPosTop };

/// Ordinary tabs, or tabs drawn as push buttons.
enum TExtTabStyle { tabStDefault, tabStButton };

/// The side of the control the tabs are on. The first two are the vertical positions.
enum TExtTabPosition { tabPosLeft, tabPosRight, tabPosTop, tabPosBottom };

constexpr bool IsVertical(TExtTabPosition position)
{
    return position < tabPosTop;
}

} // namespace Zelmar01
