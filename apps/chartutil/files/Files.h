// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/File.h"
#include "apps/chartutil/terminal/UserText.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

/// The path for functions of the standard library.
std::filesystem::path NativePath(const UserText& path);

/// The path's last name.
std::string FileNameOf(const UserText& path);

/// Whether there is anything at `path`, readable or not.
bool PathExists(const UserText& path);

/// Whether it takes long enough to go through these files for somebody to wait for it: there are many, or
/// some are large, or one is "-", of which nobody knows.
bool AreMuchWork(std::span<const UserText> paths);
bool IsMuchWork(const UserText& path);

/// Gives the file these bytes, whole or not at all, or writes them to standard output. Ends the command when
/// it cannot be written. RequireReplaceable() comes first, where the file may be another one than is meant.
void WriteFile(const UserText& path, std::string_view bytes);

/// The same for what `compose` hands over, which may happen twice and has to be the same each time.
void WriteFile(const UserText& path, const FILES::ContentComposer& compose);

/// Ends the command: the file cannot be read. Says why, as far as that is known.
[[noreturn]] void ThrowNotReadable(const UserText& path, const std::error_code& reason);

/// Cuts the file to `size` bytes. False when that cannot be done.
bool Truncate(const UserText& path, std::uint64_t size);
