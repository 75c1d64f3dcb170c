#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// One input for the code under test; ends the program when a promise is broken.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size);

/// Inputs of the right form, to start from.
const std::vector<std::string> &FuzzSeeds();
