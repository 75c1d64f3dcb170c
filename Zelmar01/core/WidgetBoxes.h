#pragma once

namespace Zelmar01 {

/// Makes message boxes and the exception display windows of the running QApplication, unless the host has
/// already set its own. Controls of this library call it by themselves; a host that uses components without
/// windows only calls it once at its start.
void UseMessageBoxes();

} // namespace Zelmar01
