#pragma once

#include <string>

namespace Zelmar01 {

/// Windows: opens an address (UTF-16) with the program registered for it, owned by the desktop, without
/// parameters and directory. `showState` is a show-window value. The result is not looked at.
void WindowsShellOpen(const std::u16string &address, int showState);

} // namespace Zelmar01
