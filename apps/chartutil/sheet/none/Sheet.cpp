// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/Sheet.h"

#include "apps/chartutil/terminal/Errors.h"

namespace {

[[noreturn]] void Refuse() {
    throw CommandError(
        ExitCode::WRONG_USE,
        "this program was built without GDAL and draws no chart sheets; use that for Linux, on "
        "Windows in the Windows Subsystem for Linux");
}

} // namespace

Surface DrawSheet(const UserText&, SheetColors) { Refuse(); }
void RequireOtherFile(const UserText&, const UserText&) { Refuse(); }
ProjectSummary CheckProject(const UserText&) { Refuse(); }
void WatchProject(const UserText&, const std::function<void()>&) { Refuse(); }
std::vector<UserText> MakeProject(const NewProject&) { Refuse(); }
