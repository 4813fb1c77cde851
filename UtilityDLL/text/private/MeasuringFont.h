// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Values.h"
#include "Framework/device/Gdi.h"
#include "UtilityDLL/Export.h"

#include <memory>
#include <string>
#include <string_view>

/// A font in which text is measured on the display (MeasuringDevice): outline fonts only.
///
/// The last ones of each thread, 128 at most, stay made when nobody uses them any more, each with its
/// context, so that making one of them again calls nothing of the system. One that failed to measure is not
/// kept; when its context has no display any more, none of the context is.
class UTILITYDLL_API MeasuringFont {
public:
    /// `height` is that of the cell in logical units.
    MeasuringFont(int height, bool isBold, bool isItalic, bool isUnderlined, const std::wstring& face);

    /// As those of CDC with the font selected: both 0 when there is no context or no font.
    UINT GetOutlineTextMetricsW(UINT size, OUTLINETEXTMETRICW* metrics) const;
    CSize GetTextExtent(std::wstring_view text) const;

private:
    struct Style;
    struct Device;
    struct Made;
    class Kept;
    using Font = std::shared_ptr<const Made>;

    void Forget() const;

    Font m_made;
};
