#pragma once

#include "Framework/windows/Control.h"

/// The two arrows at an edit field, and the keys Up and Down in it. What a step does is the dialog's to
/// decide: it is told UDN_DELTAPOS.
class FRAMEWORK_API CSpinButtonCtrl : public CControl {
public:
    /// The steps of the last notification: above 0 for up.
    int GetDelta() const;
};
