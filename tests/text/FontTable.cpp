// SPDX-License-Identifier: MIT
// Prints what this platform measures of fonts and texts, as comma separated values.

#include "tests/text/FontTable.h"

#include <cstdio>

int main() {
    using namespace FONT_TABLE;
    std::string line = "face,size,text";
    for (const Column& column : Columns()) line += std::string(",") + column.name;
    std::puts(line.c_str());
    for (const Row& row : Rows()) {
        line = row.Name();
        for (const Column& column : Columns()) {
            char number[32];
            std::snprintf(number, sizeof number, ",%.9g", column.value(row.measured));
            line += number;
        }
        std::puts(line.c_str());
    }
    return std::fflush(stdout) == 0 && !std::ferror(stdout) ? 0 : 1;
}
