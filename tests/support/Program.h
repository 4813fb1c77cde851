// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

/// Runs the program `path` with UTF-8 arguments and waits for its end. Standard input, output and error are
/// those files. Returns the program's exit code, 128 or more when it was killed, and -1 when it cannot be
/// started.
int RunWithFiles(const std::string& path, const std::vector<std::string>& arguments,
                 const std::wstring& inputFile, const std::wstring& outputFile,
                 const std::wstring& errorFile);

/// The program's path that ctest hands over in the environment variable CHARTUTIL; empty without it.
std::string ChartutilPath();

struct ProgramResult {
    int exitCode = -1;
    std::string output;
    std::string error;
};

/// Runs the program `path` with UTF-8 arguments and `input` as its standard input.
inline ProgramResult RunProgramAt(const std::string& path, const std::vector<std::string>& arguments,
                                  std::string_view input = {}) {
    ProgramResult result;
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "input", input);
    result.exitCode =
        RunWithFiles(path, arguments, folder.File(L"input"), folder.File(L"output"), folder.File(L"error"));
    result.output = ReadBytes(folder.Path() / "output");
    result.error = ReadBytes(folder.Path() / "error");
    return result;
}

/// Runs chartutil in the same way.
inline ProgramResult RunChartutil(const std::vector<std::string>& arguments, std::string_view input = {}) {
    const std::string program = ChartutilPath();
    if (!program.empty()) return RunProgramAt(program, arguments, input);
    ADD_FAILURE() << "the environment variable CHARTUTIL names no program: run this test by ctest";
    return {};
}
