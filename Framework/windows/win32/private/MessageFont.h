// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <windows.h>

using SharedFont = std::shared_ptr<HFONT__>;

/// The font of the system's own messages and dialogs. Null when the system refuses; windows then keep theirs.
SharedFont MakeMessageFont();

/// What a line of text takes in that font, in pixels.
SIZE ExtentOf(const wchar_t* text, int length, HFONT font);
