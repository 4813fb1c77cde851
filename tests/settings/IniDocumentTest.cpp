// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/IniDocument.h"
#include "tests/support/IniFiles.h"
#include "tests/support/Random.h"
#include "tests/support/SettingsEdits.h"

#include <algorithm>
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

IniDocument Parsed(const std::string& content) {
    IniDocument document;
    IniFile::Fault fault;
    EXPECT_TRUE(document.Parse(content, fault)) << content;
    return document;
}

using Edit = std::function<void(IniDocument&)>;

Edit Set(const wchar_t* section, const wchar_t* key, const wchar_t* value) {
    return [=](IniDocument& document) { EXPECT_EQ(L"", document.Set(section, key, value).Text()); };
}
Edit SetComment(const wchar_t* section, const wchar_t* key, const wchar_t* comment) {
    return [=](IniDocument& document) { EXPECT_EQ(L"", document.SetComment(section, key, comment).Text()); };
}
Edit AddSection(const wchar_t* section) {
    return [=](IniDocument& document) { EXPECT_EQ(L"", document.AddSection(section).Text()); };
}
Edit Remove(const wchar_t* section) {
    return [=](IniDocument& document) { EXPECT_TRUE(document.Remove(section)); };
}
Edit Remove(const wchar_t* section, const wchar_t* key) {
    return [=](IniDocument& document) { EXPECT_TRUE(document.Remove(section, key)); };
}

struct Row {
    std::string before;
    Edit edit;
    std::string after;
};

void ExpectEdits(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.before);
        IniDocument document = Parsed(row.before);
        row.edit(document);
        EXPECT_EQ(row.after, document.Text());
    }
}

} // namespace

TEST(IniDocument, GivesBackWhatItParsed) {
    for (const std::string content :
         {"", "\n", "a", "[s]", "[s]\na=1", "x\r\n[s]\r\n\r\n;c\r\n a\t=\t1 ;d\r\n[t", "\xEF\xBB\xBF[s]\n"})
        EXPECT_EQ(content, Parsed(content).Text());
    EXPECT_EQ("", IniDocument().Text());
}

TEST(IniDocument_Parse, StopsWhereOpeningAFileStops) {
    for (const char* const content :
         {"[a]\nk=1\n", "[a]\n\n[b]\nk=1\n\n[A]\n", "x\n[a]\n[b]\n[c]\r\n[b];c\n[a]\n", "\n[a]\n  []\n[a]\n",
          "[]", "[a]\n[b\n]\n[[]\n x [a]\n\t[a]", "[a] [b]\n k=[a]\n[b]\n[A", "\r[a]\n\r \r[A] ["}) {
        SCOPED_TRACE(content);
        IniDocument document;
        IniFile::Fault fault;
        fault.line = 77;
        const bool isParsed = document.Parse(content, fault);
        const TemporaryFolder folder;
        WriteBytes(folder.File(L"a.ini"), content);
        IniFile file;
        IniFile::Fault expected;
        EXPECT_EQ(file.Open(folder.File(L"a.ini"), expected), isParsed);
        EXPECT_EQ(expected.kind, fault.kind);
        EXPECT_EQ(expected.line, fault.line);
        EXPECT_EQ(expected.firstLine, fault.firstLine);
        EXPECT_EQ(expected.section, fault.section);
        EXPECT_EQ(isParsed ? content : "", document.Text());
    }
}

TEST(IniDocument_Parse, LeavesTheBytesBeforeTheStartAlone) {
    IniDocument document;
    IniFile::Fault fault;
    ASSERT_TRUE(document.Parse("\xEF\xBB\xBF[a]\nk=1\n[b]\n", fault, 3));
    EXPECT_THAT(document.SectionNames(), ElementsAre(L"a", L"b"));
    EXPECT_TRUE(document.Set(L"a", L"k", L"2"));
    EXPECT_EQ("\xEF\xBB\xBF[a]\nk=2\n[b]\n", document.Text());
    EXPECT_EQ(2u, document.LineOf(L"a", L"k"));
    EXPECT_TRUE(document.Remove(L"a"));
    EXPECT_EQ("\xEF\xBB\xBF[b]\n", document.Text());
    ASSERT_TRUE(document.Parse("\xEF\xBB\xBF", fault, 3));
    EXPECT_TRUE(document.AddSection(L"a"));
    EXPECT_EQ("\xEF\xBB\xBF[a]\r\n", document.Text());
    EXPECT_FALSE(document.Parse("abc[]", fault, 3));
}

TEST(IniDocument, TellsWhatStandsInIt) {
    const IniDocument document = Parsed("x=1\n[Sea]\n\nDepth = 12 ;m\n;note\ndepth=13\n\n[Land]\n");
    EXPECT_THAT(document.SectionNames(), ElementsAre(L"Sea", L"Land"));
    EXPECT_TRUE(document.HasSection(L"SEA"));
    EXPECT_FALSE(document.HasSection(L"Air"));
    const Section sea = document.Read(L"sea");
    EXPECT_EQ(L"Sea", sea.GetName().String());
    ASSERT_EQ(3, sea.NumKeys());
    EXPECT_EQ(L"12", sea[0].GetValue());
    EXPECT_EQ(L"m", sea[0].GetComments());
    EXPECT_EQ(L"note", sea[1].GetComments());
    EXPECT_FALSE(document.Read(L"Air").IsValid());
    const std::vector<SectionKey> depths = document.Read(L"sea", L"DEPTH");
    ASSERT_EQ(2u, depths.size());
    EXPECT_EQ(L"12", depths[0].GetValue());
    EXPECT_EQ(L"m", depths[0].GetComments());
    EXPECT_EQ(L"depth", depths[1].GetName().String());
    EXPECT_THAT(document.Read(L"sea", L"Width"), IsEmpty());
    EXPECT_THAT(document.Read(L"Air", L"Depth"), IsEmpty());
}

TEST(IniDocument_LineOf, IsTheLineThatWasParsed) {
    IniDocument document = Parsed("x\n\n[a]\nk=1\nK=2\n\n[b]\nl=3");
    const auto expectLines = [&](std::uint32_t l, std::uint32_t b) {
        EXPECT_EQ(l, document.LineOf(L"b", L"l"));
        EXPECT_EQ(b, document.LineOf(L"b"));
        EXPECT_EQ(3u, document.LineOf(L"a"));
    };
    expectLines(8, 7);
    EXPECT_EQ(4u, document.LineOf(L"a", L"K"));
    EXPECT_EQ(0u, document.LineOf(L"a", L"l"));
    EXPECT_EQ(0u, document.LineOf(L"c"));
    EXPECT_EQ(0u, document.LineOf(L"c", L"k"));
    Set(L"a", L"new", L"1")(document);
    Set(L"c", L"new", L"1")(document);
    Set(L"b", L"l", L"4")(document);
    expectLines(8, 7);
    EXPECT_EQ(0u, document.LineOf(L"a", L"new"));
    EXPECT_EQ(0u, document.LineOf(L"c"));
    Remove(L"a", L"k")(document);
    EXPECT_EQ(5u, document.LineOf(L"a", L"k"));
}

TEST(IniDocument_Set, ChangesTheBytesOfAValueAlone) {
    ExpectEdits({
        {"[s]\nk=1\n", Set(L"s", L"k", L"22"), "[s]\nk=22\n"},
        {"[s]\r\n\t K \t=  1\t;c = d \r\n", Set(L"S", L"k", L"x y"), "[s]\r\n\t K \t=  x y\t;c = d \r\n"},
        {"[s]\nk = a=b", Set(L"s", L"k", L"=c"), "[s]\nk = =c"},
        {"[s]\nk=1\nk=1\n", Set(L"s", L"k", L"2"), "[s]\nk=2\nk=1\n"}, // the first counts
        {"[s]\nk = 1 \n", Set(L"s", L"k", L""), "[s]\nk =  \n"},
        {"[s]\nk = 1\n", Set(L"s", L"k", L"1"), "[s]\nk = 1\n"},
        {"[s]\nk = \xE9\n", Set(L"s", L"k", L"\xFF"), "[s]\nk = \xFF\n"},
        {"[s]\n#k = 1\n", Set(L"s", L"#k", L"2"), "[s]\n#k = 2\n"},
        {"[s]\nk=1\r\r\n", Set(L"s", L"k", L"2"), "[s]\nk=2\r\r\n"},
    });
}

TEST(IniDocument_Set, FillsAnEmptyValue) {
    ExpectEdits({
        {"[s]\nk =   ;c\n", Set(L"s", L"k", L"1"), "[s]\nk = 1  ;c\n"},
        {"[s]\nk =\n", Set(L"s", L"k", L"1"), "[s]\nk =1\n"}, // as it says itself
        {"[s]\na=2\nk=\n", Set(L"s", L"k", L"1"), "[s]\na=2\nk=1\n"},
        {"[s]\na =\t2\nk =\r\n", Set(L"s", L"k", L"1"), "[s]\na =\t2\nk =\t1\r\n"},
        {"[s]\nk=;c\n", Set(L"s", L"k", L"1"), "[s]\nk=1;c\n"},
        {"[s]\nk=", Set(L"s", L"k", L"1"), "[s]\nk=1"},
    });
}

TEST(IniDocument_Set, GivesALineWithoutEqualsSignOne) {
    ExpectEdits({
        {"[s]\nk\n", Set(L"s", L"k", L"1"), "[s]\nk = 1\n"},
        {"[s]\n  k  ;c=d\n", Set(L"s", L"k", L"1"), "[s]\n  k = 1  ;c=d\n"},
        {"[s]\nk\n", Set(L"s", L"k", L""), "[s]\nk\n"}, // its value is empty already
        {"[s]\na=1\nk", Set(L"s", L"k", L"1"), "[s]\na=1\nk=1"},
        {"[s]\na    = 1\nbcd  = 1\nkk\n", Set(L"s", L"kk", L"1"), "[s]\na    = 1\nbcd  = 1\nkk   = 1\n"},
    });
}

TEST(IniDocument_Set, PutsANewKeyBehindTheLastOne) {
    ExpectEdits({
        {"[s]\na=1\n\n[t]\n", Set(L"s", L"k", L"2"), "[s]\na=1\nk=2\n\n[t]\n"},
        {"[s]\na=1\n;x\n#y = 3\n\n \n", Set(L"s", L"k", L"2"), "[s]\na=1\nk=2\n;x\n#y = 3\n\n \n"},
        {"[s]\n;a\n#b\n\n#c\n", Set(L"s", L"k", L"2"), "[s]\n;a\n#b\nk = 2\n\n#c\n"},
        {"[s]\n\n;a\n", Set(L"s", L"k", L"2"), "[s]\nk = 2\n\n;a\n"},
        {"[s]\nflag\n", Set(L"s", L"k", L"2"), "[s]\nflag\nk = 2\n"},
        {"[s]\na=1\n[k]\n", Set(L"s", L"k", L""), "[s]\na=1\nk=\n[k]\n"},
    });
}

TEST(IniDocument_Set, GivesANewKeyTheSpacingOfItsNeighbours) {
    ExpectEdits({
        {"[s]\n\ta = 1\n", Set(L"s", L"kk", L"2"), "[s]\n\ta = 1\n\tkk = 2\n"},
        {"[s]\na\t\t= 1\nb2\t\t= 1\n", Set(L"s", L"k", L"2"), "[s]\na\t\t= 1\nb2\t\t= 1\nk\t\t= 2\n"},
        {"[s]\na  =1\nbcd  =1\n", Set(L"s", L"kk", L"2"), "[s]\na  =1\nbcd  =1\nkk  =2\n"},
        // in a column, with one blank where the name is too long for it
        {"[s]\na   = 1\nbcd = 1\n", Set(L"s", L"kk", L"2"), "[s]\na   = 1\nbcd = 1\nkk  = 2\n"},
        {"[s]\na   = 1\nbcd = 1\n", Set(L"s", L"long", L"2"), "[s]\na   = 1\nbcd = 1\nlong = 2\n"},
        {"[s]\nbcd = 1\na   = 1\nx   =\n", Set(L"s", L"kk", L"2"), "[s]\nbcd = 1\na   = 1\nx   =\nkk  = 2\n"},
        {"[s]\nbcd=1\na  =1\n", Set(L"s", L"kkk", L"2"), "[s]\nbcd=1\na  =1\nkkk=2\n"},
        {"[s]\n  a   = 1\n  bcd = 1\n", Set(L"s", L"kk", L"2"), "[s]\n  a   = 1\n  bcd = 1\n  kk  = 2\n"},
        {"[s]\na     = 1\n", Set(L"s", L"long", L"2"), "[s]\na     = 1\nlong  = 2\n"},
        {"[s]\nabc = 1\n", Set(L"s", L"k", L"2"), "[s]\nabc = 1\nk = 2\n"}, // by chance
        {"[s]\na   = 1\nlonger = 2\n", Set(L"s", L"kk", L"3"), "[s]\na   = 1\nlonger = 2\nkk  = 3\n"},
        {"[s]\na   = 1\nlonger = 2\nb   = 1\n", Set(L"s", L"kk", L"3"),
         "[s]\na   = 1\nlonger = 2\nb   = 1\nkk  = 3\n"},
        {"[s]\naa     = 1\n\nb   = 1\nccc = 1\n", Set(L"s", L"kk", L"3"),
         "[s]\naa     = 1\n\nb   = 1\nccc = 1\nkk  = 3\n"}, // of the nearest lines
        {"[s]\nk\na = 1\n[t]\n", Set(L"s", L"k", L"2"), "[s]\nk = 2\na = 1\n[t]\n"},
        // from another section where its own has none, but not its column
        {"[r]\na   = 1\nbcd = 1\n[s]\n", Set(L"s", L"k", L"2"), "[r]\na   = 1\nbcd = 1\n[s]\nk = 2\n"},
        {"[r]\na    = 1\nbcd  = 1\n[s]\n", Set(L"s", L"k", L"2"), "[r]\na    = 1\nbcd  = 1\n[s]\nk = 2\n"},
        {"[r]\na\t\t= 1\n[s]\n", Set(L"s", L"k", L"2"), "[r]\na\t\t= 1\n[s]\nk\t\t= 2\n"},
        {"[r]\na:=1\n[s]\n[t]\nb = 1\n", Set(L"s", L"k", L"2"), "[r]\na:=1\n[s]\nk=2\n[t]\nb = 1\n"},
        {"[r]\na:=1\n[s]\nl\nk\nb = 1\n", Set(L"s", L"l", L"2"), "[r]\na:=1\n[s]\nl = 2\nk\nb = 1\n"},
        {"[s]\n[t]\n\tb=1\n", Set(L"s", L"k", L"2"), "[s]\n\tk=2\n[t]\n\tb=1\n"},
        {"\ta= 1\n[s]\n", Set(L"s", L"k", L"2"), "\ta= 1\n[s]\n\tk= 2\n"},
        {"[s]\na\t =1\nbbb=1\n", Set(L"s", L"k", L"2"), "[s]\na\t =1\nbbb=1\nk=2\n"}, // a tab is no column
        {"#x=1\n[s]\n#y=1\n;z=1\n", Set(L"s", L"k", L"2"), "#x=1\n[s]\n#y=1\n;z=1\nk = 2\n"},
    });
}

TEST(IniDocument_Set, GivesANewLineTheLineEndBeforeIt) {
    ExpectEdits({
        {"[s]\r\na=1\n", Set(L"s", L"k", L"2"), "[s]\r\na=1\nk=2\n"},
        {"[s]\na=1\r\n", Set(L"s", L"k", L"2"), "[s]\na=1\r\nk=2\r\n"},
        {"[s]\na=1", Set(L"s", L"k", L"2"), "[s]\na=1\nk=2"}, // the last line still has none
        {"[s]\r\na=1", Set(L"s", L"k", L"2"), "[s]\r\na=1\r\nk=2"},
        {"\n[s]", Set(L"s", L"k", L"2"), "\n[s]\nk = 2"},
        {"[r]\n[s]", Set(L"s", L"k", L"2"), "[r]\n[s]\nk = 2"},
        {"[s]", Set(L"s", L"k", L"2"), "[s]\r\nk = 2"},
        {"", Set(L"s", L"k", L"2"), "[s]\r\nk = 2\r\n"},
    });
}

TEST(IniDocument_AddSection, SetsItOffByAnEmptyLine) {
    ExpectEdits({
        {"", AddSection(L"s"), "[s]\r\n"},
        {"[r]\na=1\n", AddSection(L"s"), "[r]\na=1\n\n[s]\n"},
        {"[r]\na=1\n", Set(L"s", L"kk", L"2"), "[r]\na=1\n\n[s]\nkk=2\n"},
        {"[r]\na=1\n \t\n", AddSection(L"s"), "[r]\na=1\n \t\n[s]\n"},
        {"[r]\na=1", AddSection(L"s"), "[r]\na=1\n\n[s]"},
        {"[r]\n ", AddSection(L"s"), "[r]\n \n[s]"},
        {"x", AddSection(L"s"), "x\r\n\r\n[s]"},
        {"\n", AddSection(L"s"), "\n[s]\n"},
        {"[S]\n", AddSection(L"s"), "[S]\n"},
    });
}

TEST(IniDocument_SetComment, ChangesTheBytesOfACommentAlone) {
    ExpectEdits({
        {"[s]\nk = 1 ;c\t\r\n", SetComment(L"s", L"k", L" d"), "[s]\nk = 1 ; d\t\r\n"},
        {"[s]\nk = 1 ;\n", SetComment(L"s", L"k", L"d"), "[s]\nk = 1 ;d\n"},
        {"[s]\nk = 1\t;c;d \n", SetComment(L"s", L"k", L""), "[s]\nk = 1 \n"},
        {"[s]\nk ;c\n", SetComment(L"s", L"k", L""), "[s]\nk\n"},
        {"[s]\nk = 1 \r\n", SetComment(L"s", L"k", L""), "[s]\nk = 1 \r\n"},
    });
}

TEST(IniDocument_SetComment, PutsANewOneInTheColumnOfItsNeighbours) {
    ExpectEdits({
        {"[s]\nk = 1", SetComment(L"s", L"k", L"c"), "[s]\nk = 1 ;c"},
        {"[s]\na=1    ;c\nb=22   ;c\nk=333\n", SetComment(L"s", L"k", L"d"),
         "[s]\na=1    ;c\nb=22   ;c\nk=333  ;d\n"},
        {"[s]\na=1    ;c\nk=333 \nb=22   ;c\n", SetComment(L"s", L"k", L"d"),
         "[s]\na=1    ;c\nk=333  ;d \nb=22   ;c\n"},
        {"[s]\na=1    ;c\nb=22   ;c\nk=55555\n", SetComment(L"s", L"k", L"d"),
         "[s]\na=1    ;c\nb=22   ;c\nk=55555 ;d\n"},
        {"[s]\na=1  ;c\nb=22   ;c\nk=333\n", SetComment(L"s", L"k", L"d"),
         "[s]\na=1  ;c\nb=22   ;c\nk=333 ;d\n"},
    });
}

TEST(IniDocument_Remove, TakesTheLineOfAKey) {
    ExpectEdits({
        {"[s]\n;x\nk=1\n\nk=2\n", Remove(L"s", L"K"), "[s]\n;x\n\nk=2\n"},
        {"[s]\r\na=1\r\nk=1", Remove(L"s", L"k"), "[s]\r\na=1\r\n"},
    });
    IniDocument document = Parsed("[s]\nk=1\n;c\n");
    EXPECT_FALSE(document.Remove(L"s", L"l"));
    EXPECT_FALSE(document.Remove(L"t", L"k"));
    EXPECT_FALSE(document.Remove(L"s", L"")); // a comment is no key
    EXPECT_FALSE(document.Remove(L"t"));
    EXPECT_EQ("[s]\nk=1\n;c\n", document.Text());
}

TEST(IniDocument_Remove, TakesAllLinesOfASection) {
    ExpectEdits({
        {"x\n[r]\na=1\n\n[s]\nb=1\n\n[t]\n", Remove(L"S"), "x\n[r]\na=1\n\n[t]\n"},
        {"[r]\na=1\n\n[s]\nb=1\n;c\n", Remove(L"s"), "[r]\na=1\n\n"},
        {"x\n[s]\nb=1", Remove(L"s"), "x\n"},
        {"[s]\nb=1\n;c\n[t]\n", Remove(L"s"), "[t]\n"},
        {"[s]\n;c\n\n[t]\n", Remove(L"s"), "[t]\n"},
    });
}

TEST(IniDocument_Remove, LeavesTheCommentAboveTheNextSection) {
    ExpectEdits({
        {"[r]\n\n[s]\nb=1\n\n;t\n# is\n[t]\n", Remove(L"s"), "[r]\n\n;t\n# is\n[t]\n"},
        {"[r]\n[s]\nb=1\n\n;t\n[t]\n", Remove(L"s"), "[r]\n\n;t\n[t]\n"},
        {"[s]\nb=1\n\n;t\n[t]\n", Remove(L"s"), ";t\n[t]\n"},
        {"[s]\n\n\n;t\n[t]\n", Remove(L"s"), ";t\n[t]\n"},
        {"x\n[s]\n;u\n\n;t\n[t]\n", Remove(L"s"), "x\n\n;t\n[t]\n"},
        {"[s]\nb=1\n\n;t\n\n[t]\n", Remove(L"s"), "[t]\n"}, // not directly above
    });
}

TEST(IniDocument_Remove, LeavesACommentWhereReadersFindIt) {
    IniDocument document = Parsed("[r]\n[s]\n\n#k = 1\n[t]\n");
    Remove(L"s")(document);
    Set(L"r", L"#K", L"2")(document);
    EXPECT_EQ("[r]\n\n#k = 2\n[t]\n", document.Text());
}

TEST(IniDocument_Remove, BreaksNoSealByACommentThatIsAKeyToReaders) {
    IniDocument document = Parsed("[r]\na=1\n\n[s]\nb=1\n\n# t\n[t]\nc=1\n\n;u\n[u]\n");
    ASSERT_TRUE(document.Seal(L"r"));
    Remove(L"s")(document);
    EXPECT_FALSE(document.Read(L"r").IsModified());
    Remove(L"t")(document);
    EXPECT_FALSE(document.Read(L"r").IsModified());
    EXPECT_EQ("[r]\na=1\n$CHECKSUM$=355801662\n\n;u\n[u]\n", document.Text());
}

TEST(IniDocument_Rename, ChangesTheBytesOfANameAlone) {
    const auto rename = [](const wchar_t* from, const wchar_t* to) -> Edit {
        return [=](IniDocument& document) { EXPECT_EQ(L"", document.Rename(from, to).Text()); };
    };
    const auto renameKey = [](const wchar_t* from, const wchar_t* to) -> Edit {
        return [=](IniDocument& document) { EXPECT_EQ(L"", document.Rename(L"s", from, to).Text()); };
    };
    ExpectEdits({
        {"[r]\n  [s] ;[s]\r\n\n[t", rename(L"S", L" u "), "[r]\n  [ u ] ;[s]\r\n\n[t"},
        {"[s]\n\ta  = 1;c\n", renameKey(L"A", L"long"), "[s]\n\tlong  = 1;c\n"},
        {"[s]\na\na=1\n", renameKey(L"a", L"b"), "[s]\nb\na=1\n"},
    });
    IniDocument document = Parsed("[s]\na=1\n[t]\n");
    rename(L"s", L"u")(document);
    Set(L"U", L"a", L"2")(document);
    EXPECT_EQ("[u]\na=2\n[t]\n", document.Text());
}

TEST(IniDocument_Rename, MakesARemarkAKeyThatNewOnesGoBehind) {
    IniDocument document = Parsed("[s]\na=1\n#b=2\n");
    Set(L"s", L"c", L"3")(document);
    EXPECT_TRUE(document.Rename(L"s", L"#b", L"b"));
    Set(L"s", L"d", L"4")(document);
    EXPECT_EQ("[s]\na=1\nc=3\nb=2\nd=4\n", document.Text());
}

TEST(IniDocument, RefusesWhatALineCannotCarryAndChangesNothing) {
    const std::string content = "[s]\nk = 1 ;c]\n[x = 1\n[t]\n";
    IniDocument document = Parsed(content);
    const ErrorString errors[] = {
        document.Set(L"s", L"k", L"a;b"),
        document.Set(L"s", L"k", L"\x3A9"),
        document.Set(L"s", L"", L"1"),
        document.Set(L"s", L"", L""),
        document.Set(L"s", L"a=b", L"1"),
        document.Set(L"s", L"[x", L"]"),
        document.Set(L"new]", L"k", L"1"),
        document.Set(L"new", L"k", L"1\n2"), // nor is the section added
        document.Set(L"", L"k", L"1"),
        document.SetComment(L"s", L"k", L"a\nb"),
        document.SetComment(L"s", L"[x", L"]"),
        document.SetComment(L"s", L"l", L"c"),
        document.SetComment(L"r", L"k", L"c"),
        document.AddSection(L""),
        document.Rename(L"s", L"T"),
        document.Rename(L"s", L"S"),
        document.Rename(L"s", L"]"),
        document.Rename(L"r", L"u"),
        document.Rename(L"s", L"k", L"[k"),
        document.Rename(L"s", L"k", L"[X"),
        document.Rename(L"s", L"k", L"K"),
        document.Rename(L"s", L"k", L""),
        document.Rename(L"s", L"k", L"l;"),
        document.Rename(L"s", L"l", L"m"),
        document.Rename(L"r", L"k", L"m"),
    };
    for (const ErrorString& error : errors) {
        EXPECT_FALSE(error) << &error - errors;
        EXPECT_NE(L"", error.Text()) << &error - errors;
    }
    EXPECT_FALSE(document.Seal(L"r"));
    EXPECT_EQ(content, document.Text());
    EXPECT_THAT(document.Changes(), IsEmpty());
}

TEST(IniDocument_Seal, StoresTheChecksumAsTheSectionDoes) {
    for (const std::string content :
         {"[s]\na=1\nb = 2 ;c\n;d\n#e\n", "[s]\n$Checksum$ = 12 ;seal\na=1\n", "[s]\n", "[s]\n=1\n"}) {
        IniDocument document = Parsed(content);
        ASSERT_TRUE(document.Seal(L"S"));
        const Opened opened(document.Text());
        EXPECT_FALSE(opened.file[L"s"].IsModified()) << document.Text();
        IniDocument again = Parsed(document.Text());
        ASSERT_TRUE(again.Seal(L"s"));
        EXPECT_EQ(document.Text(), again.Text());
    }
    IniDocument document = Parsed("[s]\n$Checksum$ = 12 ;seal\na=1\n");
    ASSERT_TRUE(document.Seal(L"s"));
    EXPECT_EQ("[s]\n$Checksum$ = 355801662 ;seal\na=1\n", document.Text());
}

TEST(IniDocument_Changes, NamesTheLinesThatWereChanged) {
    struct ChangeRow {
        std::string before;
        std::vector<Edit> edits;
        std::string changes; // "line:-removed+added"
    };
    const auto rename = [](const wchar_t* to) -> Edit {
        return [=](IniDocument& document) { EXPECT_TRUE(document.Rename(L"s", to)); };
    };
    for (const ChangeRow& row : std::vector<ChangeRow>{
             {"[s]\na=1\n", {}, ""},
             {"[s]\na=1\n", {Set(L"s", L"a", L"1")}, ""},
             {"[s]\na=1\r\n", {Set(L"s", L"a", L"2")}, "2:-a=1+a=2"},
             {"[s]\na=1\n", {Set(L"s", L"a", L"2"), Set(L"s", L"a", L"1")}, ""},
             {"[s]\na=1\n\n[t]\n", {Set(L"s", L"b", L"2")}, "3:+b=2"},
             {"[s]\na=1", {Set(L"s", L"b", L"2")}, "3:+b=2"},
             {"[s]\na=1\nb=2\nc=3\n",
              {Set(L"s", L"a", L"x"), Set(L"s", L"c", L"x")},
              "2:-a=1+a=x 4:-c=3+c=x"},
             {"[s]\na=1\nb=2\n", {Set(L"s", L"a", L"x"), Remove(L"s", L"b")}, "2:-a=1-b=2+a=x"},
             {"[s]\na=1\nb=2\n",
              {Remove(L"s", L"a"), Set(L"s", L"b", L"x"), Set(L"s", L"a", L"1")},
              "2:-a=1-b=2+b=x+a=1"},
             {"[s]\na=1\nb=2\n", {Remove(L"s", L"b"), Set(L"s", L"b", L"2")}, ""},
             {"x\n[s]\na=1\n\n[t]\nc=3\n", {Remove(L"s"), Set(L"t", L"c", L"4")}, "2:-[s]-a=1- 6:-c=3+c=4"},
             {"[s]\na=1\n", {AddSection(L"t")}, "3:++[t]"},
             {"", {Set(L"t", L"a", L"1")}, "1:+[t]+a = 1"},
             {"[s]\na=1", {Remove(L"s")}, "1:-[s]-a=1"},
             {"[s]\n\n;c\n[t]\n", {Remove(L"s"), Remove(L"t")}, "1:-[s]- 4:-[t]"},
             {"[s]\na=1\n[t]\n", {rename(L"u")}, "1:-[s]+[u]"},
         }) {
        SCOPED_TRACE(row.before);
        IniDocument document = Parsed(row.before);
        for (const Edit& edit : row.edits) edit(document);
        std::string changes;
        for (const IniDocument::Change& change : document.Changes()) {
            changes += (changes.empty() ? "" : " ") + std::to_string(change.line) + ":";
            for (const std::string& line : change.before) changes += "-" + line;
            for (const std::string& line : change.after) changes += "+" + line;
        }
        EXPECT_EQ(row.changes, changes);
        EXPECT_TRUE(ChangesExplain(document.Changes(), row.before, document.Text()));
    }
}

TEST(IniDocument_Update, ReplacesTheFileByTheEditedText) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    IniFile::Fault fault;
    const auto update = [&](bool expectsFile, bool keeps) {
        return IniDocument::Update(
            path,
            [&](IniDocument& document, bool exists) {
                EXPECT_EQ(expectsFile, exists);
                EXPECT_TRUE(document.Set(L"s", L"a", L"2"));
                return keeps;
            },
            fault);
    };
    EXPECT_FALSE(update(false, false));
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "a.ini"));
    EXPECT_FALSE(update(false, true));
    EXPECT_EQ("[s]\r\na = 2\r\n", ReadBytes(path));
    WriteBytes(path, "[s]\na=1");
    EXPECT_FALSE(update(true, false));
    EXPECT_EQ("[s]\na=1", ReadBytes(path));
    EXPECT_FALSE(update(true, true));
    EXPECT_EQ("[s]\na=2", ReadBytes(path));
    EXPECT_EQ(IniFile::Fault::NONE, fault.kind);
}

TEST(IniDocument_Update, LeavesAFileThatCannotBeOpenedAlone) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    WriteBytes(path, "[s]\n[S]\n");
    IniFile::Fault fault;
    const auto never = [](IniDocument&, bool) {
        ADD_FAILURE();
        return true;
    };
    EXPECT_EQ(std::errc::bad_message, IniDocument::Update(path, never, fault));
    EXPECT_EQ(IniFile::Fault::DUPLICATE_SECTION, fault.kind);
    EXPECT_EQ(2u, fault.line);
    EXPECT_EQ("[s]\n[S]\n", ReadBytes(path));
    EXPECT_EQ(std::errc::is_a_directory, IniDocument::Update(WidePath(folder.Path()), never, fault));
    EXPECT_EQ(IniFile::Fault::NONE, fault.kind);
}

// Random files of every odd shape, and random edits of them.

namespace {

std::string RandomFile(Random& random) {
    const std::string usualEnd = random.OneOf<std::string>({"\n", "\r\n"});
    const bool isMixed = random.OnceIn(4);
    const auto blanks = [&] { return random.OneOf<std::string>({"", "", " ", "  ", "\t", "\r "}); };
    const auto key = [&] {
        std::string line = blanks() + random.OneOf<std::string>({"a", "A", "bb", "ccc", "#a", "", "[a",
                                                                 "\xE9", "$CHECKSUM$", "de f"});
        if (!random.OnceIn(5)) {
            line.resize(std::max(line.size(), random.OnceIn(2) ? std::size_t{4} : 0), ' ');
            line += blanks() + "=" + blanks() + random.OneOf<std::string>({"", "1", "x y", "=", "]", "v"});
        }
        if (random.OnceIn(4)) line += blanks() + ";" + blanks() + random.OneOf<std::string>({"", "c", ";=d"});
        return line + blanks();
    };
    std::string content = random.OnceIn(8) ? "\xEF\xBB\xBF" : "";
    std::vector<std::string> names = {"s", "T", " u ", "[", "\xE9"};
    std::shuffle(names.begin(), names.end(), random);
    for (unsigned i = random.Below(24); i > 0; --i) {
        switch (random.Below(10)) {
        case 0:
        case 1:
            if (names.empty()) break;
            content +=
                blanks() + "[" + names.back() + "]" + blanks() + random.OneOf<std::string>({"", "x", ";c"});
            names.pop_back();
            break;
        case 2:
            content += blanks();
            break;
        case 3:
            content += random.OneOf<std::string>({";remark", "# remark", "#k = 1", " ;[x]"});
            break;
        case 4:
            content += random.Text("ab[;#= \t\r\0\x1A", 8);
            break;
        default:
            content += key();
        }
        content += isMixed ? random.OneOf<std::string>({"\n", "\r\n", "\r\r\n"}) : usualEnd;
    }
    if (random.OnceIn(2)) content.resize(content.find_last_not_of("\r\n") + 1);
    return content;
}

SettingsEdit RandomEdit(Random& random) {
    const auto section = [&] {
        return random.OneOf<std::wstring>({L"s", L"t", L" u ", L"[", L"\xE9", L"new", L""});
    };
    const auto key = [&] {
        return random.OneOf<std::wstring>({L"a", L"A", L"BB", L"ccc", L"#a", L"", L"[a", L"\xE9",
                                           L"$checksum$", L"de f", L"new", L"longer"});
    };
    const auto kind = static_cast<SettingsEdit::Kind>(random.Below(SettingsEdit::NUM_KINDS));
    SettingsEdit edit{random.OnceIn(2) ? SettingsEdit::SET : kind, section(), key(), {}};
    if (edit.kind == SettingsEdit::RENAME_SECTION)
        edit.text = section();
    else if (edit.kind == SettingsEdit::RENAME_KEY)
        edit.text = key();
    else
        edit.text = random.OneOf<std::wstring>(
            {L"", L"1", L"x y", L"=", L";", L"]", L" 1", L"a longer text", L"\n", L"\x100", L";=d"});
    return edit;
}

// How many lines a shortest edit script from `a` to `b` removes and adds.
std::size_t LineDistance(const std::vector<std::string_view>& a, const std::vector<std::string_view>& b) {
    std::vector<std::size_t> common(b.size() + 1); // lengths of common subsequences
    for (const std::string_view line : a) {
        std::size_t diagonal = 0;
        for (std::size_t i = 0; i < b.size(); ++i) {
            const std::size_t above = common[i + 1];
            common[i + 1] = WithoutEnd(line) == WithoutEnd(b[i]) ? diagonal + 1 : std::max(above, common[i]);
            diagonal = above;
        }
    }
    return a.size() + b.size() - 2 * common.back();
}

} // namespace

TEST(IniDocument, EditsOfRandomFilesSayWhatTheyShouldAndTouchNothingElse) {
    Random random(15);
    const auto opened = [](const std::string& content) {
        IniFile file;
        IniFile::Fault fault;
        EXPECT_EQ(L"", file.ReadText(content, fault).Text());
        return file;
    };
    int numDone = 0;
    for (int run = 0; run < 10000 && !::testing::Test::HasFailure(); ++run) {
        const std::string content = RandomFile(random);
        const std::size_t start = content.starts_with('\xEF') && random.OnceIn(2) ? 3 : 0;
        IniDocument document;
        IniFile::Fault fault;
        if (!document.Parse(content, fault, start)) continue;
        IniFile model = opened(content.substr(start));
        bool remarksCount = true;
        for (unsigned i = random.Below(12); i > 0; --i) {
            const SettingsEdit edit = RandomEdit(random);
            if (edit.IsOfRemark() && edit.kind >= SettingsEdit::REMOVE_KEY) continue;
            const std::string before = document.Text();
            const std::string trace = ::testing::PrintToString(before) + " kind " +
                                      std::to_string(edit.kind) + " [" + ToUtf8(edit.section) + "] " +
                                      ToUtf8(edit.key) + " -> " + ToUtf8(edit.text);
            SCOPED_TRACE(trace);
            const bool isDone = edit.Apply(document);
            const std::string after = document.Text();
            IniDocument alone; // knows nothing of the edits before
            ASSERT_TRUE(alone.Parse(before, fault, start));
            EXPECT_EQ(isDone, edit.Apply(alone));
            EXPECT_EQ(after, alone.Text());
            if (!isDone) {
                EXPECT_EQ(before, after);
                continue;
            }
            ++numDone;
            EXPECT_TRUE(edit.Apply(model) || edit.IsOfRemark());
            remarksCount = remarksCount && edit.kind != SettingsEdit::REMOVE_SECTION;
            EXPECT_TRUE(SaysTheSame(opened(after.substr(start)), model, remarksCount)) << after;

            std::size_t numRemoved = 0;
            std::size_t numAdded = 0;
            const std::string_view oldLines = std::string_view(before).substr(start);
            const std::string_view newLines = std::string_view(after).substr(start);
            for (const IniDocument::Change& change : alone.Changes()) {
                numRemoved += change.before.size();
                numAdded += change.after.size();
            }
            EXPECT_TRUE(edit.MayChange(numRemoved, numAdded)) << after;
            EXPECT_EQ(LineDistance(LinesWithEnds(oldLines), LinesWithEnds(newLines)), numRemoved + numAdded);
            EXPECT_TRUE(ChangesExplain(alone.Changes(), oldLines, newLines)) << after;
            EXPECT_TRUE(ChangesExplain(document.Changes(), std::string_view(content).substr(start), newLines))
                << ::testing::PrintToString(content) << " became " << ::testing::PrintToString(after);
            if (::testing::Test::HasFailure()) return;
        }
    }
    EXPECT_GT(numDone, 10000);
}
