// What is left behind in a program that loads and unloads the library again and again.

#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <map>
#include <sstream>

namespace {

struct Counts {
    std::size_t first, last;
};

std::map<std::string, Counts> LoadOften(const std::vector<std::string>& arguments) {
    const ProgramResult result = RunProgramAt(LOAD_OFTEN, arguments);
    EXPECT_EQ(0, result.exitCode) << result.output << result.error;
    std::map<std::string, Counts> things;
    std::istringstream lines(result.output);
    std::string name;
    for (Counts counts{}; lines >> name >> counts.first >> counts.last;) things[name] = counts;
    EXPECT_EQ(8u, things.size()) << result.output;
    return things;
}

// How much more there may be of a thing after the 990 loads in between, of which each would leave at least
// one or 16 bytes behind.
std::size_t Allowance(const std::string& thing) {
    if (thing == "handles") return 10;           // counted give or take a few
    if (thing == "heap") return 4096;            // bytes
    if (thing == "private") return 1024U * 1024; // bytes; the system takes them by pages
    return 0;
}

void ExpectNothingLeft(const std::vector<std::string>& arguments) {
    for (const auto& [thing, counts] : LoadOften(arguments))
        EXPECT_LE(counts.last, counts.first + Allowance(thing)) << thing;
}

TEST(StartUp_Unload, NothingIsLeftBehindAThousandTimes) { ExpectNothingLeft({"1000", UTILITYDLL_FILE}); }

TEST(StartUp_Unload, NorByALibraryThatUsesIt) { ExpectNothingLeft({"1000", PLUG_IN}); }

TEST(StartUp_Unload, NorInAFrameworkThatStays) {
    ExpectNothingLeft({"1000", UTILITYDLL_FILE, FRAMEWORK_FILE});
}

} // namespace
