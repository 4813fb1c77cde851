#include "apps/chartutil/terminal/Json.h"

#include <iostream>
#include <nlohmann/json.hpp>

void PrintJson(const Json& document) {
    std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}
