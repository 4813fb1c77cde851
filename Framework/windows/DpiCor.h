// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Export.h"

/// A length in pixels of 96 to the inch as one in the pixels of the display. On Linux the length itself:
/// there the toolkit's pixels already are of that size, whatever the display's scale.
FRAMEWORK_API int DpiCor(int length);
