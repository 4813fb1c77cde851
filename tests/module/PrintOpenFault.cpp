// SPDX-License-Identifier: MIT
// Opens each settings file that is named and prints the fault's text as UTF-8, with a "|" behind it.

#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/WideString.h"

#include <cstdio>

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        IniFile file;
        std::printf("%s|", ToUtf8(file.Open(FromNarrow(argv[i])).Text()).c_str());
    }
}
