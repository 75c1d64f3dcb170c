#pragma once

namespace Zelmar01 {

/// Reasons and remedies that the print systems of all platforms tell in the same words.
namespace PrintTexts {

inline constexpr const char *NoDeviceSet = "aucun périphérique n'est réglé pour ce port";
inline constexpr const char *NoPrintingDevice = "n'est pas un périphérique d'impression";
inline constexpr const char *LineRefused = "le périphérique refuse les réglages de ligne demandés";
inline constexpr const char *NoDefaultPrinter = "aucune imprimante par défaut";

inline constexpr const char *MendSetting = "corriger ce réglage";
inline constexpr const char *SetPort = "le régler par ZELMAR01_PORTS ou ports.conf";
inline constexpr const char *PortInUse = "un autre programme utilise ce port";
inline constexpr const char *LookAtPrinter =
    "vérifier que l'imprimante est allumée, en ligne et garnie de papier";
inline constexpr const char *ChoosePrinter = "choisir une imprimante, ou en définir une par défaut";

} // namespace PrintTexts

} // namespace Zelmar01
