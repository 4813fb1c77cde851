// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/terminal/UserText.h"

#include <string>
#include <string_view>

namespace CLI {
class App;
}

/// The kinds of file that commands write. Every table is a text.
enum class FileKind { SETTINGS, CONTOURS, COLOR_TABLE, TABLE, TEXT, SVG, XML, PNG, PDF, DXF };

/// What a text is, of those kinds that people can read.
FileKind KindOfText(std::string_view content);

/// What content is that is obviously of another kind: "a PNG picture, no settings file". Empty where it is of
/// that kind or may be, as nothing at all may. It shows in the first 64 KB, so that these are enough.
std::string MismatchOf(std::string_view content, FileKind kind);

/// Ends the command (ExitCode::WRONG_USE) where the content of the file is of another kind, unless the user
/// forces it: before something else is lost by a slip.
void RequireKind(const UserText& path, std::string_view content, FileKind kind, bool isForced);

/// The same for a file that is about to be replaced. One that is not there or cannot be read is left to
/// whoever writes it. For "-" all that is printed from now on goes to standard error, since standard output
/// gets the file.
void RequireReplaceable(const UserText& path, FileKind kind, bool isForced);

/// Adds the option "--force" of commands that write files.
void AddForce(CLI::App& command, bool& isForced);
