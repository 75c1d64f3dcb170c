#pragma once

#include <QString>

namespace Zelmar01 {

/// How the text of a node is made from its record.
struct TNodeTextRule
{
    bool AfficherCodeStat = false;            ///< code, separator and label; else the label alone
    QString Separateur = QStringLiteral("-"); ///< stands between them without blanks

    QString Text(const QString &code, const QString &libelle) const;
};

/// The text of the root node: `racine`, or "Corvantix" when it is empty.
QString RootText(const QString &racine);

/// The long label of a level under a parent: the parent's long label, " - " and the label, even when the
/// parent's is empty. This is the form for new levels and for those below a changed one.
QString ChainedLabel(const QString &parentLibLong, const QString &libelle);

/// The long label of a level that was itself changed: as above, but the label alone when the parent's long
/// label is empty, as it is for a department.
QString LongLabel(const QString &parentLibLong, const QString &libelle);

} // namespace Zelmar01
