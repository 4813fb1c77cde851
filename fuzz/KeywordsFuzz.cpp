// SPDX-License-Identifier: MIT
// Keyword text: the placeholder scan against its rule written out character by character, and the forms in
// which a set is stored. A byte of the input is a character.

#include "UtilityDLL/keywords/Keywords.h"
#include "fuzz/Require.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace {

std::map<std::wstring, int> CountsByStateMachine(const std::wstring& text) {
    std::map<std::wstring, int> counts;
    bool inside = false;
    std::size_t start = 0;
    std::wstring buffer;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (!inside && c == L'%') {
            inside = true;
            start = i;
        } else if (inside && (c == L'\n' || c == L'\r' || c == L'\0')) {
            inside = false;
        } else if (inside && c == L'%') {
            if (i > start + 1) {
                ++counts[buffer];
                buffer.clear();
            }
            inside = false;
        } else if (inside) {
            buffer += c;
        }
    }
    return counts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text(data, data + size);
    CKeywords set;
    set.AddKeywordsInString(text);
    const std::map<std::wstring, int> expected = CountsByStateMachine(text);
    Require(set.GetSize() == static_cast<int>(expected.size()));
    for (const auto& [name, count] : expected) {
        const CKeyword* const found = set.GetKeywordConst(name);
        Require(found && found->refCount == count && found->value == name);
    }

    Section section(L"Keywords");
    Require(static_cast<bool>(set.Write(section)));
    CKeywords read;
    Require(static_cast<bool>(read.Read(section)));
    Require(read == set && read.GetChecksum() == set.GetChecksum() && read.ToString() == set.ToString());

    CKeywords parsed;
    parsed.FromString(text);
    CKeywords again;
    again.FromString(parsed.ToString());
    Require(again.GetSize() == parsed.GetSize() && again.ToString() == parsed.ToString());

    // Adding a set to itself doubles it; taking its own names out empties it.
    CKeywords merged(set);
    merged.AddKeywords(set);
    for (int i = 0; i < merged.GetSize(); ++i)
        Require(merged.GetKeywordConst(i)->refCount == 2 * set.GetKeywordConst(i)->refCount);
    merged.ExcludeKeywords(read);
    Require(merged.GetSize() == 0);
    parsed.AddRefcountRemove(set);
    for (int i = 0; i < set.GetSize(); ++i) Require(!parsed.GetKeywordConst(set.GetKeywordConst(i)->name));
    return 0;
}
