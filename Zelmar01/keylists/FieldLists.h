#pragma once

#include <QString>

namespace Zelmar01 {

/// Lists of field names as one text: names separated by ";", without blanks. Names are compared with letter
/// case, and as a whole: a name may begin with another one. Positions count characters from 1.

/// The position at which a name begins; 0 when the list does not have it.
int ChercherChamp(const QString &champ, const QString &liste);

/// Moves the name that begins at a position to the front. Another position changes nothing.
void MettreEnTete(int position, QString &liste);

/// Adds a name at the end. Whether the list has at most two names then.
bool AjouterChamp(const QString &champ, QString &liste);

/// Takes the last name out.
void SupprimerChamp(QString &liste);

/// Takes the name that begins at a position out. Another position changes nothing.
void SupprimerChampAtPos(int position, QString &liste);

} // namespace Zelmar01
