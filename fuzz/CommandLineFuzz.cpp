#include "apps/chartutil/Program.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

namespace {

constexpr std::size_t kMaxArguments = 12;

// The program's files stay in a folder of its own, where it runs.
const std::filesystem::path& Folder() {
    static const std::filesystem::path folder = [] {
        std::string name = (std::filesystem::temp_directory_path() / "command-line-fuzz-XXXXXX").string();
        if (!mkdtemp(name.data())) std::abort();
        std::filesystem::current_path(name);
        std::atexit([] {
            std::filesystem::current_path("/");
            std::filesystem::remove_all(Folder());
        });
        return name;
    }();
    return folder;
}

} // namespace

// One argument a line up to an empty line; the rest is both the file "f" and standard input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream input(std::string(reinterpret_cast<const char*>(data), size));
    std::vector<std::string> arguments;
    for (std::string line; std::getline(input, line) && !line.empty();) {
        // No path leads out of the folder.
        std::replace(line.begin(), line.end(), '/', '_');
        if (line == "..") line = "f";
        if (arguments.size() < kMaxArguments) arguments.push_back(line);
    }
    const std::string rest(std::istreambuf_iterator<char>(input), {});
    for (const auto& entry : std::filesystem::directory_iterator(Folder()))
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
    // What goes wrong is said; nothing else is a reason for another code.
    if (code < 0 || code > 3 || (code >= 2 && error.str().empty())) std::abort();
    return 0;
}
