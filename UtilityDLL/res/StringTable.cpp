#include "UtilityDLL/res/private/StringTable.h"

#include "VelmBase/Module.h"
#include "VelmBase/ResourceModule.h"

#include <algorithm>
#include <iterator>

namespace {

// "Continous" and "modfied" are what the suite's users have always read.
constexpr BuiltInText kTexts[] = {
    {TextId::CONTOUR_DUPLICATE_LEVEL, L"The contour definition is already in the list, it was not added."},
    {TextId::CONTOUR_NOT_MODIFIED,
     L"Failed to implement modifications.\nReason:\n\tThe depth was modfied to a "
     L"value\n\tthat is already in the list!"},
    {TextId::CONTOUR_NOT_GENERATED, L"Failed to generate contours."},
    {TextId::CONTOUR_SAVE_CHANGES, L"Save changes?"},
    {TextId::CONTOUR_ERROR_CAPTION, L"Error"},
    {TextId::CRC_ERROR_OPENING, L"Error opening \""},
    {TextId::CRC_INVALID_CHECKSUM, L" The file has an invalid checksum"},
    {TextId::INI_ERROR_OPENING, L"Error opening \""},
    {TextId::INI_FOR_READING, L"\" for reading!"},
    {TextId::INI_DUPLICATE_SECTION, L"Error! Duplicate section"},
    {TextId::INI_FOUND, L" found!"},
    {TextId::INI_ERROR_ADDING_KEY, L"Error adding key on line "},
    {TextId::INI_DUPLICATE_KEY_NAME, L" (duplicate key name?)"},
    {TextId::INI_INVALID_SECTION, L"Invalid section definition on line "},

    {TextId::DIALOG_OK, L"OK"},
    {TextId::DIALOG_CANCEL, L"Cancel"},

    {TextId::CONTOURS_CAPTION, L"Contours"},
    {TextId::CONTOURS_ADD, L"&Add"},
    {TextId::CONTOURS_REMOVE, L"&Remove"},
    {TextId::CONTOURS_EDIT, L"&Edit"},
    {TextId::CONTOURS_GENERATE_FROM, L"Generate from"},
    {TextId::CONTOURS_RANGE, L"Ra&nge"},
    {TextId::CONTOURS_COLOR_TABLE, L"&Color Table"},
    {TextId::CONTOURS_COLUMN_LEVEL, L"Color Level"},
    {TextId::CONTOURS_COLUMN_ANNOTATION, L"Annotation"},
    {TextId::CONTOURS_COLUMN_WIDTH, L"Width"},
    {TextId::CONTOURS_COLUMN_TYPE, L"Type"},
    {TextId::CONTOURS_LINE_TYPES, L"Continous,Dashed,Dot,Dash Dot"},
    {TextId::CONTOURS_COLOR_TABLE_FILES, L"Color Table Files (*.col)"},
    {TextId::CONTOURS_DEFINITION_FILES, L"Contour Definition Files (*.cdf)"},
    {TextId::CONTOURS_YES, L"Yes"},
    {TextId::CONTOURS_NO, L"No"},
    {TextId::CONTOURS_NOT_READ, L"This file is no contour definition file, or cannot be read:\n\t"},
    {TextId::CONTOURS_OVERWRITE, L"What is in this file would be lost: it has more than is shown here, is "
                                 L"another one than was opened, could not be read, or "
                                 L"another program changed it meanwhile.\nReplace it?\n\t"},
    {TextId::CONTOURS_NOT_SAVED,
     L"The contours were not saved.\nCheck that the folder may be written to and has room:\n\t"},
    {TextId::CONTOURS_NONE_TO_SAVE,
     L"Nothing was saved, and a file that is there stays as it was:\nthere is no contour in the list."},

    {TextId::CONTOUR_CAPTION, L"Contour Properties"},
    {TextId::CONTOUR_LEVEL, L"&Level:"},
    {TextId::CONTOUR_COLOR, L"&Color:"},
    {TextId::CONTOUR_CLICK_TO_CHANGE, L"Click to Change"},
    {TextId::CONTOUR_LINE_STYLE, L"Line &style:"},
    {TextId::CONTOUR_LINE_STYLES, L"CONTINUOUS,DASHED,DOTTED"},
    {TextId::CONTOUR_LINE_WIDTH, L"Line &width:"},
    {TextId::CONTOUR_SHOW_LABELS, L"Show la&bels:"},

    {TextId::GENERATE_CAPTION, L"Generate Contours"},
    {TextId::GENERATE_RANGE, L"Range"},
    {TextId::GENERATE_LOWEST, L"&Lowest level:"},
    {TextId::GENERATE_HIGHEST, L"&Highest level:"},
    {TextId::GENERATE_INTERVAL, L"&Interval:"},

    {TextId::NUMBER_MISSING, L"Enter a number."},
    {TextId::NUMBER_WITH_COMMA, L"Write the decimals behind a point, as in 2.5."},
    {TextId::NUMBER_WRONG, L"This is no number. Write one as in 12, -3.5 or 1e3."},
    {TextId::NUMBER_NEGATIVE, L"Enter a number that is not below 0."},
    {TextId::NUMBER_TOO_LARGE, L"Enter a smaller number."},
    {TextId::NUMBER_TOO_SMALL, L"Enter a larger number."},
    {TextId::RANGE_TOO_FINE, L"These would be more than a million levels. Enter a larger interval."},

    {TextId::CONTOURS_NO_FILE, L"The contours were not saved: no file was chosen."},
};

constexpr bool IsBefore(const BuiltInText& a, const BuiltInText& b) { return a.id < b.id; }
static_assert(std::is_sorted(std::begin(kTexts), std::end(kTexts), IsBefore));

} // namespace

std::span<const BuiltInText> BuiltInTexts() { return kTexts; }

const wchar_t* LoadText(TextId id) {
    const auto* const own =
        std::lower_bound(std::begin(kTexts), std::end(kTexts), BuiltInText{id, nullptr}, IsBefore);
    if (own == std::end(kTexts) || own->id != id) return L"";
    static const void* const module = ModuleAt(kTexts);
    const wchar_t* const translated = VELMSUITE::LanguageText(module, static_cast<std::uint32_t>(id));
    return translated ? translated : own->text;
}
