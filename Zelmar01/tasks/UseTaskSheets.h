#pragma once

namespace Zelmar01 {

/// Makes the property sheets of jobs windows of the running QApplication, unless the host has already set its
/// own: those of the job store are pages of this library, and while the system's own are open the windows of
/// the application take no input. A host that shows properties of jobs calls it once at its start, after
/// UseMessageBoxes() (core/WidgetBoxes.h).
void UseTaskSheets();

} // namespace Zelmar01
