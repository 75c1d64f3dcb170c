#pragma once

#include <Zelmar01/descrtree/DescrTree.h>

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

/// The levels of a tree in the order of its nodes.
inline std::vector<Zelmar01::TDescr> levelsOf(const Zelmar01::TDescrTree &tree)
{
    std::vector<Zelmar01::TDescr> levels;
    for (auto node = tree.Next(tree.Root); node != tree.None; node = tree.Next(node))
        levels.push_back(tree.Descr(node));
    return levels;
}
