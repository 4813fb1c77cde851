// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json_fwd.hpp>

/// A JSON document whose members keep their order.
using Json = nlohmann::ordered_json;

/// Prints a JSON document to standard output.
void PrintJson(const Json& document);
