// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <windows.h>

namespace {

// The form that programs split again: a quote is escaped by a backslash, and backslashes count as escapes
// only in front of a quote.
std::wstring Quoted(const std::wstring& text) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : text) {
        if (c == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, L'\\') + L'"';
}

HANDLE OpenInherited(const std::wstring& path, DWORD access, DWORD creation) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    return CreateFileW(path.c_str(), access, FILE_SHARE_READ, &inherit, creation, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

} // namespace

int RunWithFiles(const std::string& path, const std::vector<std::string>& arguments,
                 const std::wstring& inputFile, const std::wstring& outputFile,
                 const std::wstring& errorFile) {
    const std::wstring program = FromUtf8(path);
    std::wstring command = Quoted(program);
    for (const std::string& argument : arguments) command += L' ' + Quoted(FromUtf8(argument));

    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = OpenInherited(inputFile, GENERIC_READ, OPEN_EXISTING);
    start.hStdOutput = OpenInherited(outputFile, GENERIC_WRITE, CREATE_ALWAYS);
    start.hStdError = OpenInherited(errorFile, GENERIC_WRITE, CREATE_ALWAYS);
    PROCESS_INFORMATION process{};
    DWORD exitCode = static_cast<DWORD>(-1);
    // A system with much to do may refuse once; that no process begins is never what a test is about.
    constexpr int kMostTries = 5;
    bool isStarted = false;
    for (int i = 0; i < kMostTries && !isStarted; ++i)
        isStarted = CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                   nullptr, &start, &process) != 0;
    if (isStarted) {
        WaitForSingleObject(process.hProcess, INFINITE);
        GetExitCodeProcess(process.hProcess, &exitCode);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    for (const HANDLE file : {start.hStdInput, start.hStdOutput, start.hStdError}) CloseHandle(file);
    return static_cast<int>(exitCode);
}

std::string ChartutilPath() {
    const wchar_t* const path = _wgetenv(L"CHARTUTIL");
    return path ? ToUtf8(path) : "";
}
