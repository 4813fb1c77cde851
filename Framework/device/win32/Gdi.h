// SPDX-License-Identifier: MIT
#pragma once

#ifndef NOMINMAX
#define NOMINMAX // the headers of the suite use std::min and std::max
#endif
#include <windows.h>
