// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "apps/chartutil/commands/text/Texts.h"

#include <string>

// What a user gives as a style. Each function ends the command (ExitCode::WRONG_USE) when that is none.

/// Gives the record the fields of these options, on top of those of their one-line form.
void Apply(const StyleOptions& options, TextInfo& style);
void Apply(const StyleOptions& options, DepthLabelInfo& style);

/// A length from 0 to 1000000; `what` says of what in messages.
float RequireLength(const std::string& text, const char* what);

/// An angle, in degrees clockwise.
Angle RequireAngle(const std::string& text);

/// Ends the command (ExitCode::CHECK_FAILED): the texts of the style cannot be measured.
[[noreturn]] void ThrowNotMeasured(const TextInfo& style);
