// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/Gdi.h"
#include "Framework/windows/ComboBox.h"
#include "UtilityDLL/Export.h"

/// A drop-down list of the installed TrueType faces by name, for the face of a text style.
///
/// A host makes it by Create(), with CBS_SORT for a list in the order of the names, without regard to case,
/// instead of that of the system's enumeration. It places the NativeHandle() into its own layout and fills
/// the list; nothing is selected then. To hear of a choice it gives a class of its own an entry for
/// CBN_SELCHANGE; on Linux the handle is a QComboBox, whose signals do as well, and on Windows the window
/// that it is in gets WM_COMMAND.
class UTILITYDLL_API FontCombo : public CComboBox {
public:
    FontCombo(); ///< without a window
    ~FontCombo() override;

    /// Adds the faces to what the list has already: a second call adds them again. Nothing happens while
    /// there is no window. Names that begin with "@", of faces for vertical writing, are added as well.
    ///
    /// On Linux a face is any font with outlines, each family once, in the order of the names; without the
    /// module utilitydll/FrameworkFonts.so there are none.
    void FillCombo();

    /// What each font is handed to. `param` is the FontCombo, to whose list the name is added when the type
    /// is TRUETYPE_FONTTYPE and nothing else. A name that fills its field ends there. Returns 1, so that
    /// enumerating goes on, also for null in `logFont` or `param`; `textMetric` does not count.
    static int HandleFonts(const LOGFONTW* logFont, const TEXTMETRICW* textMetric, unsigned long fontType,
                           std::intptr_t param);

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap(); ///< for maps of derived classes
};
