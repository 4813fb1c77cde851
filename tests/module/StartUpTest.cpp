// SPDX-License-Identifier: MIT
#include "UtilityDLL/module/UtilityDLL.h"

#include "tests/support/Language.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <sstream>

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

// Loads the start-up with stand-ins for what it calls, of which one fails.
std::vector<std::string> LoadWithFailingStep(const wchar_t* step) {
    const EnvironmentSetting failing(L"FAILING_STEP", step);
    const ProgramResult result = RunProgramAt(LOAD_MODULE, {START_UP_MODULE});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("", result.error);
    return Lines(result.output);
}

// The compiler's form of date and time: "Jul 15 2021 13:15:33", where a day below 10 has a blank before it.
bool IsCheck(const std::string& line) {
    const std::string begin = "CheckDllVersion(0x05000014, UtilityDLL/UtilityDLL, ";
    const std::string form = "Aaa #0 0000 00:00:00)"; // a capital, small letters, a digit or blank, digits
    if (line.substr(0, begin.size()) != begin || line.size() != begin.size() + form.size()) return false;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const char c = line[begin.size() + i];
        const bool isDigit = c >= '0' && c <= '9';
        const bool fits = form[i] == 'A'   ? c >= 'A' && c <= 'Z'
                          : form[i] == 'a' ? c >= 'a' && c <= 'z'
                          : form[i] == '#' ? isDigit || c == ' '
                          : form[i] == '0' ? isDigit
                                           : c == form[i];
        if (!fits) return false;
    }
    return true;
}

constexpr char kRegistration[] = "AfxInitExtensionModule(a new record, the module)";

TEST(StartUp, TakesItsStepsInOrderAndEndsWithTheModule) {
    const std::vector<std::string> lines = LoadWithFailingStep(L"");
    ASSERT_EQ(8u, lines.size()) << ::testing::PrintToString(lines);
    EXPECT_TRUE(IsCheck(lines[0])) << lines[0];
    EXPECT_EQ(kRegistration, lines[1]);
    EXPECT_EQ("CDynLinkLibrary(the module)", lines[2]);
    EXPECT_EQ("LoadDLLResourceDLL(the module, the module)", lines[3]);
    EXPECT_EQ("loaded: well", lines[4]);
    EXPECT_EQ("a thread", lines[5]); // whose beginning and end are no step
    EXPECT_EQ("AfxTermExtensionModule(the module)", lines[6]);
    EXPECT_EQ("unloaded", lines[7]);
}

TEST(StartUp, AStepThatFailsIsTheLast) {
    const std::vector<std::string> refused = LoadWithFailingStep(L"CheckDllVersion");
    ASSERT_LE(2u, refused.size());
    EXPECT_TRUE(IsCheck(refused[0])) << refused[0];
    EXPECT_THAT(refused[1], Not(HasSubstr("AfxInitExtensionModule")));

    const std::vector<std::string> unregistered = LoadWithFailingStep(L"AfxInitExtensionModule");
    ASSERT_LE(3u, unregistered.size());
    EXPECT_TRUE(IsCheck(unregistered[0])) << unregistered[0];
    EXPECT_EQ(kRegistration, unregistered[1]);
    for (const std::vector<std::string>& lines : {refused, unregistered})
        for (const std::string& line : lines) {
            EXPECT_THAT(line, Not(StartsWith("CDynLinkLibrary")));
            EXPECT_THAT(line, Not(StartsWith("LoadDLLResourceDLL")));
            EXPECT_THAT(line, Not(StartsWith("loaded: well")));
        }
}

TEST(StartUp, OfThisModuleWentWell) {
    const ErrorString result = UtilityDLLStartUp();
    EXPECT_TRUE(result);
    EXPECT_EQ(L"", result.Text());
}

} // namespace
