// SPDX-License-Identifier: MIT
// Every language that is shipped has every text, and nothing of what the program needs is lost in it.

#include "UtilityDLL/res/private/StringTable.h"
#include "VelmBase/private/LanguageFile.h"
#include "tests/support/TestFiles.h"

#include <algorithm>
#include <cwctype>
#include <gtest/gtest.h>
#include <map>

namespace {

std::vector<std::filesystem::path> LanguageFiles() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(LANGUAGE_FOLDER))
        files.push_back(entry.path());
    return files;
}

// The small letter by which the keyboard reaches a control; 0 without one.
wchar_t Letter(const std::wstring& text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != L'&') continue;
        if (text[i + 1] != L'&')
            return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(text[i + 1])));
        ++i;
    }
    return 0;
}

// What is wrong with a translation; empty when nothing is.
std::string Fault(const std::wstring& original, const std::wstring& translation) {
    const auto count = [](const std::wstring& text, wchar_t c) {
        return std::count(text.begin(), text.end(), c);
    };
    if (translation.empty()) return "is missing";
    if (original.front() == L' ' && translation.front() != L' ') return "lacks the blank at its beginning";
    if (original.back() == L' ' && translation.back() != L' ') return "lacks the blank at its end";
    if ((original.front() == L'"') != (translation.front() == L'"'))
        return "differs in the quote at its beginning";
    if ((original.back() == L'"') != (translation.back() == L'"')) return "differs in the quote at its end";
    if ((original.back() == L':') != (translation.back() == L':')) return "differs in the colon at its end";
    for (const wchar_t c : {L'\n', L'\t'})
        if (count(original, c) != count(translation, c)) return "differs in line breaks or tabs";
    if (Letter(original) != 0 && Letter(translation) == 0) return "lacks the letter for the keyboard";
    const bool isList =
        original.find(L',') != std::wstring::npos && original.find(L", ") == std::wstring::npos;
    if (isList && count(original, L',') != count(translation, L',')) return "has another number of items";
    const std::size_t pattern = original.find(L"(*."); // of files: "(*.cdf)"
    if (pattern != std::wstring::npos && translation.find(original.substr(pattern)) == std::wstring::npos)
        return "lacks the pattern of files";
    return {};
}

using Texts = std::map<std::uint32_t, std::wstring>;

// The texts that stand in one dialog together.
const std::vector<TextId> kDialogs[] = {
    {TextId::CONTOURS_CAPTION, TextId::CONTOURS_ADD, TextId::CONTOURS_REMOVE, TextId::CONTOURS_EDIT,
     TextId::CONTOURS_GENERATE_FROM, TextId::CONTOURS_RANGE, TextId::CONTOURS_COLOR_TABLE, TextId::DIALOG_OK,
     TextId::DIALOG_CANCEL},
    {TextId::CONTOUR_CAPTION, TextId::CONTOUR_LEVEL, TextId::CONTOUR_COLOR, TextId::CONTOUR_CLICK_TO_CHANGE,
     TextId::CONTOUR_LINE_STYLE, TextId::CONTOUR_LINE_WIDTH, TextId::CONTOUR_SHOW_LABELS, TextId::DIALOG_OK,
     TextId::DIALOG_CANCEL},
    {TextId::GENERATE_CAPTION, TextId::GENERATE_RANGE, TextId::GENERATE_LOWEST, TextId::GENERATE_HIGHEST,
     TextId::GENERATE_INTERVAL, TextId::DIALOG_OK, TextId::DIALOG_CANCEL}};

// The letters that reach more than one control of a dialog.
std::wstring LettersTwice(const Texts& texts) {
    std::wstring twice;
    for (const std::vector<TextId>& dialog : kDialogs) {
        std::wstring letters;
        for (const TextId id : dialog) {
            const auto text = texts.find(static_cast<std::uint32_t>(id));
            const wchar_t letter = text == texts.end() ? L'\0' : Letter(text->second);
            if (letter == 0) continue;
            if (letters.find(letter) != std::wstring::npos) twice += letter;
            letters += letter;
        }
    }
    return twice;
}

Texts OriginalTexts() {
    Texts texts;
    for (const BuiltInText& text : BuiltInTexts())
        texts.emplace(static_cast<std::uint32_t>(text.id), text.text);
    return texts;
}

Texts TextsOf(const std::wstring& path) {
    Texts texts;
    LANGUAGES::ReadEntriesOf(path, [&](std::uint32_t number, const std::wstring&,
                                       const std::wstring& translation) { texts[number] = translation; });
    return texts;
}

// What is wrong with a language file, a line each.
std::vector<std::string> Faults(const std::wstring& path) {
    Texts missing = OriginalTexts();
    const Texts originals = missing;
    std::vector<std::string> faults;
    const bool isRead = LANGUAGES::ReadEntriesOf(
        path, [&](std::uint32_t number, const std::wstring& original, const std::wstring& translation) {
            const auto add = [&](const std::string& fault) {
                faults.push_back(std::to_string(number) + " " + fault);
            };
            const auto own = originals.find(number);
            if (own == originals.end()) return add("is too many");
            if (missing.erase(number) == 0) return add("is there twice");
            if (original != own->second) return add("has another original");
            if (const std::string fault = Fault(original, translation); !fault.empty()) add(fault);
        });
    if (!isRead) faults.push_back("cannot be read");
    for (const auto& [number, text] : missing)
        faults.push_back(std::to_string(number) + " is missing or damaged");
    return faults;
}

TEST(Translations, OfEveryLanguageAreComplete) {
    const std::vector<std::filesystem::path> files = LanguageFiles();
    EXPECT_FALSE(files.empty());
    for (const std::filesystem::path& file : files) {
        EXPECT_EQ(".po", file.extension());
        EXPECT_EQ(std::vector<std::string>(), Faults(WidePath(file))) << file;
    }
}

TEST(Translations, GermanIsShipped) {
    const std::vector<std::filesystem::path> files = LanguageFiles();
    EXPECT_TRUE(std::any_of(files.begin(), files.end(),
                            [](const auto& f) { return f.filename() == "UtilityDLL.de.po"; }));
}

TEST(Translations, EachLetterReachesOneControlOfADialog) {
    EXPECT_EQ(L"", LettersTwice(OriginalTexts()));
    for (const std::filesystem::path& file : LanguageFiles())
        EXPECT_EQ(L"", LettersTwice(TextsOf(WidePath(file)))) << file;
}

TEST(Translations, EveryControlHasALetter) {
    for (const std::vector<TextId>& dialog : kDialogs)
        for (const TextId id : dialog) {
            const bool isTitle = id == TextId::CONTOURS_CAPTION || id == TextId::CONTOUR_CAPTION ||
                                 id == TextId::GENERATE_CAPTION || id == TextId::CONTOURS_GENERATE_FROM ||
                                 id == TextId::GENERATE_RANGE;
            const bool hasKey = id == TextId::DIALOG_OK || id == TextId::DIALOG_CANCEL; // Enter and Escape
            const bool isLabelled = id == TextId::CONTOUR_CLICK_TO_CHANGE; // by the letter of its label
            const std::wstring text = OriginalTexts().at(static_cast<std::uint32_t>(id));
            EXPECT_EQ(!isTitle && !hasKey && !isLabelled, Letter(text) != 0)
                << ::testing::PrintToString(text);
        }
}

TEST(Translations, ALetterOfTwoControlsIsFound) {
    Texts texts = OriginalTexts();
    texts[static_cast<std::uint32_t>(TextId::CONTOURS_EDIT)] = L"Ch&Ange";
    EXPECT_EQ(L"a", LettersTwice(texts));
    texts[static_cast<std::uint32_t>(TextId::CONTOURS_EDIT)] = L"Add && &Edit";
    EXPECT_EQ(L"", LettersTwice(texts));
}

TEST(Translations, TheFaultsOfAFileAreFound) {
    const TemporaryFolder folder;
    const std::string german = ReadBytes(std::filesystem::path(LANGUAGE_FOLDER) / "UtilityDLL.de.po");
    struct Row {
        const char *text, *changed, *fault;
    };
    for (const Row& row :
         {Row{"msgctxt \"9086\"", "msgctxt \"9087\"", "9087 is too many"},
          Row{"msgctxt \"9086\"", "msgctxt \"9085\"", "9085 is there twice"},
          Row{"msgctxt \"9086\"", "msgctxt \"9086", "9086 is missing or damaged"},
          Row{"msgid \"Save changes?\"", "msgid \"Save?\"", "9067 has another original"},
          Row{"\"Abbrechen\"", "\"\"", "9101 is missing"},
          Row{"\" Die Datei", "\"Die Datei", "9071 lacks the blank at its beginning"},
          Row{"in Zeile \"", "in Zeile\"", "9084 lacks the blank at its end"},
          Row{"\"\\\" zum Lesen", "\"zum Lesen", "9081 differs in the quote at its beginning"},
          Row{"von \\\"\"", "von\"", "9070 differs in the quote at its end"},
          Row{"\"&Tiefe:\"", "\"&Tiefe\"", "9131 differs in the colon at its end"},
          Row{"\"Grund:\\n\"", "\"Grund:\"", "9065 differs in line breaks or tabs"},
          Row{"\"&Hinzu", "\"Hinzu", "9111 lacks the letter for the keyboard"},
          Row{"Punktiert,Strich", "Punktiert Strich", "9121 has another number of items"},
          Row{"msgstr \"Farbtabellen (*.col)", "msgstr \"Farbtabellen", "9122 lacks the pattern of files"}}) {
        std::string bytes = german;
        const std::size_t place = bytes.find(row.text);
        ASSERT_NE(std::string::npos, place) << row.text;
        bytes.replace(place, std::string_view(row.text).size(), row.changed);
        WriteBytes(folder.Path() / "changed.po", bytes);
        const std::vector<std::string> faults = Faults(folder.File(L"changed.po"));
        EXPECT_NE(faults.end(), std::find(faults.begin(), faults.end(), row.fault))
            << row.fault << ::testing::PrintToString(faults);
    }
}

} // namespace
