#pragma once

#include <Zelmar01/package/StartUp.h>

namespace Zelmar01 {

/// Keeps the library loaded: its 24 units are started, in their order, when the first object of this class is
/// made, and finished in reverse order when the last one goes. A host holds one in its main function, on the
/// thread that uses the components; the plugin for the form designer holds one of its own.
///
///     int main(int argc, char **argv)
///     {
///         QApplication application(argc, argv);
///         const Zelmar01::TPackage package;
///         ...
///
/// Components also work without it, since each of them starts what it needs. With it that is done in one
/// place, and a failure is known before the first form is made.
class TPackage
{
public:
    /// Raises what the start-up of a unit raises; the units before it are finished then.
    TPackage();
    ~TPackage();
    TPackage(const TPackage &) = delete;
    TPackage &operator=(const TPackage &) = delete;

    /// The units of this library, with their counters.
    static const TStartUp &StartUp();
};

} // namespace Zelmar01
