// SPDX-License-Identifier: MIT
#include "VelmBase/UntilUnloaded.h"

bool IsProcessEnding() { return true; }
