#pragma once

namespace Zelmar01 {

/// Makes the painted controls of this room known to assistive technology; more calls do nothing.
void InstallControlsAccessibility();

} // namespace Zelmar01
