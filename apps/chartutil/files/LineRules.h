// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/ErrorString.h"

#include <string>

// What a line of a settings file can carry. A text that it cannot would be saved without complaint and read
// back as something else, so what a user types is refused here: each function ends the command
// (ExitCode::WRONG_USE) with the reason.

/// A section name: not empty, without "]" and line breaks.
void RequireSectionName(const std::wstring& name);

/// A key's line: a name that is not empty and has no "=" and ";", a value without ";"; blanks at the ends of
/// both are out, as are blanks at the end of the comment and line breaks and characters above 255 anywhere.
/// With a name that begins with "[" the line may hold no "]", or it would be a section's header.
void RequireKeyLine(const std::wstring& name, const std::wstring& value, const std::wstring& comment);

/// Passes the result of storing a text on to the user.
void RequireStored(const ErrorString& result);
