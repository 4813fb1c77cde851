// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <cstdlib>
#include <sys/wait.h>

namespace {

std::string Quoted(std::string_view text) {
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

} // namespace

int RunWithFiles(const std::string& path, const std::vector<std::string>& arguments,
                 const std::wstring& inputFile, const std::wstring& outputFile,
                 const std::wstring& errorFile) {
    std::string command = "exec " + Quoted(path);
    for (const std::string& argument : arguments) command += " " + Quoted(argument);
    command += " <" + Quoted(ToUtf8(inputFile)) + " >" + Quoted(ToUtf8(outputFile)) + " 2>" +
               Quoted(ToUtf8(errorFile));
    const int status = std::system(command.c_str());
    if (status == -1) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::string ChartutilPath() {
    const char* const path = std::getenv("CHARTUTIL");
    return path ? path : "";
}
