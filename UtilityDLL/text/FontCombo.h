#pragma once

#include "Framework/device/Gdi.h"
#include "Framework/windows/ComboBox.h"
#include "UtilityDLL/Export.h"

/// A drop-down list of the installed TrueType faces by name, for the face of a text style.
///
/// A host makes it by Create(), with CBS_SORT for a list in the order of the names, and places its
/// NativeHandle() into its own layout.
class UTILITYDLL_API FontCombo : public CComboBox {
public:
    FontCombo();
    ~FontCombo() override;

    /// Adds the faces to what the list has already: a second call adds them again. Nothing happens when there
    /// is no window. Names that begin with "@", of faces for vertical writing, are added as well.
    void FillCombo();

    /// What each font is handed to. `param` is the FontCombo, to whose list the face is added when the type
    /// is exactly TRUETYPE_FONTTYPE. Returns 1: enumerating goes on.
    static int HandleFonts(const LOGFONTW* logFont, const TEXTMETRICW* textMetric, unsigned long fontType,
                           std::intptr_t param);

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap();
};
