#pragma once

#include <nlohmann/json_fwd.hpp>

/// Prints a JSON document to standard output.
void PrintJson(const nlohmann::ordered_json& document);
