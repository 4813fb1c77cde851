#include "UtilityDLL/res/private/StringTable.h"

#include <algorithm>
#include <iterator>

namespace {

struct Entry {
    TextId id;
    const wchar_t* text;
};

constexpr Entry kTexts[] = {
    {TextId::CRC_ERROR_OPENING, L"Error opening \""},
    {TextId::CRC_INVALID_CHECKSUM, L" The file has an invalid checksum"},
    {TextId::INI_ERROR_OPENING, L"Error opening \""},
    {TextId::INI_FOR_READING, L"\" for reading!"},
    {TextId::INI_DUPLICATE_SECTION, L"Error! Duplicate section"},
    {TextId::INI_FOUND, L" found!"},
    {TextId::INI_ERROR_ADDING_KEY, L"Error adding key on line "},
    {TextId::INI_DUPLICATE_KEY_NAME, L" (duplicate key name?)"},
    {TextId::INI_INVALID_SECTION, L"Invalid section definition on line "},
};

} // namespace

const wchar_t* LoadText(TextId id) {
    const auto found =
        std::find_if(std::begin(kTexts), std::end(kTexts), [id](const Entry& e) { return e.id == id; });
    return found != std::end(kTexts) ? found->text : L"";
}
