// SPDX-License-Identifier: MIT
// Counts its runs in a settings file, in which people may keep what they like, and tells when somebody else
// has edited the count.
#include <UtilityDLL/settings/IniDocument.h>

#include <iostream>

int main() {
    const auto countRun = [](IniDocument& document, bool) {
        const std::wstring name = L"Settings Host";
        const Section host = document.Read(name); // nameless when it is not there yet
        if (host.IsValid() && host.IsModified()) std::cout << "settings-host.ini was edited by hand\n";

        int runs = 0; // stays 0 when the key is not there yet
        host[L"Runs"] >> runs;
        std::cout << "run " << ++runs << '\n';
        return document.Set(name, L"Runs", std::to_wstring(runs)) &&
               document.SetComment(name, L"Runs", L"how often the program ran") && document.Seal(name);
    };
    IniFile::Fault fault; // says where a file is broken
    const std::error_code error = IniDocument::Update(L"settings-host.ini", countRun, fault);
    if (error) std::cout << "settings-host.ini: " << error.message() << '\n';
    return error ? 1 : 0;
}
