#pragma once

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// The units and the classes of their components as a page of the documentation lists them: the rows of the
/// tables whose first cell is a name in backquotes, with all names in backquotes of the second cell.
inline std::vector<std::pair<std::string, std::vector<std::string>>> ListedComponents(const std::string &page)
{
    std::ifstream file(page);
    if (!file)
        throw std::runtime_error("cannot read " + page);
    std::vector<std::pair<std::string, std::vector<std::string>>> units;
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("| `"))
            continue;
        std::vector<std::string> names;
        std::istringstream parts(line);
        std::string part;
        for (int number = 0; std::getline(parts, part, '`'); ++number) {
            if (number % 2 == 1)
                names.push_back(part);
        }
        const auto unit = names.front();
        names.erase(names.begin());
        units.emplace_back(unit, names);
    }
    return units;
}
