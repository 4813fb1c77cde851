// SPDX-License-Identifier: MIT
// Settings files: any bytes are read without harm; what one reading made of a file is what every further one
// makes of it; a seal holds for names and values and for nothing else.

#include "UtilityDLL/settings/IniFile.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchFile.h"

namespace {

bool SameKeys(const Section& a, const Section& b) {
    if (a.NumKeys() != b.NumKeys()) return false;
    for (int i = 0; i < a.NumKeys(); ++i)
        if (a[i].GetName().String() != b[i].GetName().String() || a[i].GetValue() != b[i].GetValue() ||
            a[i].GetComments() != b[i].GetComments())
            return false;
    return true;
}

// A nameless key without a comment is written as an empty line, and the value of a nameless key is not
// written.
bool ComesBack(const Section& section) {
    for (int i = 0; i < section.NumKeys(); ++i)
        if (!section[i].IsValid() && (section[i].GetComments().empty() || !section[i].GetValue().empty()))
            return false;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile scratch;
    const std::wstring path = scratch.Path();
    scratch.Write(data, size);

    IniFile first;
    const ErrorString result = first.Open(path);
    Require(result || !result.Text().empty(), "an error in a file has a text");
    for (int i = 0; i < first.NumSections(); ++i) {
        Require(first[i].IsValid(), "no section is nameless");
        Require(&first[i] == &first[first[i].GetName().String()], "names are unique");
        Require(first[i].GetComments().empty(), "header comments are not read");
        for (int k = 0; k < first[i].NumKeys(); ++k)
            Require(first[i].HasKey(first[i][k]), "every key is found by its name");
    }
    if (first.Empty()) return 0;

    Require(static_cast<bool>(first.Save(path)), "what was read can be saved");
    IniFile second;
    Require(static_cast<bool>(second.Open(path)), "what was saved can be read");
    Require(first.NumSections() == second.NumSections(), "all sections come back");
    for (int i = 0; i < first.NumSections(); ++i) {
        Require(first[i].GetName().String() == second[i].GetName().String(), "section names come back");
        Require(!ComesBack(first[i]) || SameKeys(first[i], second[i]), "keys come back");
    }
    Require(static_cast<bool>(second.Save(path)), "a second save works");
    const std::string bytes = scratch.Read();
    IniFile third;
    Require(static_cast<bool>(third.Open(path)) && static_cast<bool>(third.Save(path)), "a third save works");
    Require(bytes == scratch.Read(), "from the second save on the bytes are the same");

    for (int i = 0; i < third.NumSections(); ++i) {
        third[i].AddChecksum();
        Require(!third[i].IsModified(), "a sealed section is not modified");
        third[i][0].SetComments(L"by hand");
    }
    Require(static_cast<bool>(third.Save(path)), "sealed sections can be saved");
    IniFile fourth;
    Require(static_cast<bool>(fourth.Open(path)), "sealed sections can be read");
    for (int i = 0; i < fourth.NumSections(); ++i)
        Require(!fourth[i].IsModified(), "a seal survives the file and a changed comment");
    return 0;
}
