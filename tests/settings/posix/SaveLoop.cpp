// A host that saves and opens a settings file, for tests that kill it, trace it or run several at once.
//   SaveLoop save  PATH VALUE KEYS    saves once: one sealed section of KEYS keys of VALUE; 1 when that fails
//   SaveLoop loop  PATH KEYS          saves for ever, with changing values and lengths, and prints a byte for
//   each save SaveLoop count PATH KEYS COUNT    the same, COUNT times and silently; 1 when a save fails
//   SaveLoop read  PATH COUNT         opens COUNT times; 1 when the file was ever torn

#include "UtilityDLL/settings/IniFile.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

IniFile Content(const std::string& value, int keys) {
    IniFile file;
    Section& section = file[L"Section"];
    for (int i = 0; i < keys; ++i) section.AddKey(L"Key" + std::to_wstring(i));
    for (int i = 0; i < keys; ++i) section[i] << FromUtf8(value);
    section.AddChecksum();
    return file;
}

bool IsWhole(const std::wstring& path) {
    IniFile file;
    return file.Open(path) && file.NumSections() == 1 && !file[0].IsModified();
}

} // namespace

int main(int count, char** arguments) {
    if (count < 4) return 2;
    const std::string command = arguments[1];
    const std::wstring path = FromUtf8(arguments[2]);
    if (command == "save" && count == 5)
        return Content(arguments[3], std::atoi(arguments[4])).Save(path) ? 0 : 1;
    if (command == "loop") {
        for (int i = 0;; ++i) {
            const int keys = std::atoi(arguments[3]);
            if (!Content(std::to_string(i), i % 2 ? keys : keys / 2).Save(path)) return 1;
            std::fputc('.', stdout);
            std::fflush(stdout);
        }
    }
    if (command == "count" && count == 5) {
        for (int i = 0; i < std::atoi(arguments[4]); ++i)
            if (!Content(std::to_string(i), std::atoi(arguments[3])).Save(path)) return 1;
        return 0;
    }
    if (command == "read") {
        for (int i = 0; i < std::atoi(arguments[3]); ++i)
            if (!IsWhole(path)) return 1;
        return 0;
    }
    return 2;
}
