// SPDX-License-Identifier: MIT
#pragma once

// What went wrong while a chart was composed and did not stop it, as the PlotErrorReporter has it.

void ForgetPlotErrors();

/// Lists it on standard error. Returns whether there is anything.
bool PrintPlotErrors();

/// The same, and ends the command (ExitCode::CHECK_FAILED) when there is.
void ReportPlotErrors();
