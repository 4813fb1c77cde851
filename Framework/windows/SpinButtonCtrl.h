// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Control.h"

/// The two arrows at an edit field, and the keys and the wheel that do the same in it. What a step does is
/// the dialog's to decide: it is told UDN_DELTAPOS, and the text stays.
class FRAMEWORK_API CSpinButtonCtrl : public CControl {
public:
    /// The steps of the last notification: above 0 for up, of more than one for Page Up and Page Down. 0
    /// before the first and without a window.
    int GetDelta() const;
};
