#pragma once

#include <QString>

#include <functional>

namespace Zelmar01 {

/// Opens an address with the program that the system has for it. `showState` is a show-window value of
/// Windows (1 normal, 3 maximized, 6 minimized...); other systems have no use for it. The address is data: it
/// is handed over whole, never as an option and never to a command interpreter. An address that nothing can
/// open is the system's affair; nothing is raised.
using TShellOpen = std::function<void(const QString &address, int showState)>;

/// Replaces the operation by which links are opened and returns the one before. An empty function goes back
/// to the system's own.
TShellOpen SetShellOpen(TShellOpen open);

/// Opens an address with the operation in force.
void ShellOpen(const QString &address, int showState);

} // namespace Zelmar01
