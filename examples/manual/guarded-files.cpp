// SPDX-License-Identifier: MIT
// A binary file that tells when a byte of it has changed.
#include <UtilityDLL/settings/CRCFile.h>
#include <VelmBase/File.h>

#include <iostream>

int main() {
    const double depths[] = {2.13, 1.17, 4.80};
    CRCFile file;
    if (!file.Open(L"depths.bin", L"w")) return 1;
    file.Write(depths, sizeof *depths, std::size(depths));
    file.Close(); // adds the 4 bytes of the checksum

    double read[3] = {};
    if (!file.Open(L"depths.bin", L"r")) return 1;
    std::wcout << file.Read(read, sizeof *read, std::size(read))
               << L" depths, the last is " << read[2] << L'\n';
    file.Close();

    std::FILE* const other = FILES::OpenStream(
        L"depths.bin", L"r+"); // another program, which knows of no guard
    if (!other) return 1;
    std::fputc(1, other);
    std::fclose(other);
    std::wcout << file.Open(L"depths.bin", L"r").Text() << L'\n';
}
