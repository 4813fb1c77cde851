// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/DialogItem.h"
#include "Framework/windows/win32/private/MessageFont.h"

#include <functional>
#include <vector>
#include <windows.h>

/// Where the parts of a dialog are, by the sizes of their texts.
class Layout {
public:
    /// The control of an item, and the arrows behind it (null for others).
    struct Made {
        HWND control;
        HWND arrows;
    };

    /// Makes the controls of the tree in its order. `make` makes those of one item.
    Layout(const DialogItem& content, const SharedFont& font,
           const std::function<Made(const DialogItem&)>& make);

    /// Takes the size of a list from its columns and rows: before it is placed, which stretches the last one.
    void MeasureLists() { MeasureLists(m_root); }

    /// The smallest inside of the dialog that shows everything.
    SIZE Smallest() const;

    /// The one that it is shown with at first: it has room for a dozen rows of a list.
    SIZE Preferred() const;

    bool HasList() const { return m_root.hasList; }

    /// Places everything into an inside of that size.
    void Place(SIZE inside) const;

private:
    struct Box {
        DialogItem::Kind kind;
        std::wstring text;
        Made made = {};
        std::vector<Box> parts;
        bool hasList = false;
        SIZE fewRows = {}; ///< of a list
        SIZE manyRows = {};
    };

    Box Make(const DialogItem& item, const std::function<Made(const DialogItem&)>& make) const;
    static void MeasureLists(Box& box);
    SIZE SizeOf(const Box& box, bool isPreferred) const;
    SIZE SizeOfForm(const Box& box) const;
    SIZE SizeOfParts(const Box& box, bool isRow, bool isPreferred) const;
    int WidthOfLabels(const Box& form) const;
    void PlaceBox(const Box& box, RECT place) const;
    void PlaceParts(const Box& box, bool isRow, RECT place) const;
    void PlaceForm(const Box& box, RECT place) const;
    int Horizontal(int units) const; ///< dialog units in pixels
    int Vertical(int units) const;

    const SharedFont m_font;
    SIZE m_base = {}; ///< four dialog units across, eight down
    Box m_root;
};
