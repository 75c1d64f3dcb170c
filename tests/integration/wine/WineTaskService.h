#pragma once

#include <tasks/service/ServiceCases.h>

#include <filesystem>

/// Where the system's service has its job files.
std::filesystem::path SystemJobFolder();

/// On any other machine the jobs would be somebody's own: see run_under_wine.py.
bool IsPreparedMachine();
