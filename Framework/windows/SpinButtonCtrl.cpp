// SPDX-License-Identifier: MIT
#include "Framework/windows/SpinButtonCtrl.h"

#include "Framework/windows/private/NativeControls.h"

int CSpinButtonCtrl::GetDelta() const {
    const auto* const spin = dynamic_cast<NativeSpin*>(Window());
    return spin ? spin->Delta() : 0;
}
