#include <Zelmar01/keylists/FieldLists.h>

namespace Zelmar01 {

namespace {

constexpr QChar separator = u';';

struct TPlace
{
    qsizetype Begin, End; // from 0, the end excluded
};

// The first name for which `is(place)` holds; an empty place at -1 when there is none.
template<class Is>
TPlace find(const QString &list, Is is)
{
    for (qsizetype begin = 0; begin < list.size();) {
        const auto found = list.indexOf(separator, begin);
        const TPlace place{begin, found < 0 ? list.size() : found};
        if (is(place))
            return place;
        begin = place.End + 1;
    }
    return {-1, -1};
}

TPlace placeAt(int position, const QString &list)
{
    return find(list, [position](const TPlace &place) { return place.Begin + 1 == position; });
}

} // namespace

int ChercherChamp(const QString &champ, const QString &liste)
{
    const auto place = find(liste, [&](const TPlace &name) {
        return QStringView(liste).mid(name.Begin, name.End - name.Begin) == champ;
    });
    return static_cast<int>(place.Begin) + 1;
}

void MettreEnTete(int position, QString &liste)
{
    const auto place = placeAt(position, liste);
    if (place.Begin <= 0)
        return;
    const auto name = liste.mid(place.Begin, place.End - place.Begin);
    SupprimerChampAtPos(position, liste);
    liste.prepend(name + separator);
}

bool AjouterChamp(const QString &champ, QString &liste)
{
    liste = liste.trimmed().isEmpty() ? champ + liste : liste + separator + champ;
    return liste.count(separator) < 2;
}

void SupprimerChamp(QString &liste)
{
    liste.truncate(qMax(liste.lastIndexOf(separator), qsizetype(0)));
}

void SupprimerChampAtPos(int position, QString &liste)
{
    const auto place = placeAt(position, liste);
    if (place.Begin < 0)
        return;
    const auto begin = qMax(place.Begin - 1, qsizetype(0)); // with the separator before it, or behind it
    liste.remove(begin, place.Begin == 0 ? place.End + 1 : place.End - begin);
}

} // namespace Zelmar01
