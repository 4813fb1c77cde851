// SPDX-License-Identifier: MIT
#pragma once

/// Names of values (CLI::Option::type_name) by which the shell's completion knows what to offer.
inline constexpr char kFileValue[] = "FILE";
inline constexpr char kFolderValue[] = "FOLDER";
