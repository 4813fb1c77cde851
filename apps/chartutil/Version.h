// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// The program's version, and below it those of the libraries of the suite that are loaded, with whether each
/// matches. Without a line break at its end.
std::string VersionLines();
