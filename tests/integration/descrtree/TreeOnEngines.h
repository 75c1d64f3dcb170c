#pragma once

#include <descrtree/ShownTree.h>
#include <support/Engines.h>

/// The view over a table of codes on each engine, loaded, with its cache files in the test's folder. Letter
/// case is nothing to the column with the codes.
class TreeOnEngines : public OnEngines, protected ShownTree
{
protected:
    TreeOnEngines()
    {
        if (GetParam().Server)
            m_connection.Execute("create collation SANS_CASSE (provider = icu, locale = 'und-u-ks-level2', "
                                 "deterministic = false)");
        else
            m_connection.Execute("pragma foreign_keys = on");
        makeTable(m_connection,
                  GetParam().Server ? "varchar(20) collate SANS_CASSE" : "varchar(20) collate nocase");
        m_view.setFichierSortie(QString::fromStdString(m_folder / "x"));
        m_view.MettreAJourArbre(false);
    }

    Zelmar01::TCacheFiles files() const { return Zelmar01::CacheFilesOf(m_view.FichierSortie()); }
};
