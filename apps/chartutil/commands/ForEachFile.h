// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/terminal/UserText.h"

#include <functional>
#include <vector>

/// Works through the files, of which none keeps the others from being done, and gives the worst exit code.
/// `doOne` adds to the report of its file and says how it went; a file that ends in an error has that as its
/// report.
ExitCode ForEachFile(const std::vector<UserText>& paths, Json& reports,
                     const std::function<ExitCode(const UserText& path, Json& report)>& doOne);
