// SPDX-License-Identifier: MIT
#include "Framework/windows/DpiCor.h"

int DpiCor(int length) { return length; }
