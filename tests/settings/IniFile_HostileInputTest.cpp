// SPDX-License-Identifier: MIT
#include "tests/support/IniFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Files that nobody writes on purpose. Each is read as the rules of the format say, at a cost that its size
// bounds.

namespace {

std::string Repeated(std::string_view text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
}

/// The bytes of a literal, in which a NUL is a byte as well.
template <std::size_t Size> std::string_view Bytes(const char (&literal)[Size]) {
    return {literal, Size - 1};
}

} // namespace

TEST(IniFile_HostileInput, EmptyFile) {
    const Opened opened("");
    EXPECT_TRUE(opened.result);
    EXPECT_TRUE(opened.file.Empty());
}

TEST(IniFile_HostileInput, NoLastNewline) {
    EXPECT_EQ((PlainFile{{L"s", {{L"a", L"1", L""}}}}), Opened("[s]\na=1").Content());
    EXPECT_EQ((PlainFile{{L"s", {}}}), Opened("[s]").Content());
    EXPECT_EQ((PlainFile{{L"s", {{L"a", L"", L"c"}}}}), Opened("[s]\r\na;c").Content());
}

TEST(IniFile_HostileInput, OnlyCarriageReturns) {
    EXPECT_TRUE(Opened("\r").result);
    EXPECT_TRUE(Opened("\r\r\r").file.Empty());
    // Without a line feed it is all one line: a header with something behind it.
    EXPECT_EQ((PlainFile{{L"s", {}}}), Opened("[s]\ra=1\rb=2\r").Content());
    EXPECT_EQ((PlainFile{{L"s", {{L"a", L"1\rb=2", L""}}}}), Opened("[s]\n\ra=1\rb=2\r").Content());
}

TEST(IniFile_HostileInput, MixedLineEnds) {
    EXPECT_EQ((PlainFile{{L"s", {{L"a", L"1", L""}, {L"b", L"2", L""}, {L"c", L"3", L""}}}}),
              Opened("[s]\r\na=1\nb=2\r\r\n\n\rc=3\n\r").Content());
}

TEST(IniFile_HostileInput, NulBytes) {
    const std::wstring nul(1, L'\0');
    EXPECT_EQ((PlainFile{{L"s" + nul, {{nul + L"a", nul, nul + nul}, {nul, L"", L""}}}}),
              Opened(Bytes("[s\0]\n\0a=\0;\0\0\n\0\n")).Content());
    EXPECT_TRUE(Opened(std::string(100000, '\0')).result);
    EXPECT_TRUE(Opened(std::string(100000, '\0')).file.Empty());
    EXPECT_EQ(100000u, Opened("[s]\n" + std::string(100000, '\0')).file[0][0].GetName().String().size());
}

TEST(IniFile_HostileInput, ControlZInTheMiddle) {
    EXPECT_EQ((PlainFile{{L"s", {{L"a", L"1\x1A", L""}, {L"\x1A", L"", L""}}}, {L"t", {{L"b", L"2", L""}}}}),
              Opened("[s]\na=1\x1A\n\x1A\n[t]\nb=2\n").Content());
}

TEST(IniFile_HostileInput, ByteOrderMarks) {
    // Plain characters of their codes: the first line is then no header, and what follows it is ignored.
    EXPECT_TRUE(Opened("\xEF\xBB\xBF[s]\na=1\n").file.Empty());
    EXPECT_EQ((PlainFile{{L"t", {}}}), Opened("\xEF\xBB\xBF[s]\na=1\n[t]\n").Content());
    EXPECT_EQ((PlainFile{{L"s", {{L"a", L"1", L""}}}}), Opened("\xEF\xBB\xBF\n[s]\na=1\n").Content());
    EXPECT_TRUE(Opened(Bytes("\xFF\xFE[\0s\0]\0\n\0")).file.Empty());
    EXPECT_TRUE(Opened(Bytes("\xFE\xFF\0[\0s\0]\0\n")).file.Empty());
}

TEST(IniFile_HostileInput, OddHeaders) {
    const auto names = [](std::string_view line) {
        const Opened opened("[x]\n" + std::string(line) + "\n");
        return opened.file.NumSections() > 1 ? opened.file[1].GetName().String() : L"<none>";
    };
    EXPECT_EQ(L"<none>", names("["));
    EXPECT_EQ(L"<none>", names("[a"));
    EXPECT_EQ(L"a", names("[a]b]c"));
    EXPECT_EQ(L" ", names("[ ]"));
    EXPECT_EQ(L"<none>", names("[]"));
    EXPECT_EQ(L"[", names("[[]"));
    EXPECT_EQ(L"[[[[", names("[[[[[]]]]]"));
    EXPECT_EQ(L"Invalid section definition on line 2", Opened("[x]\n[]\n").result.Text());
    EXPECT_EQ(1000000u, names("[" + std::string(1000000, 'n') + "]").size());
    EXPECT_EQ(L"<none>", names(std::string(1000000, '[')));
}

TEST(IniFile_HostileInput, OddKeyLines) {
    EXPECT_EQ((PlainFile{{L"s",
                          {{L"", L"", L""},
                           {L"", L"v", L""},
                           {L"k", L"=v", L""},
                           {L"", L"", L""},
                           {L"", L"", L";"},
                           {L"k", L"", L""}}}}),
              Opened("[s]\n=\n=v\nk==v\n;\n;;\nk=;\n").Content());
    EXPECT_EQ(999999u, Opened("[s]\n" + std::string(1000000, '=')).file[0][0].GetValue().size());
    EXPECT_EQ(999999u, Opened("[s]\n" + std::string(1000000, ';')).file[0][0].GetComments().size());
}

TEST(IniFile_HostileInput, SealsOfEverySort) {
    const std::string keys = "[s]\na = 1\n";
    const std::string sum = std::to_string(Opened(keys).file[0].ComputeChecksum());
    const auto modified = [&](const std::string& lines) { return Opened(keys + lines).file[0].IsModified(); };
    EXPECT_FALSE(modified("$CHECKSUM$ = " + sum));
    EXPECT_FALSE(modified("$checksum$ = " + sum));
    EXPECT_FALSE(modified("$ChEcKsUm$=" + sum + ";comment"));
    EXPECT_FALSE(modified("$CHECKSUM$ = " + sum + "\n$CHECKSUM$ = 1"));
    EXPECT_TRUE(modified("$CHECKSUM$ = 1\n$CHECKSUM$ = " + sum));
    EXPECT_TRUE(modified("$CHECKSUM$"));
    EXPECT_TRUE(modified("$CHECKSUM$ = "));
    EXPECT_TRUE(modified("$CHECKSUM$ = none"));
    EXPECT_TRUE(modified("$CHECKSUM$ = -" + sum));
    EXPECT_TRUE(modified("$CHECKSUM$ = 4294967296"));
    EXPECT_TRUE(modified("$CHECKSUM$ = " + std::to_string(std::stoull(sum) + 4294967296ull)));
    EXPECT_TRUE(modified("$CHECKSUM $ = " + sum));
    EXPECT_TRUE(modified(""));
}

TEST(IniFile_HostileInput, NamesEqualButForCase) {
    EXPECT_EQ(L"Error! Duplicate sectionA found!", Opened("[a]\n[A]\n").result.Text());
    EXPECT_EQ(L"Error! Duplicate section\u00C4 found!", Opened("[\xE4]\n[\xC4]\n").result.Text());
    EXPECT_EQ(2, Opened("[\xFF]\n[\xDF]\n").file.NumSections());
    Opened keys("[s]\n\xE4=1\n\xC4=2\n");
    EXPECT_EQ(L"1", keys.file[0][L"\u00C4"].GetValue());
    EXPECT_EQ(2, keys.file[0].NumKeys());
}

TEST(IniFile_HostileInput, AHundredMegabytesInOneLine) {
    const std::size_t size = 100u << 20;
    {
        const Opened value("[s]\nk=" + std::string(size, 'v') + "\nlast=1\n");
        ASSERT_TRUE(value.result);
        ASSERT_EQ(2, value.file[0].NumKeys());
        const std::wstring& text = value.file[0][0].GetValue();
        EXPECT_EQ(size, text.size());
        EXPECT_EQ(std::wstring::npos, text.find_first_not_of(L'v'));
    }
    EXPECT_TRUE(Opened(std::string(size, ' ')).file.Empty());
    EXPECT_TRUE(Opened(std::string(size, 'x')).file.Empty()); // before the first header
}

TEST(IniFile_HostileInput, AMillionSections) {
    std::string bytes;
    for (int i = 0; i < 1000000; ++i) bytes += "[s" + std::to_string(i) + "]\n";
    Opened opened(bytes);
    ASSERT_TRUE(opened.result);
    ASSERT_EQ(1000000, opened.file.NumSections());
    EXPECT_EQ(&opened.file[777777], &opened.file[L"S777777"]);
    EXPECT_EQ(L"Error! Duplicate sectionS0 found!", Opened(bytes + "[S0]\n").result.Text());
}

TEST(IniFile_HostileInput, AMillionEqualKeys) {
    Opened opened("[s]\n" + Repeated("key=value\n", 1000000));
    ASSERT_TRUE(opened.result);
    ASSERT_EQ(1000000, opened.file[0].NumKeys());
    EXPECT_EQ(&opened.file[0][0], &opened.file[0][L"KEY"]);
    EXPECT_FALSE(opened.file[0].HasKey(L"other"));
    opened.file[0].AddChecksum();
    EXPECT_FALSE(opened.file[0].IsModified());
}

TEST(IniFile_HostileInput, AMillionBlankLines) {
    EXPECT_EQ(L"Invalid section definition on line 1000001",
              Opened(std::string(1000000, '\n') + "[]").result.Text());
}

TEST(IniFile_HostileInput, AMillionNamelessKeys) {
    const Opened opened("[s]\n" + Repeated(";\n", 1000000));
    EXPECT_EQ(1000000, opened.file[0].NumKeys());
    EXPECT_EQ("[s]\r\n" + Repeated("\r\n", 1000001), SavedBytes(opened.file));
}

TEST(IniFile_HostileInput, ALongNameWidensEveryLine) {
    // The columns of the format cost the longest name on each line.
    Section section(L"s");
    section.AddKey(std::wstring(10000, L'n'));
    for (int i = 0; i < 1000; ++i) section.AddKey(L"k");
    IniFile file;
    file.AddSection(section);
    EXPECT_EQ(5u + 1001u * (10001u + 2 + 2) + 2u, SavedBytes(file).size());
}

TEST(IniFile_HostileInput, ValuesSetByAHost) {
    // What a line cannot carry is written as it is, and comes back as the reader sees it.
    struct Row {
        PlainKey set, read;
    };
    for (const Row& row : std::initializer_list<Row>{
             {{L"k", L"\"quoted\"", L""}, {L"k", L"\"quoted\"", L""}},
             {{L"k", L"a,b", L""}, {L"k", L"a,b", L""}},
             {{L"k", L"a=b", L""}, {L"k", L"a=b", L""}},
             {{L"k", L"a;b", L""}, {L"k", L"a", L"b"}},
             {{L"k", L"a;b", L"c"}, {L"k", L"a", L"b ;c"}},
             {{L"k", L"[a]", L""}, {L"k", L"[a]", L""}},
             {{L"k", L" a ", L""}, {L"k", L"a", L""}},
             {{L"a=b", L"c", L""}, {L"a", L"b = c", L""}},
             {{L"a;b", L"c", L""}, {L"a", L"", L"b = c"}},
             {{L" k ", L"v", L""}, {L"k", L"v", L""}},
             {{L"[k", L"v", L""}, {L"[k", L"v", L""}},
             {{L"k", L"v", L"c "}, {L"k", L"v", L"c"}},
         }) {
        IniFile file;
        file[L"s"].AddKey(SectionKey(HashedString<wchar_t>(row.set.name), row.set.value, row.set.comments));
        EXPECT_EQ((PlainFile{{L"s", {row.read}}}), Opened(SavedBytes(file)).Content());
    }
    IniFile file;
    file[L"s"].AddKey(SectionKey(HashedString<wchar_t>(L"k"), L"a\nb=c\n[t]", L""));
    EXPECT_EQ((PlainFile{{L"s", {{L"k", L"a", L""}, {L"b", L"c", L""}}}, {L"t", {}}}),
              Opened(SavedBytes(file)).Content());
}
