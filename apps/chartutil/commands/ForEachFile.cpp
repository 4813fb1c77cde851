// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/ForEachFile.h"

#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/work/LongWork.h"

#include <nlohmann/json.hpp>

#include <algorithm>

ExitCode ForEachFile(const std::vector<UserText>& paths, Json& reports,
                     const std::function<ExitCode(const UserText& path, Json& report)>& doOne) {
    ExitCode worst = ExitCode::SUCCESS;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const UserText& path = paths[i];
        ShowPlace(i + 1, paths.size());
        StopIfInterrupted();
        Json report = {{"file", path.Utf8()}};
        try {
            worst = std::max(worst, doOne(path, report));
        } catch (const CommandError& error) {
            worst = std::max(worst, error.Code());
            PrintError(error);
            report = {{"file", path.Utf8()}, {"error", error.what()}};
        }
        reports.push_back(std::move(report));
    }
    return worst;
}
