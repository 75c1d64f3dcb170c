#pragma once

#include <Zelmar01/core/Colors.h>

namespace Zelmar01 {

// The fixed colours that the controls of this room begin with.
inline constexpr TColor clBlack(0x00000000);
inline constexpr TColor clGreen(0x00008000);
inline constexpr TColor clNavy(0x00800000);
inline constexpr TColor clRed(0x000000FF);
inline constexpr TColor clBlue(0x00FF0000);
inline constexpr TColor clSilver(0x00C0C0C0);
inline constexpr TColor clWhite(0x00FFFFFF);

} // namespace Zelmar01
