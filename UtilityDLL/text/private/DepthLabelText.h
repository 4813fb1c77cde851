// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <string>

class DepthLabelInfo;

/// The number that a depth label shows, divided in two.
struct DepthLabelText {
    std::wstring whole;    ///< with its sign
    std::wstring decimals; ///< the digits behind the point; empty where there is none
};

/// The value in the label's precision, by the rules that DepthLabelInfo states.
UTILITYDLL_API DepthLabelText FormatDepth(const DepthLabelInfo& info, double value);
