// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/DC.h"
#include "UtilityDLL/Export.h"
#include "UtilityDLL/text/GDIScaleFactor.h"

/// A context of the display on which text is measured. Without a context (see CDC) all measuring on it fails.
class UTILITYDLL_API MeasuringDevice : public CDC {
public:
    /// At a factor of 1000 a logical unit is 0.01 mm. At another, a millimetre of the display has that many
    /// of them.
    explicit MeasuringDevice(double factor = GDIScaleFactor::Get());
};

/// What a part of a font's cell measures in a cell of that height: part * height / tmHeight, the product of
/// 32 bits that wraps, the quotient toward zero. 0 for a cell without height.
UTILITYDLL_API int CellPart(int part, int height, const TEXTMETRICW& cell);
