// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/LineRules.h"

#include "UtilityDLL/settings/IniFile.h"
#include "apps/chartutil/terminal/Errors.h"
#include "tests/support/Random.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <vector>

namespace {

struct Line {
    std::wstring name, value, comment;
};

// Texts of a few characters, of which most mean something in a settings file.
class RandomLines {
public:
    Line Next() { return {Text(), Text(), Text()}; }

private:
    std::wstring Text() {
        static const std::wstring alphabet = L"aabbk\u00FF\u00A0\t  ;=[]\r\n\v\u0100";
        std::wstring text(m_random() % 4, L' ');
        for (wchar_t& c : text) c = alphabet[m_random() % alphabet.size()];
        return text;
    }
    Random m_random{20260314};
};

bool IsAccepted(const Line& line) {
    try {
        RequireKeyLine(line.name, line.value, line.comment);
        return true;
    } catch (const CommandError& error) {
        EXPECT_EQ(ExitCode::WRONG_USE, error.Code());
        return false;
    }
}

bool HoldsOnly(const Section& section, const Line& line) {
    return section.NumKeys() == 1 && section[0].GetName().String() == line.name &&
           section[0].GetValue() == line.value && section[0].GetComments() == line.comment;
}

} // namespace

TEST(LineRules, EveryAcceptedLineComesBackFromAFile) {
    RandomLines random;
    std::vector<Line> lines;
    IniFile file;
    for (int i = 0; i < 100000; ++i) {
        const Line line = random.Next();
        if (!IsAccepted(line)) continue;
        file[std::to_wstring(lines.size())].AddKey(SectionKey(line.name, line.value, line.comment));
        lines.push_back(line);
    }
    ASSERT_GT(lines.size(), 5000u);
    const TemporaryFolder folder;
    ASSERT_TRUE(file.Save(folder.File(L"lines.ini")));
    IniFile read;
    ASSERT_TRUE(read.Open(folder.File(L"lines.ini")));
    ASSERT_EQ(static_cast<int>(lines.size()), read.NumSections());
    for (std::size_t i = 0; i < lines.size(); ++i)
        ASSERT_TRUE(HoldsOnly(read[static_cast<int>(i)], lines[i]))
            << ToUtf8(lines[i].name + L"|" + lines[i].value + L"|" + lines[i].comment);
}

TEST(LineRules, NoRefusedLineComesBackFromAFile) {
    RandomLines random;
    const TemporaryFolder folder;
    int numRefused = 0;
    while (numRefused < 300) {
        const Line line = random.Next();
        // Without a name it would be a comment line, which is no key. A lone carriage return inside a text
        // would come back, but not from a file that an editor has saved.
        if (IsAccepted(line) || line.name.empty() ||
            (line.name + line.value + line.comment).find(L'\r') != std::wstring::npos)
            continue;
        ++numRefused;
        IniFile file;
        file[L"S"].AddKey(SectionKey(line.name, line.value, line.comment));
        const bool saved = static_cast<bool>(file.Save(folder.File(L"line.ini")));
        IniFile read;
        const bool opened = saved && read.Open(folder.File(L"line.ini"));
        EXPECT_FALSE(opened && read.NumSections() == 1 && HoldsOnly(read[0], line))
            << ToUtf8(line.name + L"|" + line.value + L"|" + line.comment);
    }
}

TEST(LineRules, SectionNames) {
    struct Row {
        const wchar_t* name;
        bool accepted;
    };
    const TemporaryFolder folder;
    for (const Row& row : {Row{L"A", true}, Row{L" A ", true}, Row{L"a;b=c", true}, Row{L"[", true},
                           Row{L"\u00FF", true}, Row{L"", false}, Row{L"a]b", false}, Row{L"a\nb", false},
                           Row{L"a\rb", false}, Row{L"\u0100", false}}) {
        SCOPED_TRACE(ToUtf8(row.name));
        const auto require = [&] { RequireSectionName(row.name); };
        if (!row.accepted) {
            EXPECT_THROW(require(), CommandError);
            continue;
        }
        EXPECT_NO_THROW(require());
        IniFile file;
        file.AddSection(Section(row.name));
        ASSERT_TRUE(file.Save(folder.File(L"section.ini")));
        ASSERT_TRUE(file.Open(folder.File(L"section.ini")));
        EXPECT_EQ(row.name, file[0].GetName().String());
    }
}
