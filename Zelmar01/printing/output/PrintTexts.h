#pragma once

#include <Zelmar01/core/Translation.h>

namespace Zelmar01 {

/// Reasons and remedies that the print systems of all platforms tell in the same words.
namespace PrintTexts {

inline std::string NoDeviceSet()
{
    return Translate("Zelmar01", "aucun périphérique n'est réglé pour ce port");
}

inline std::string NoPrintingDevice()
{
    return Translate("Zelmar01", "n'est pas un périphérique d'impression");
}

inline std::string LineRefused()
{
    return Translate("Zelmar01", "le périphérique refuse les réglages de ligne demandés");
}

inline std::string NoDefaultPrinter()
{
    return Translate("Zelmar01", "aucune imprimante par défaut");
}

inline std::string MendSetting()
{
    return Translate("Zelmar01", "corriger ce réglage");
}

inline std::string SetPort()
{
    return Translate("Zelmar01", "le régler par ZELMAR01_PORTS ou ports.conf");
}

inline std::string PortInUse()
{
    return Translate("Zelmar01", "un autre programme utilise ce port");
}

inline std::string LookAtPrinter()
{
    return Translate("Zelmar01", "vérifier que l'imprimante est allumée, en ligne et garnie de papier");
}

inline std::string ChoosePrinter()
{
    return Translate("Zelmar01", "choisir une imprimante, ou en définir une par défaut");
}

inline std::string ChooseListedPrinter()
{
    return Translate("Zelmar01", "choisir une imprimante de la liste");
}

} // namespace PrintTexts

} // namespace Zelmar01
