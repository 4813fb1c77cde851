// SPDX-License-Identifier: MIT
// Language files: any bytes are read without harm, in proportion to their size; a text can be shown; damage
// ends with the entry that has it.

#include "VelmBase/private/LanguageFile.h"
#include "fuzz/Require.h"

#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    std::size_t entries = 0;
    std::size_t characters = 0;
    const auto isShowable = [](const std::wstring& text) {
        for (const wchar_t c : text)
            if ((c < 0x20 && c != L'\n' && c != L'\t') || (c >= 0x7F && c < 0xA0) ||
                (c >= 0xD800 && c < 0xE000))
                return false;
        return true;
    };
    LANGUAGES::ReadEntries(
        bytes, [&](std::uint32_t, const std::wstring& original, const std::wstring& translation) {
            ++entries;
            characters += original.size() + translation.size();
            Require(isShowable(original) && isShowable(translation), "a text can be shown");
        });
    Require(characters <= size, "texts are not longer than the file");

    bytes += "\n\nmsgctxt \"9070\"\nmsgid \"a\"\nmsgstr \"b\"\n";
    std::size_t withLast = 0;
    bool isLast = false;
    LANGUAGES::ReadEntries(
        bytes, [&](std::uint32_t number, const std::wstring& original, const std::wstring& translation) {
            ++withLast;
            isLast = number == 9070 && original == L"a" && translation == L"b";
        });
    Require(isLast && withLast == entries + 1, "an entry behind anything is read");
    return 0;
}
