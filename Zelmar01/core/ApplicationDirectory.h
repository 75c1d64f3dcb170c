#pragma once

#include <filesystem>

namespace Zelmar01 {

/// The directory from which files without a directory part are taken: that of the host executable, unless the
/// host has set another.
std::filesystem::path ApplicationDirectory();

/// Sets the directory of files without a directory part; an empty path goes back to that of the executable.
void SetApplicationDirectory(std::filesystem::path directory);

} // namespace Zelmar01
