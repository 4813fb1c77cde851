// SPDX-License-Identifier: MIT
// Nothing keeps a library from being loaded here: the module tells its program, and that ends.

#include "tests/support/PackageCopy.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

constexpr char kAdvice[] =
    "; install all of them from one package, and see that no library path leads to others\n";

std::string LoadWithFailingStep(const wchar_t* step) {
    const EnvironmentSetting failing(L"FAILING_STEP", step);
    return RunProgramAt(LOAD_MODULE, {START_UP_MODULE}).output;
}

TEST(StartUp_Refused, TheTextSaysWhatFailed) {
    EXPECT_THAT(LoadWithFailingStep(L"CheckDllVersion"),
                HasSubstr("loaded: the libraries of the suite do not match: UtilityDLL is 5.0.0.20, "
                          "Odd is 5.0.0.21, Old is 4.9.0.0; install all of them"));
    EXPECT_THAT(LoadWithFailingStep(L"AfxInitExtensionModule"),
                HasSubstr("loaded: UtilityDLL cannot register with the framework; install it anew\n"));
}

TEST(StartUp_Refused, ChartutilSaysSoAndDoesNothing) {
    PackageCopy package;
    const std::string file = ToUtf8(package.Folder().File(L"a.ini"));
    EXPECT_EQ(0, package.Run(ChartutilPath(), {"settings", "set", file, "A", "k", "1", "--create"}).exitCode);
    const std::string before = ReadBytes(package.Folder().File(L"a.ini"));
    EXPECT_NE("", before);

    package.CopyLibraries(STAND_IN_VERSION_CONTROL);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"settings", "set", file, "A", "k", "2"}, {"--help"}, {}}) {
        const ProgramResult result = package.Run(ChartutilPath(), arguments);
        EXPECT_EQ(3, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_EQ(std::string("chartutil: the libraries of the suite do not match: UtilityDLL is 5.0.0.20, "
                              "VersionControlR refuses it") +
                      kAdvice,
                  result.error);
    }
    EXPECT_EQ(before, ReadBytes(package.Folder().File(L"a.ini")));
}

TEST(StartUp_Refused, ALibraryOfAnotherVersionIsNamed) {
    const PackageCopy package;
    package.CopyLibraries(OTHER_VELM_CONFIGURE);
    const std::string fault = std::string("chartutil: the libraries of the suite do not match: UtilityDLL is "
                                          "5.0.0.20, VelmConfigureR is 5.0.0.21") +
                              kAdvice;
    const ProgramResult units = package.Run(ChartutilPath(), {"units", "convert", "1", "m", "ft"});
    EXPECT_EQ(3, units.exitCode);
    EXPECT_EQ("", units.output);
    EXPECT_EQ(fault, units.error);

    const ProgramResult version = package.Run(ChartutilPath(), {"--version"});
    EXPECT_EQ(3, version.exitCode);
    EXPECT_EQ(fault, version.error);
    EXPECT_THAT(version.output, StartsWith("chartutil 5.0.0.20\n"));
    EXPECT_THAT(version.output, HasSubstr("\n  VelmConfigureR   5.0.0.21  does not match\n"));
    EXPECT_THAT(version.output, HasSubstr("\n  VersionControlR  5.0.0.20  matches\n"));
}

TEST(StartUp_Refused, AHostThatDoesNotAskFindsTheBuiltInTexts) {
    const EnvironmentSetting german(L"UTILITYDLL_LANGUAGE", L"de");
    const PackageCopy package;
    package.CopyLibraries(STAND_IN_VERSION_CONTROL);
    WriteBytes(package.LanguageFile("de"),
               "msgctxt \"9080\"\nmsgid \"Error opening \\\"\"\nmsgstr \"Fehler \\\"\"\n");
    const ProgramResult result = package.Run(PRINT_OPEN_FAULT, {"none.ini"});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("Error opening \"none.ini\" for reading!|", result.output);
}

} // namespace
