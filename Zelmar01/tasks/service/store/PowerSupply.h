#pragma once

namespace Zelmar01 {

/// Whether this computer runs on a battery: it has one that is being emptied, and no other supply that is
/// connected. It looks in /sys/class/power_supply or the folder of the variable ZELMAR01_POWER_SUPPLY; where
/// there is none it answers false.
bool IsOnBattery();

} // namespace Zelmar01
