// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeControls.h"
#include "Framework/windows/private/WindowModule.h"

/// Why this thread cannot make windows now; empty when it can.
ErrorString IsReadyForWindows();

NativeToolkit& MakeToolkit(const PaintContexts& contexts);
