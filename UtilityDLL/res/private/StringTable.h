#pragma once

#include "UtilityDLL/Export.h"

#include <cstdint>
#include <span>

/// The resource numbers of the library's texts: its messages from 9064 to 9086, what its dialogs show from
/// 9100.
enum class TextId : std::uint32_t {
    CONTOUR_DUPLICATE_LEVEL = 9064,
    CONTOUR_NOT_MODIFIED = 9065,
    CONTOUR_NOT_GENERATED = 9066,
    CONTOUR_SAVE_CHANGES = 9067,
    CONTOUR_ERROR_CAPTION = 9068,
    CRC_ERROR_OPENING = 9070,
    CRC_INVALID_CHECKSUM = 9071,
    INI_ERROR_OPENING = 9080,
    INI_FOR_READING = 9081,
    INI_DUPLICATE_SECTION = 9082,
    INI_FOUND = 9083,
    INI_ERROR_ADDING_KEY = 9084,
    INI_DUPLICATE_KEY_NAME = 9085,
    INI_INVALID_SECTION = 9086,

    DIALOG_OK = 9100,
    DIALOG_CANCEL = 9101,

    CONTOURS_CAPTION = 9110,
    CONTOURS_ADD = 9111,
    CONTOURS_REMOVE = 9112,
    CONTOURS_EDIT = 9113,
    CONTOURS_GENERATE_FROM = 9114,
    CONTOURS_RANGE = 9115,
    CONTOURS_COLOR_TABLE = 9116,
    CONTOURS_COLUMN_LEVEL = 9117,
    CONTOURS_COLUMN_ANNOTATION = 9118,
    CONTOURS_COLUMN_WIDTH = 9119,
    CONTOURS_COLUMN_TYPE = 9120,
    CONTOURS_LINE_TYPES = 9121,
    CONTOURS_COLOR_TABLE_FILES = 9122,
    CONTOURS_DEFINITION_FILES = 9123,
    CONTOURS_YES = 9124,
    CONTOURS_NO = 9125,
    CONTOURS_NOT_READ = 9126,
    CONTOURS_OVERWRITE = 9127,
    CONTOURS_NOT_SAVED = 9128,
    CONTOURS_NONE_TO_SAVE = 9129,

    CONTOUR_CAPTION = 9130,
    CONTOUR_LEVEL = 9131,
    CONTOUR_COLOR = 9132,
    CONTOUR_CLICK_TO_CHANGE = 9133,
    CONTOUR_LINE_STYLE = 9134,
    CONTOUR_LINE_STYLES = 9135,
    CONTOUR_LINE_WIDTH = 9136,
    CONTOUR_SHOW_LABELS = 9137,

    GENERATE_CAPTION = 9140,
    GENERATE_RANGE = 9141,
    GENERATE_LOWEST = 9142,
    GENERATE_HIGHEST = 9143,
    GENERATE_INTERVAL = 9144,

    NUMBER_MISSING = 9150,
    NUMBER_WITH_COMMA = 9151,
    NUMBER_WRONG = 9152,
    NUMBER_NEGATIVE = 9153,
    NUMBER_TOO_LARGE = 9154,
    NUMBER_TOO_SMALL = 9155,
    RANGE_TOO_FINE = 9156,

    CONTOURS_NO_FILE = 9160,
};

/// A text of the library's own: what is shown where a language file has nothing for it.
struct BuiltInText {
    TextId id;
    const wchar_t* text;
};

/// All of them, by ascending numbers.
UTILITYDLL_API std::span<const BuiltInText> BuiltInTexts();

/// The text of that number, to keep as long as the library is loaded: in the language that was chosen when it
/// was loaded (VelmBase/ResourceModule.h), the library's own where that language lacks it. Empty for a number
/// that the library does not have. Any thread may call this.
UTILITYDLL_API const wchar_t* LoadText(TextId id);
