#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

/// The path (UTF-8) for functions of the standard library.
std::filesystem::path NativePath(const std::string& path);

/// Ends the command: the file `path` (UTF-8) cannot be read. Says why, as far as that can be told.
[[noreturn]] void ThrowNotReadable(const std::string& path);

/// Whether there is anything at `path` (UTF-8), readable or not.
bool PathExists(const std::string& path);

/// Cuts the file `path` (UTF-8) to `size` bytes. False when that cannot be done.
bool Truncate(const std::string& path, std::uint64_t size);
