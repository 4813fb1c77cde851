// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/ErrorString.h"

#include <string>

/// Has the user edit the contour definition file of that path, or with an empty path a new one, in the
/// library's dialog, which saves it at OK. The error says why the dialog cannot be shown and what to do, or
/// that OK could not save, of which the user was told.
ErrorString ShowContourDialog(const std::wstring& path);
