// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Control.h"

/// A field of one line of text. Tells EN_CHANGE after each change, by the program as well. One with arrows is
/// enabled and disabled together with them.
class FRAMEWORK_API CEdit : public CControl {
public:
    /// Gives it the keyboard with its whole text selected.
    void FocusAndSelect();

    /// Shows plain text about what is wrong, beside it, until the text changes, the field is left, or there
    /// is something else to say. Screen readers read it out.
    void ShowBalloonTip(const CString& text);
};
