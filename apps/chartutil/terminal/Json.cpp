// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Json.h"

#include "apps/chartutil/terminal/Console.h"

#include <iostream>
#include <nlohmann/json.hpp>

void PrintJson(const Json& document) {
    const std::string text = document.dump(2, ' ', false, Json::error_handler_t::replace);
    // JSON escapes the controls below U+0020 alone; the others are in its strings only, which take this form.
    std::cout << (OutputIsTerminal() ? WithoutControls(text, "\\u%04x") : text) << '\n';
}
