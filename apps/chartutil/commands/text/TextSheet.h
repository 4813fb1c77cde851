// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/DrawnText.h"
#include "apps/chartutil/drawing/Surface.h"

#include <string>
#include <vector>

/// Texts in their rectangles, each with its insertion point, in a table. All are drawn at one scale. Names
/// and titles are UTF-8 and may be empty.
struct TextSheet {
    /// What shares an insertion point: a text, or the two parts of a depth label.
    using Cell = std::vector<DrawnText>;

    struct Row {
        std::string name;
        std::vector<Cell> cells;
    };
    struct Block {
        std::string title;
        std::vector<Row> rows;
    };

    std::string title; ///< what is drawn
    std::string note;  ///< and how
    std::vector<std::string> columns;
    std::vector<Block> blocks;
};

/// The text's beginning, when all of it (UTF-8) would be too long for a caption.
std::string CaptionText(const std::wstring& text);

/// The sheet as a picture, at a scale at which no cell is larger than `width` by `height` millimetres and no
/// line higher than 14. Ends the command (ExitCode::WRONG_USE) for a sheet that is too large for a picture.
Surface TextPicture(const TextSheet& sheet, double width, double height);
