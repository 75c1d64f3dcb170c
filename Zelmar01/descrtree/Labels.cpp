#include <Zelmar01/descrtree/Labels.h>

namespace Zelmar01 {

QString TNodeTextRule::Text(const QString &code, const QString &libelle) const
{
    return AfficherCodeStat ? code + Separateur + libelle : libelle;
}

QString RootText(const QString &racine)
{
    return racine.isEmpty() ? QStringLiteral("Corvantix") : racine;
}

QString ChainedLabel(const QString &parentLibLong, const QString &libelle)
{
    return parentLibLong + QStringLiteral(" - ") + libelle;
}

QString LongLabel(const QString &parentLibLong, const QString &libelle)
{
    return parentLibLong.isEmpty() ? libelle : ChainedLabel(parentLibLong, libelle);
}

} // namespace Zelmar01
