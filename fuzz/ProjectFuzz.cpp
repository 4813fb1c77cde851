// SPDX-License-Identifier: MIT
// Settings of a project: any text opens with reports or is refused, reports name the file, and there are no
// more of them than anybody reads.

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/sheet/project/Project.h"
#include "apps/chartutil/terminal/Errors.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchFile.h"

#include <cmath>
#include <filesystem>

// fontconfig keeps its settings by offsets, in which the leak sanitizer sees no reference.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile file;
    file.Write(data, size);
    std::filesystem::rename(file.Folder() / "input", file.Folder() / "project.ini");
    PlotErrorReporter::Get().Clear();
    try {
        const Project project = OpenProject(UserText(file.Folder().string()));
        Require(project.paperWidth >= 50 && project.paperWidth <= 5000 && project.margin >= 0);
        Require(std::isfinite(project.scale) && std::isfinite(project.centreX) &&
                std::isfinite(project.reach));
        std::size_t reports = 0;
        for (const std::wstring& context : PlotErrorReporter::Get().GetContexts())
            for (const ErrorString& error : PlotErrorReporter::Get()[context]) {
                Require(ToUtf8(error.Text()).find("project.ini:") != std::string::npos);
                ++reports;
            }
        Require(reports <= 400);
    } catch (const CommandError& error) {
        Require(*error.what() != 0);
    }
    return 0;
}
