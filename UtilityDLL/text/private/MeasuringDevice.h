#pragma once

#include "Framework/device/DC.h"

#include <string>

/// A context of the display on which text is measured: world units times GDIScaleFactor::Get() are its
/// logical ones. Without a context (see CDC) all measuring on it fails.
class MeasuringDevice : public CDC {
public:
    MeasuringDevice();
};

/// Makes a font as text is measured in: outline fonts only, of that cell height in logical units.
void MakeMeasuringFont(CFont& font, int height, bool isBold, bool isItalic, bool isUnderlined,
                       const std::wstring& face);

/// What a part of a font's cell measures in a cell of that height: part * height / tmHeight, the product of
/// 32 bits that wraps, the quotient toward zero. 0 for a cell without height.
int CellPart(int part, int height, const TEXTMETRICW& cell);
