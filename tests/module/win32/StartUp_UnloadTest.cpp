// SPDX-License-Identifier: MIT
// What is left behind in a program that loads and unloads the library again and again, or tries to. It shows
// windows, on a display of its own.

#include "tests/support/PackageCopy.h"

#include <gmock/gmock.h>
#include <map>
#include <sstream>

namespace {

struct Counts {
    std::size_t first, last;
};

// How much more there may be of a thing after the loads in between, 290 at least, of which each would leave
// one or 16 bytes behind.
std::size_t Allowance(const std::string& thing) {
    if (thing == "handles") return 10;           // counted give or take a few
    if (thing == "heap") return 4096;            // bytes
    if (thing == "private") return 1024U * 1024; // bytes; the system takes them by pages
    return 0;
}

// Expects of what LoadOften has said that nothing is left behind. Gives how often the library was loaded.
std::size_t LoadsWithNothingLeft(const ProgramResult& result) {
    EXPECT_EQ(0, result.exitCode) << result.error;
    std::map<std::string, Counts> things;
    std::istringstream lines(result.output);
    std::string name;
    for (Counts counts{}; lines >> name >> counts.first >> counts.last;) things[name] = counts;
    EXPECT_EQ(9u, things.size()) << result.output;
    const std::size_t loads = things["loads"].last;
    things.erase("loads");
    for (const auto& [thing, counts] : things)
        EXPECT_LE(counts.last, counts.first + Allowance(thing)) << thing;
    return loads;
}

TEST(StartUp_Unload, NothingIsLeftBehindAThousandTimes) {
    EXPECT_EQ(1000u, LoadsWithNothingLeft(RunProgramAt(LOAD_OFTEN, {"1000", UTILITYDLL_FILE})));
}

TEST(StartUp_Unload, NorByALibraryThatUsesIt) {
    // Which takes longer: it shows windows.
    EXPECT_EQ(300u, LoadsWithNothingLeft(RunProgramAt(LOAD_OFTEN, {"300", PLUG_IN})));
}

TEST(StartUp_Unload, NorInAFrameworkThatStays) {
    EXPECT_EQ(1000u,
              LoadsWithNothingLeft(RunProgramAt(LOAD_OFTEN, {"1000", UTILITYDLL_FILE, FRAMEWORK_FILE})));
}

TEST(StartUp_Unload, NorWhereItIsRefused) {
    const PackageCopy package;
    package.CopyLibraries(STAND_IN_VERSION_CONTROL);
    // Those beside the program.
    EXPECT_EQ(0u, LoadsWithNothingLeft(package.Run(LOAD_OFTEN, {"1000", "UtilityDLL.dll"})));
    EXPECT_EQ(0u, LoadsWithNothingLeft(package.Run(LOAD_OFTEN, {"1000", "UtilityDLL.dll", "Framework.dll"})));
}

} // namespace
