#pragma once

#include "Framework/windows/Control.h"

/// A field of one line of text. Tells EN_CHANGE after each change.
class FRAMEWORK_API CEdit : public CControl {
public:
    /// Gives it the keyboard with its whole text selected.
    void FocusAndSelect();

    /// Shows what is wrong with its text, beside it, until the text changes or the field is left. Screen
    /// readers read it out.
    void ShowBalloonTip(const CString& text);
};
