// SPDX-License-Identifier: MIT
// A host that saves and opens a settings file, for tests that kill it, trace it or run several at once.
//   SaveLoop save   PATH VALUE KEYS   saves once: one sealed section of KEYS keys of VALUE
//   SaveLoop update PATH TEXT COUNT   puts TEXT and a line end behind what the file holds, COUNT times
//   SaveLoop loop   PATH KEYS         saves for ever, with changing values and lengths; a byte for each save
//   SaveLoop count  PATH KEYS COUNT   the same, COUNT times and silently
//   SaveLoop read   PATH COUNT        opens COUNT times; 1 when the file was ever torn
// What fails ends it with the number of the system's reason.

#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/File.h"

#include "tests/support/posix/NamelessFiles.h"

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

int Save(const std::wstring& path, const std::string& value, int keys) {
    std::error_code error;
    const bool saved = static_cast<bool>(Content(value, keys).Save(path, error));
    return saved ? 0 : error.value();
}

int Append(const std::wstring& path, const std::string& text) {
    const auto append = [&](std::string& content, bool) {
        content += text + '\n';
        return true;
    };
    return FILES::UpdateContents(path, append).value();
}

bool IsWhole(const std::wstring& path) {
    IniFile file;
    return file.Open(path) && file.NumSections() == 1 && !file[0].IsModified();
}

} // namespace

int main(int count, char** arguments) {
    constexpr int kWrongUse = 126;
    if (count < 4) return kWrongUse;
    const std::string command = arguments[1];
    const std::wstring path = FromUtf8(arguments[2]);
    const int number = std::atoi(arguments[count - 1]);
    int failed = 0;
    if (command == "save" && count == 5) {
        failed = Save(path, arguments[3], number);
    } else if (command == "update" && count == 5) {
        for (int i = 0; i < number && !failed; ++i) failed = Append(path, arguments[3]);
    } else if (command == "loop") {
        for (int i = 0; !failed; ++i) {
            failed = Save(path, std::to_string(i), i % 2 ? number : number / 2);
            std::fputc('.', stdout);
            std::fflush(stdout);
        }
    } else if (command == "count" && count == 5) {
        const int keys = std::atoi(arguments[3]);
        for (int i = 0; i < number && !failed; ++i) failed = Save(path, std::to_string(i), keys);
    } else if (command == "read") {
        for (int i = 0; i < number; ++i)
            if (!IsWhole(path)) return 1;
    } else {
        return kWrongUse;
    }
    return failed;
}
