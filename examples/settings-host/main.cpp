// Counts its runs in a settings file, and tells when somebody else has edited the count.
#include <UtilityDLL/settings/IniFile.h>

#include <iostream>

int main() {
    IniFile file(L"settings-host.ini"); // without a file it is empty
    Section& host = file[L"Settings Host"];
    if (host.NumKeys() > 0 && host.IsModified()) std::cout << "settings-host.ini was edited by hand\n";

    int runs = 0; // stays 0 when the key is not there yet
    host[L"Runs"] >> runs;
    host[L"Runs"] << ++runs;
    host[L"Runs"].SetComments(L"how often the program ran");
    host.AddChecksum();
    std::cout << "run " << runs << '\n';
    return file.Save(L"settings-host.ini") ? 0 : 1;
}
