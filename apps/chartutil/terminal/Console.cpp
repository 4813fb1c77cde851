// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Console.h"

#include "VelmBase/WideString.h"
#include "apps/chartutil/terminal/Errors.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace {

Restraint current;

std::string_view Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : std::string_view();
}

} // namespace

std::string WithoutControls(std::string_view text, const char* spelling) {
    const std::wstring wide = FromUtf8(text);
    std::wstring shown;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const bool isPaired = i > 0 && wide[i - 1] >= 0xD800 && wide[i - 1] < 0xDC00;
        const bool isStrayByte = wide[i] >= 0xDC80 && wide[i] < 0xDD00 && !isPaired;
        const auto code = static_cast<unsigned int>(isStrayByte ? wide[i] - 0xDC00 : wide[i]);
        const bool isLineBreak = code == '\n' || (code == '\r' && i + 1 < wide.size() && wide[i + 1] == '\n');
        const bool isControl = (code < 0x20 && code != '\t' && !isLineBreak) || (code >= 0x7F && code < 0xA0);
        char spelt[8];
        if (isControl) std::snprintf(spelt, sizeof spelt, spelling, code);
        shown += isControl ? FromUtf8(spelt) : std::wstring(1, wide[i]);
    }
    return ToUtf8(shown);
}

std::string Printable(std::string_view text) {
    return OutputIsTerminal() ? WithoutControls(text) : std::string(text);
}

void SetRestraint(const Restraint& restraint) { current = restraint; }

const Restraint& CurrentRestraint() { return current; }

bool ColorsAreWanted() { return current.hasColors && Variable("NO_COLOR").empty() && !TerminalIsDumb(); }

bool TerminalIsDumb() { return Variable("TERM") == "dumb"; }

void PrintDone(std::string_view text) {
    if (!current.isQuiet) std::cout << Printable(text) << '\n';
}

void PrintNote(std::string_view text) {
    if (!current.isQuiet) PrintError(text);
}

void PrintError(std::string_view text) {
    std::cout.flush();
    std::cerr << (ErrorIsTerminal() ? WithoutControls(text) : std::string(text)) << '\n';
}

void PrintError(const CommandError& error) { PrintError(std::string("chartutil: ") + error.what()); }
