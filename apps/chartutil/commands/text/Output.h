// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/text/TextRectComp.h"
#include "apps/chartutil/drawing/FontInUse.h"
#include "apps/chartutil/terminal/Json.h"

#include <string>
#include <string_view>

// What the commands that measure texts print alike.

/// `text` (UTF-8) in one line: with its line breaks and other controls but tabs spelt out, also where the
/// output is no terminal, so that a script that goes by lines is not misled.
std::string InOneLine(std::string_view text);

/// One line of a description: a name, and what is to be said (UTF-8).
void PrintFact(std::string_view name, const std::string& text);

/// A length or coordinate with as many digits as tell a thousandth of a text's height.
std::string LengthText(double value);

/// "bold, middle left, size 2.5, turned by 30 degrees"
std::string StyleText(const TextInfo& style);

void PrintFont(const TextInfo& style, const FontInUse& font, float factor);
void PrintBox(const TextRectComp::Rectangle& box);

/// Notes on standard error that heights do not fit (TextRectComp::HeightsFit).
void NoteOverflow();

Json StyleJson(const TextInfo& style);
Json FontJson(const FontInUse& font, float factor);
Json BoxJson(const TextRectComp::Rectangle& box);
