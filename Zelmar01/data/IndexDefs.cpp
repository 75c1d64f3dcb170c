#include <Zelmar01/data/IndexDefs.h>

#include <Zelmar01/core/Translation.h>
#include <Zelmar01/data/DataErrors.h>

#include <QStringList>

#include <algorithm>

namespace Zelmar01 {

bool TIndexDef::IsDescending(const QString &field) const
{
    return Options.testFlag(ixDescending) &&
           (DescFields.isEmpty() || DescFields.split(u';').contains(field, Qt::CaseInsensitive));
}

const TIndexDef &TIndexDefs::operator[](int index) const
{
    if (index < 0 || index >= Count())
        throw EDatabaseError(
            Filled(Translate("Zelmar01", "Aucun index au rang %1"), {std::to_string(index)}));
    return m_defs[static_cast<std::size_t>(index)];
}

int TIndexDefs::IndexOf(const QString &name) const
{
    const auto found = std::find_if(m_defs.begin(), m_defs.end(), [&](const TIndexDef &def) {
        return def.Name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == m_defs.end() ? -1 : static_cast<int>(found - m_defs.begin());
}

const TIndexDef &TIndexDefs::Find(const QString &name) const
{
    const int index = IndexOf(name);
    if (index < 0)
        throw EDatabaseError(Filled(Translate("Zelmar01", "Index « %1 » introuvable"), {name.toStdString()}));
    return (*this)[index];
}

void TIndexDefs::Add(const TIndexDef &def)
{
    if (IndexOf(def.Name) >= 0)
        throw EDatabaseError(
            Filled(Translate("Zelmar01", "Un index « %1 » existe déjà"), {def.Name.toStdString()}));
    m_defs.push_back(def);
}

void TIndexDefs::Delete(const QString &name)
{
    Find(name);
    m_defs.erase(m_defs.begin() + IndexOf(name));
}

} // namespace Zelmar01
