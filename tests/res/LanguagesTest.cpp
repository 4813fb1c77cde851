// SPDX-License-Identifier: MIT
// The texts that people see, in processes of their own, in the languages that they may have chosen.

#include "tests/support/PackageCopy.h"

#include <gmock/gmock.h>

namespace {

constexpr char kEnglish[] = "Error opening \"none.ini\" for reading!|";
constexpr char kGerman[] = "Fehler beim Öffnen von \"none.ini\" zum Lesen!|";

std::string OpenFault() {
    const ProgramResult result = RunProgramAt(PRINT_OPEN_FAULT, {"none.ini"});
    EXPECT_EQ(0, result.exitCode) << result.error;
    return result.output;
}

TEST(Languages, TheVariableChoosesTheLanguage) {
    struct Row {
        const wchar_t* language;
        const char* text;
    };
    for (const Row& row :
         {Row{L"de", kGerman}, Row{L"de_DE", kGerman}, Row{L"de-AT", kGerman}, Row{L"DE_CH.UTF-8", kGerman},
          Row{L"en", kEnglish}, Row{L"en_GB", kEnglish}, Row{L"C", kEnglish}, Row{L"POSIX", kEnglish},
          Row{L"tlh", kEnglish}, Row{L"../languages/UtilityDLL.de", kEnglish}, Row{L"d", kEnglish},
          Row{L"*", kEnglish}}) {
        const EnvironmentSetting language(L"UTILITYDLL_LANGUAGE", row.language);
        EXPECT_EQ(row.text, OpenFault()) << ToUtf8(row.language);
    }
}

TEST(Languages, EveryFaultOfASettingsFileIsToldInGerman) {
    const EnvironmentSetting language(L"UTILITYDLL_LANGUAGE", L"de");
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "twice.ini", "[Depth]\n[DEPTH]\n");
    WriteBytes(folder.Path() / "broken.ini", "[A]\n\n[]\n");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    const ProgramResult result = RunProgramAt(PRINT_OPEN_FAULT, {"twice.ini", "broken.ini", "none.ini"});
    std::filesystem::current_path(before);
    EXPECT_EQ(std::string("Fehler! Doppelter Abschnitt DEPTH gefunden!|"
                          "Ungültige Abschnittsdefinition in Zeile 3|") +
                  kGerman,
              result.output);
}

TEST(Languages, WhereThereIsNoFileOrNoneThatCanBeReadTheBuiltInTextsHold) {
    const EnvironmentSetting language(L"UTILITYDLL_LANGUAGE", L"de");
    const PackageCopy package;
    const auto text = [&] { return package.Run(PRINT_OPEN_FAULT, {"none.ini"}).output; };
    EXPECT_EQ(kEnglish, text());
    const std::filesystem::path file = package.LanguageFile("de");
    std::filesystem::create_directory(file); // a folder is no file
    EXPECT_EQ(kEnglish, text());
    std::filesystem::remove(file);
    for (const std::string& bytes : {std::string(), std::string(1000, '\0'),
                                     std::string("\xFF\xFE\0m\0s\0g", 8), std::string("<html>")}) {
        WriteBytes(file, bytes);
        EXPECT_EQ(kEnglish, text());
    }
}

TEST(Languages, ADamagedFileIsUsedTextByText) {
    const EnvironmentSetting language(L"UTILITYDLL_LANGUAGE", L"de");
    const PackageCopy package;
    const std::string opening = "msgctxt \"9080\"\nmsgid \"\"\nmsgstr \"Fehler: \\\"\"\n\n";
    const std::string reading = "msgctxt \"9081\"\nmsgid \"\"\nmsgstr \"\\\", lesen\"\n";
    struct Row {
        std::string file;
        const char* text;
    };
    for (const Row& row :
         {Row{opening + reading, "Fehler: \"none.ini\", lesen|"},
          Row{opening + reading.substr(0, reading.size() - 2), "Fehler: \"none.ini\" for reading!|"},
          Row{opening.substr(5) + reading, "Error opening \"none.ini\", lesen|"},
          Row{opening + "#, fuzzy\n" + reading, "Fehler: \"none.ini\" for reading!|"}}) {
        WriteBytes(package.LanguageFile("de"), row.file);
        EXPECT_EQ(row.text, package.Run(PRINT_OPEN_FAULT, {"none.ini"}).output) << row.file;
    }
}

TEST(Languages, ATranslatorNeedsNothingButTheFile) {
    const EnvironmentSetting language(L"UTILITYDLL_LANGUAGE", L"pt_BR");
    const PackageCopy package;
    const auto text = [&] { return package.Run(PRINT_OPEN_FAULT, {"none.ini"}).output; };
    WriteBytes(package.LanguageFile("pt"), "msgctxt \"9080\"\nmsgid \"\"\nmsgstr \"pt \"\n");
    EXPECT_EQ("pt none.ini\" for reading!|", text());
    WriteBytes(package.LanguageFile("pt_BR"), "msgctxt \"9080\"\nmsgid \"\"\nmsgstr \"pt_BR \"\n");
    EXPECT_EQ("pt_BR none.ini\" for reading!|", text());
}

} // namespace
