#pragma once

#include <Zelmar01/tabs/TabTypes.h>

#include <cstdint>

namespace Zelmar01 {

// The bits of a tab window's style word. It decides orientation, rows, buttons and who draws the tabs.
inline constexpr std::uint32_t TCS_RIGHT = 0x0002;  ///< with TCS_VERTICAL: tabs on the right
inline constexpr std::uint32_t TCS_BOTTOM = 0x0002; ///< without it: tabs at the bottom
inline constexpr std::uint32_t TCS_VERTICAL = 0x0080;
inline constexpr std::uint32_t TCS_BUTTONS = 0x0100;
inline constexpr std::uint32_t TCS_MULTILINE = 0x0200;
inline constexpr std::uint32_t TCS_OWNERDRAWFIXED = 0x2000;

/// The style word of a tab window with these properties.
constexpr std::uint32_t StyleWord(TExtTabPosition position, TExtTabStyle style, bool multiLine)
{
    constexpr std::uint32_t sides[] = {TCS_VERTICAL, TCS_VERTICAL | TCS_RIGHT, 0, TCS_BOTTOM};
    return TCS_OWNERDRAWFIXED | sides[position] | (style == tabStButton ? TCS_BUTTONS : 0) |
           (multiLine ? TCS_MULTILINE : 0);
}

/// The side that a style word puts the tabs on.
constexpr TExtTabPosition PositionOf(std::uint32_t style)
{
    if (style & TCS_VERTICAL)
        return style & TCS_RIGHT ? tabPosRight : tabPosLeft;
    return style & TCS_BOTTOM ? tabPosBottom : tabPosTop;
}

} // namespace Zelmar01
