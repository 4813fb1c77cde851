// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Export.h"

#include <string>
#include <vector>

/// What stands in a dialog, and how its parts are arranged. Texts are in the user's language; "&" is before
/// the letter by which the keyboard reaches a control, for what stands behind a LABEL in a FORM as well.
/// Sizes come from the texts and the system's font. Tab goes through the controls in the order of the items.
struct DialogItem {
    /// How items are arranged, and the controls.
    enum Kind {
        COLUMN, ///< items below each other
        ROW,    ///< items beside each other
        FORM,   ///< pairs of a LABEL and the control that it names, below each other
        GROUP,  ///< a COLUMN with a frame and a title
        SPACE,  ///< takes what room is left

        LABEL,
        EDIT,
        SPIN_EDIT, ///< an EDIT with arrows; the CSpinButtonCtrl has the number after the CEdit's
        PUSH_BUTTON,
        DEFAULT_BUTTON, ///< the one that Enter presses
        CHECK_BOX,
        DROP_DOWN_LIST,
        LIST_VIEW, ///< its text is its name for screen readers
        COLOR_WELL,
    };

    Kind kind;                       ///< what the item is
    unsigned id = 0;                 ///< of a control: how CDialog finds it, different for each
    std::wstring text{};             ///< the caption of a control, the title of a GROUP
    std::vector<DialogItem> items{}; ///< of the first four kinds
    bool isDisabled = false;         ///< at first
};
