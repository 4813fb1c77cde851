#include "apps/chartutil/terminal/Console.h"

#include "apps/chartutil/terminal/Errors.h"

#include <cstdio>
#include <iostream>

std::string WithoutControls(std::string_view text) {
    std::string shown;
    const auto spell = [&](unsigned int code) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\x%02X", code);
        shown += escape;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        if ((byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F) {
            spell(byte);
        } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) { // U+0080 to U+009F
            spell(next);
            ++i;
        } else {
            shown += text[i];
        }
    }
    return shown;
}

std::string Printable(std::string_view text) {
    return OutputIsTerminal() ? WithoutControls(text) : std::string(text);
}

void PrintNote(std::string_view text) {
    std::cout.flush();
    std::cerr << (ErrorIsTerminal() ? WithoutControls(text) : std::string(text)) << '\n';
}

void PrintError(const CommandError& error) { PrintNote(std::string("chartutil: ") + error.what()); }
