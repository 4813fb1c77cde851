#pragma once

#include <string>
#include <vector>

/// A style of an installed family.
struct ListedFont {
    std::wstring family;
    int weight = 400; ///< 400 is regular, 700 bold
    bool isItalic = false;
    bool isMonospaced = false;
    bool hasOutlines = true;
};

/// What is installed: by family without letter case, of one family upright ones first, of these the nearest
/// to regular.
std::vector<ListedFont> ListFonts();
