// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/DC.h"
#include "Framework/windows/Wnd.h"

/// A display context of what is inside a window's frame, for measuring.
class FRAMEWORK_API CClientDC : public CDC {
public:
    /// Measures as the display does, whatever the window. Where no context can be made m_hDC is null.
    explicit CClientDC(CWnd* window);
};
