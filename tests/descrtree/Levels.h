#pragma once

#include <Zelmar01/descrtree/DescrRows.h>

#include <vector>

inline Zelmar01::TDescrRows rowsOf(const std::vector<Zelmar01::TDescr> &levels)
{
    Zelmar01::TDescrRows rows;
    for (const auto &level : levels)
        rows.Append(level);
    return rows;
}

/// A small hierarchy in the order of its codes; "été" and the euro sign are beyond ASCII.
inline std::vector<Zelmar01::TDescr> someLevels()
{
    return {{3, 0, "BAGUES", "BAGUES", "BAG", "1"},
            {11, 3, "BAGUES - ARGENT", "ARGENT", "ARG", "10"},
            {12, 3, "BAGUES - OR", "OR", "OR", "1A"},
            {13, 12, "BAGUES - OR - 18 CARATS", "18 CARATS", "18 CT", "1A0"},
            {4, 0, "Collection d'été à 5 €", "Collection d'été à 5 €", "", "2"}};
}
