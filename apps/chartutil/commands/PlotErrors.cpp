// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/PlotErrors.h"

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"

void ForgetPlotErrors() { PlotErrorReporter::Get().Clear(); }

bool PrintPlotErrors() {
    bool isAny = false;
    for (const std::wstring& context : PlotErrorReporter::Get().GetContexts()) {
        for (const ErrorString& error : PlotErrorReporter::Get()[context]) {
            PrintError(ToUtf8(error.Text()));
            isAny = true;
        }
    }
    return isAny;
}

void ReportPlotErrors() {
    if (PrintPlotErrors()) throw CommandExit{ExitCode::CHECK_FAILED};
}
