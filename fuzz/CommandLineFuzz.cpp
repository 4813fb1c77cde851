// SPDX-License-Identifier: MIT
// The command line: whatever the arguments and the files, the program ends with one of its codes. The input
// is one argument a line up to an empty line; the rest is both the file "f" and standard input.

#include "apps/chartutil/Program.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchFile.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMaxArguments = 12;
    std::istringstream input(std::string(reinterpret_cast<const char*>(data), size));
    std::vector<std::string> arguments;
    for (std::string line; std::getline(input, line) && !line.empty();) {
        // No path leads out of the folder.
        std::replace(line.begin(), line.end(), '/', '_');
        if (line.ends_with("..")) line = "f"; // also as the end of an option, "--install=.."
        if (arguments.size() < kMaxArguments) arguments.push_back(line);
    }
    const std::string rest(std::istreambuf_iterator<char>(input), {});
    static const ScratchFile scratch;
    std::filesystem::current_path(scratch.Folder());
    for (const auto& entry : std::filesystem::directory_iterator(scratch.Folder()))
        std::filesystem::remove_all(entry);
    std::ofstream("f", std::ios::binary) << rest;

    std::istringstream standardInput(rest);
    std::ostringstream output;
    std::ostringstream error;
    std::streambuf* const before[] = {std::cin.rdbuf(standardInput.rdbuf()), std::cout.rdbuf(output.rdbuf()),
                                      std::cerr.rdbuf(error.rdbuf())};
    std::cin.clear();
    const int code = static_cast<int>(RunProgram(arguments));
    std::cin.rdbuf(before[0]);
    std::cout.rdbuf(before[1]);
    std::cerr.rdbuf(before[2]);
    Require(code >= 0 && code <= 3, "the exit code is one of the program's");
    Require(code < 2 || !error.str().empty(), "what goes wrong is said");
    return 0;
}
