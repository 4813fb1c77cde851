// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/IniFile.h"

#include "tests/support/IniFiles.h"
#include "tests/support/Random.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Keys = std::vector<PlainKey>;

std::vector<std::wstring> SectionNames(const IniFile& file) {
    std::vector<std::wstring> names;
    for (int i = 0; i < file.NumSections(); ++i) names.push_back(file[i].GetName().String());
    return names;
}

Section Made(const std::wstring& name, const Keys& keys, const std::wstring& comments = L"") {
    Section section(name);
    section.SetComments(comments);
    for (const PlainKey& key : keys)
        section.AddKey(SectionKey(HashedString<wchar_t>(key.name), key.value, key.comments));
    return section;
}

IniFile FileOf(const std::vector<Section>& sections) {
    IniFile file;
    for (const Section& section : sections) file.AddSection(section);
    return file;
}

/// The keys that the lines of a section "s" give.
Keys KeysOf(std::string_view lines) {
    const Opened opened("[s]\n" + std::string(lines));
    EXPECT_TRUE(opened.result) << ToUtf8(opened.result.Text());
    const PlainFile content = opened.Content();
    EXPECT_EQ(1u, content.size());
    return content.empty() ? Keys() : content[0].keys;
}

/// The section names that a line gives, or "<error>".
std::vector<std::wstring> HeadersOf(std::string_view lines) {
    const Opened opened(lines);
    if (!opened.result) return {L"<error> " + opened.result.Text()};
    return SectionNames(opened.file);
}

} // namespace

// Reading

TEST(IniFile_Open, SplitsKeyLines) {
    struct Row {
        std::string_view line;
        PlainKey key;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"Key = value", {L"Key", L"value", L""}},
             {"Key=value", {L"Key", L"value", L""}},
             {" \t Key\t = \t value \t", {L"Key", L"value", L""}},
             {"Key = a;b=c", {L"Key", L"a", L"b=c"}},
             {"Key", {L"Key", L"", L""}},
             {"Key=", {L"Key", L"", L""}},
             {"Key ;comment", {L"Key", L"", L"comment"}},
             {" ;note", {L"", L"", L"note"}},
             {"; note ", {L"", L"", L" note"}}, // the line's end was trimmed, nothing else
             {"k = v ; note ; more = x ", {L"k", L"v", L" note ; more = x"}},
             {"k = v ;\tnote\r", {L"k", L"v", L"\tnote"}},
             {"=", {L"", L"", L""}},
             {"=v", {L"", L"v", L""}},
             {" = v;c", {L"", L"v", L"c"}},
             {"k==v", {L"k", L"=v", L""}},
             {"k = = v", {L"k", L"= v", L""}},
             {"k=a=b", {L"k", L"a=b", L""}},
             {";", {L"", L"", L""}},
             {";;", {L"", L"", L";"}},
             {"k=;", {L"k", L"", L""}},
             {"k;", {L"k", L"", L""}},
             {"k=v;;", {L"k", L"v", L";"}},
             {"a b\tc = d e\tf", {L"a b\tc", L"d e\tf", L""}},
             {"[", {L"[", L"", L""}},
             {"[a", {L"[a", L"", L""}},
             {"[a = b", {L"[a", L"b", L""}},
             {"a[b] = c", {L"a[b]", L"c", L""}},
             {"] = c", {L"]", L"c", L""}},
             {"a = [b]", {L"a", L"[b]", L""}},
             {"# a = b", {L"# a", L"b", L""}},                // ";" alone begins a comment
             {"\"a\" = \"b;c\"", {L"\"a\"", L"\"b", L"c\""}}, // quotes protect nothing
             {"a\rb = c", {L"a\rb", L"c", L""}},              // only LF ends a line
             {"\v\f = \v", {L"\v\f", L"\v", L""}},            // not among the blanks
             {"\xA0k = v\xA0", {L"\u00A0k", L"v\u00A0", L""}},
         }) {
        for (const char* end : {"\n", "\r\n", "", " \t\r\r\n", "\n\n\n"})
            EXPECT_THAT(KeysOf(std::string(row.line) + end), ElementsAre(row.key)) << row.line;
    }
}

TEST(IniFile_Open, RecognisesHeaders) {
    EXPECT_THAT(HeadersOf("[a]"), ElementsAre(L"a"));
    EXPECT_THAT(HeadersOf(" \t[a]\r\n"), ElementsAre(L"a"));
    EXPECT_THAT(HeadersOf("[ A ]\n"), ElementsAre(L" A "));
    EXPECT_THAT(HeadersOf("[ ]\n"), ElementsAre(L" "));
    EXPECT_THAT(HeadersOf("[\t]\n"), ElementsAre(L"\t"));
    EXPECT_THAT(HeadersOf("[a]b]c\n"), ElementsAre(L"a"));
    EXPECT_THAT(HeadersOf("[[a]]\n"), ElementsAre(L"[a"));
    EXPECT_THAT(HeadersOf("[a] ;comment\n"), ElementsAre(L"a"));
    EXPECT_THAT(HeadersOf("[a]key=value\n"), ElementsAre(L"a"));
    EXPECT_THAT(HeadersOf("[a;b]\n"), ElementsAre(L"a;b"));
    EXPECT_THAT(HeadersOf("[a;]\n"), ElementsAre(L"a;"));
    EXPECT_THAT(HeadersOf("[a=b]\n"), ElementsAre(L"a=b"));
    EXPECT_THAT(HeadersOf("[a\n]\n"), IsEmpty());
    EXPECT_THAT(HeadersOf("x[a]\n"), IsEmpty());
    EXPECT_THAT(HeadersOf("a]\n"), IsEmpty());
    EXPECT_THAT(HeadersOf("[a]\n[b]\n[c]"), ElementsAre(L"a", L"b", L"c"));
    EXPECT_EQ(0, Opened("[a]key=value\n").file[0].NumKeys());
}

TEST(IniFile_Open, DoesNotReadTheCommentOfAHeader) {
    EXPECT_EQ(L"", Opened("[a] ;comment\n").file[0].GetComments());
}

TEST(IniFile_Open, IgnoresLinesBeforeTheFirstHeader) {
    const Opened opened("x = 1\n;comment\n[broken\n\n[s]\na = 1\n");
    EXPECT_TRUE(opened.result);
    EXPECT_EQ((PlainFile{{L"s", {{L"a", L"1", L""}}}}), opened.Content());
    EXPECT_TRUE(Opened("x = 1\ny = 2\n").result);
    EXPECT_TRUE(Opened("x = 1\ny = 2\n").file.Empty());
}

TEST(IniFile_Open, SkipsBlankLinesAndKeepsCommentLinesInPlace) {
    EXPECT_THAT(KeysOf("a=1\n\n \t\r\n;one\nb=2\n;two\n\n;three"),
                ElementsAre(PlainKey{L"a", L"1", L""}, PlainKey{L"", L"", L"one"}, PlainKey{L"b", L"2", L""},
                            PlainKey{L"", L"", L"two"}, PlainKey{L"", L"", L"three"}));
}

TEST(IniFile_Open, KeepsKeysOfOneName) {
    EXPECT_THAT(KeysOf("a=1\nA=2\na=3\n"),
                ElementsAre(PlainKey{L"a", L"1", L""}, PlainKey{L"A", L"2", L""}, PlainKey{L"a", L"3", L""}));
}

TEST(IniFile_Open, TakesEveryByteAsTheCharacterOfItsCode) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto character = static_cast<wchar_t>(byte);
        const std::string b(1, static_cast<char>(byte));
        if (b == "\n") continue;
        std::string line = "k" + b + "k = v" + b + "v ;c" + b + "c";
        std::wstring name = std::wstring(L"k") + character + L"k",
                     value = std::wstring(L"v") + character + L"v";
        std::wstring comment = std::wstring(L"c") + character + L"c";
        PlainKey expected{name, value, comment};
        if (b == ";") expected = {L"k", L"", L"k = v;v ;c;c"};
        if (b == "=") expected = {L"k", L"k = v=v", comment};
        EXPECT_THAT(KeysOf(line), ElementsAre(expected)) << byte;
        if (b == "]") continue;
        EXPECT_THAT(HeadersOf("[x" + b + "y]"), ElementsAre(std::wstring(L"x") + character + L"y")) << byte;
    }
}

TEST(IniFile_Open, AnEmptyPathIsAnErrorWithoutAText) {
    IniFile file;
    file[L"s"][L"a"] << 1;
    const ErrorString result = file.Open(std::wstring());
    EXPECT_FALSE(result);
    EXPECT_EQ(L"", result.Text());
    EXPECT_TRUE(file.Empty()); // the sections go before the file is looked for
    EXPECT_FALSE(file.Open(FileName()));
}

TEST(IniFile_Open, AMissingFileIsNamed) {
    const TemporaryFolder folder;
    IniFile file;
    file[L"s"][L"a"] << 1;
    const std::wstring path = folder.File(L"missing \u03A9.ini");
    const ErrorString result = file.Open(path);
    EXPECT_FALSE(result);
    EXPECT_EQ(L"Error opening \"" + path + L"\" for reading!", result.Text());
    EXPECT_TRUE(file.Empty());
    EXPECT_EQ(result.Text(), file.Open(FileName(path)).Text());
    EXPECT_EQ(0u, folder.NumFiles());
}

TEST(IniFile_Open, ADuplicateSectionIsNamedAsItStandsThere) {
    const Opened opened("[Depth]\na=1\n[Other]\nb=2\n[DEPTH]\nc=3\n[Last]\nd=4\n");
    EXPECT_FALSE(opened.result);
    EXPECT_EQ(L"Error! Duplicate sectionDEPTH found!", opened.result.Text());
    EXPECT_EQ((PlainFile{{L"Depth", {{L"a", L"1", L""}}}, {L"Other", {{L"b", L"2", L""}}}}),
              opened.Content());
    EXPECT_EQ(L"Error! Duplicate section gr\u00FC found!",
              Opened("[ GR\xDC]\n[ gr\xFC]\n").result.Text()); // Latin-1 letters have their case too
    EXPECT_TRUE(Opened("[\xFF]\n[\xDF]\n[\xB5]\n[\xD7]\n[\xF7]\n").result);
    EXPECT_TRUE(Opened("[a]\n[a ]\n[ a]\n").result);
}

TEST(IniFile_Open, ABadHeaderIsNamedByItsLine) {
    struct Row {
        std::string_view bytes;
        const wchar_t* line;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"[]", L"1"},
             {"[]\n", L"1"},
             {"  []  \n", L"1"},
             {"[]a]\n", L"1"},
             {"[];x\n", L"1"},
             {"\n\n[]\n", L"3"},
             {"\r\n \t\r\nx\r\n[]\r\n", L"4"},
             {"[s]\na=1\n\n;c\n\r\n[]\n[t]\n", L"6"},
             {"\r\r\r[]\n[]", L"1"}, // a CR alone ends no line
         }) {
        const Opened opened(row.bytes);
        EXPECT_FALSE(opened.result);
        EXPECT_EQ(std::wstring(L"Invalid section definition on line ") + row.line, opened.result.Text())
            << row.bytes;
    }
}

TEST(IniFile_Open, KeepsTheSectionsBeforeABadHeader) {
    const Opened opened("[a]\nx=1\n[b]\ny=2\nz=3\n[]\nlost=1\n[c]\n");
    EXPECT_FALSE(opened.result);
    EXPECT_EQ((PlainFile{{L"a", {{L"x", L"1", L""}}}, {L"b", {{L"y", L"2", L""}, {L"z", L"3", L""}}}}),
              opened.Content());
}

TEST(IniFile_Open, ReplacesTheSectionsThatWereThere) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"a.ini"), "[new]\n");
    IniFile file;
    file[L"old"][L"a"] << 1;
    EXPECT_TRUE(file.Open(folder.File(L"a.ini")));
    EXPECT_THAT(SectionNames(file), ElementsAre(L"new"));
    EXPECT_TRUE(file.Open(FileName(folder.File(L"a.ini"))));
    EXPECT_THAT(SectionNames(file), ElementsAre(L"new"));
    EXPECT_FALSE(file.HasSection(L"old"));
}

TEST(IniFile_Open, TheConstructorOpens) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"a.ini"), "[a]\n[b]\n[]\n");
    EXPECT_THAT(SectionNames(IniFile(folder.File(L"a.ini"))), ElementsAre(L"a", L"b"));
    EXPECT_TRUE(IniFile(folder.File(L"missing.ini")).Empty());
    EXPECT_TRUE(IniFile(std::wstring()).Empty());
}

TEST(IniFile_Open, LeavesTheFileAlone) {
    const TemporaryFolder folder;
    const std::string bytes = "x\n[a]\nb=1";
    WriteBytes(folder.File(L"a.ini"), bytes);
    const IniFile file(folder.File(L"a.ini"));
    EXPECT_EQ(bytes, ReadBytes(folder.File(L"a.ini")));
    EXPECT_EQ(1u, folder.NumFiles());
}

namespace {

/// The reader once more, as plainly as the rules can be written. Null where it would report an error.
PlainFile ReadPlainly(const std::string& bytes, std::wstring& error) {
    const auto trimmed = [](std::wstring text) {
        const auto first = text.find_first_not_of(L" \t\n\r");
        if (first == std::wstring::npos) return std::wstring();
        return text.substr(first, text.find_last_not_of(L" \t\n\r") - first + 1);
    };
    PlainFile file;
    std::wstring text;
    for (const char c : bytes) text += static_cast<wchar_t>(static_cast<unsigned char>(c));
    std::wistringstream stream(text);
    std::wstring line;
    for (int number = 1; std::getline(stream, line); ++number) {
        line = trimmed(line);
        const auto close = line.find(L']');
        if (!line.empty() && line[0] == L'[' && close != std::wstring::npos) {
            const std::wstring name = line.substr(1, close - 1);
            if (name.empty()) {
                error = L"Invalid section definition on line " + std::to_wstring(number);
                return file;
            }
            for (const PlainSection& section : file)
                if (icompareW(section.name, name)) {
                    error = L"Error! Duplicate section" + name + L" found!";
                    return file;
                }
            file.push_back({name, {}});
        } else if (!file.empty() && !line.empty()) {
            PlainKey key;
            if (const auto semicolon = line.find(L';'); semicolon != std::wstring::npos) {
                key.comments = line.substr(semicolon + 1);
                line.resize(semicolon);
            }
            const auto equals = line.find(L'=');
            key.name = trimmed(line.substr(0, equals));
            if (equals != std::wstring::npos) key.value = trimmed(line.substr(equals + 1));
            file.back().keys.push_back(key);
        }
    }
    return file;
}

/// The writer once more, with the formatting of a stream.
std::string WritePlainly(const IniFile& file) {
    std::wostringstream stream;
    stream << std::left;
    for (int s = 0; s < file.NumSections(); ++s) {
        const Section& section = file[s];
        stream << L"[" << section.GetName().String() << L"]";
        if (!section.GetComments().empty()) stream << L" ;" << section.GetComments();
        stream << L"\n";
        std::size_t names = 0, values = 0;
        for (int k = 0; k < section.NumKeys(); ++k) {
            names = std::max(names, section[k].GetName().String().size());
            values = std::max(values, section[k].GetValue().size());
        }
        for (int k = 0; k < section.NumKeys(); ++k) {
            const SectionKey& key = section[k];
            if (key.IsValid()) {
                stream << std::setw(static_cast<int>(names) + 1) << key.GetName().String() << L"= ";
                if (key.GetComments().empty())
                    stream << key.GetValue();
                else
                    stream << std::setw(static_cast<int>(values) + 1) << key.GetValue();
            }
            if (!key.GetComments().empty()) stream << L";" << key.GetComments();
            stream << L"\n";
        }
        stream << L"\n";
    }
    std::string bytes;
    for (const wchar_t c : stream.str()) { // as a stream in text mode ends lines
        if (c == L'\n') bytes += '\r';
        bytes += static_cast<char>(c);
    }
    return bytes;
}

} // namespace

TEST(IniFile_Open, RandomFilesReadAsThePlainReaderReadsThem) {
    Random random(10);
    const TemporaryFolder folder;
    int errors = 0;
    for (int i = 0; i < 12000; ++i) {
        const std::wstring path = folder.File(std::to_wstring(i)); // a file written over would go to the disk
        std::string bytes;
        for (unsigned n = random.Below(12); n > 0; --n) {
            if (random.OnceIn(4)) bytes += "[" + random.Text("ab \xE4\xC4", 3) + "]";
            bytes += random.Text("ab=;[]# \t\r\n\0\x1A\xE4\xC4\xFF", 8);
            bytes += random.OnceIn(2) ? "\n" : "\r\n";
        }
        if (random.OnceIn(3) && !bytes.empty()) bytes.pop_back();
        WriteBytes(path, bytes);
        std::wstring error;
        const PlainFile expected = ReadPlainly(bytes, error);
        IniFile file;
        const ErrorString result = file.Open(path);
        ASSERT_EQ(error, result.Text()) << ::testing::PrintToString(bytes);
        ASSERT_EQ(error.empty(), static_cast<bool>(result));
        ASSERT_EQ(expected, Plain(file)) << ::testing::PrintToString(bytes);
        errors += !result;
        std::filesystem::remove(NativePath(path));
    }
    EXPECT_GT(errors, 100); // both ways were taken
    EXPECT_LT(errors, 11000);
}

TEST(IniFile_Open, LinesMayBeOfAnyLength) {
    // Around the sizes that a read buffer might have, so that line ends fall on every side of its ends.
    for (const std::size_t size : {4096u, 8192u, 16384u, 32768u, 65536u, 131072u, 262144u, 1048576u})
        for (std::size_t length = size - 12; length <= size + 4; ++length) {
            const std::string value(length, 'v');
            const Opened opened("[s]\r\nk=" + value + "\r\nlast=1\r\n[t]\r\n");
            ASSERT_TRUE(opened.result);
            ASSERT_EQ(2, opened.file.NumSections());
            ASSERT_EQ(2, opened.file[0].NumKeys());
            ASSERT_EQ(std::wstring(length, L'v'), opened.file[0][0].GetValue());
            ASSERT_EQ(L"1", opened.file[0][1].GetValue());
        }
}

// Writing

TEST(IniFile_Save, AlignsTheColumns) {
    const IniFile file =
        FileOf({Made(L"Name", {{L"Width", L"10", L""}, {L"LineStyle", L"Solid Line", L"style"}})});
    EXPECT_EQ("[Name]\r\nWidth     = 10\r\nLineStyle = Solid Line ;style\r\n\r\n", SavedBytes(file));
}

TEST(IniFile_Save, WritesTheSameBytesEverywhere) {
    struct Row {
        const char* what;
        Section section;
        std::string bytes;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"a section without keys", Made(L"s", {}), "[s]\r\n\r\n"},
             {"a section's comment", Made(L"s", {}, L"note"), "[s] ;note\r\n\r\n"},
             {"a section's blank comment", Made(L"s", {}, L" "), "[s] ; \r\n\r\n"},
             {"blanks in a header", Made(L" s ", {}), "[ s ]\r\n\r\n"},
             {"an empty value", Made(L"s", {{L"a", L"", L""}}), "[s]\r\na = \r\n\r\n"},
             {"an empty value and a comment", Made(L"s", {{L"a", L"", L"c"}}), "[s]\r\na =  ;c\r\n\r\n"},
             {"the value's column is padded only before a comment",
              Made(L"s", {{L"a", L"1", L""}, {L"b", L"long", L""}, {L"c", L"2", L"x"}}),
              "[s]\r\na = 1\r\nb = long\r\nc = 2    ;x\r\n\r\n"},
             {"comment-only keys keep their place",
              Made(L"s", {{L"", L"", L"top"}, {L"a", L"1", L""}, {L"", L"", L"end"}}),
              "[s]\r\n;top\r\na = 1\r\n;end\r\n\r\n"},
             {"a nameless key without comment is an empty line",
              Made(L"s", {{L"a", L"1", L""}, {L"", L"", L""}, {L"b", L"2", L""}}),
              "[s]\r\na = 1\r\n\r\nb = 2\r\n\r\n"},
             {"a nameless key's value widens the column and is not written",
              Made(L"s", {{L"", L"wide", L"c"}, {L"a", L"1", L"d"}}), "[s]\r\n;c\r\na = 1    ;d\r\n\r\n"},
             {"comments are not padded", Made(L"s", {{L"a", L"1", L" x "}}), "[s]\r\na = 1 ; x \r\n\r\n"},
             {"keys of one name", Made(L"s", {{L"a", L"1", L""}, {L"A", L"2", L""}}),
              "[s]\r\na = 1\r\nA = 2\r\n\r\n"},
             {"values that a line cannot carry are written as they are",
              Made(L"s", {{L"a=b", L"c;d", L"e"}, {L"f\ng", L"h\r\ni", L"j\nk"}}),
              "[s]\r\na=b = c;d  ;e\r\nf\r\ng = h\r\r\ni ;j\r\nk\r\n\r\n"},
             {"every byte", Made(L"\u00C4\u00FF", {{L"\u0080", L"\u00A0\u001A", L"\u00FF"}}),
              "[\xC4\xFF]\r\n\x80 = \xA0\x1A ;\xFF\r\n\r\n"},
             {"NUL characters",
              Made(std::wstring(L"s\0s", 3),
                   {{std::wstring(L"\0a", 2), std::wstring(3, L'\0'), std::wstring(1, L'\0')}}),
              std::string("[s\0s]\r\n\0a = \0\0\0 ;\0\r\n\r\n", 22)},
         })
        EXPECT_EQ(row.bytes, SavedBytes(FileOf({row.section}))) << row.what;
}

TEST(IniFile_Save, AlignsEachSectionOnItsOwnAndKeepsTheOrder) {
    const IniFile file = FileOf({Made(L"z", {{L"long name", L"1", L""}, {L"x", L"2", L""}}),
                                 Made(L"a", {{L"b", L"1", L""}, {L"a", L"2", L""}})});
    EXPECT_EQ("[z]\r\nlong name = 1\r\nx         = 2\r\n\r\n[a]\r\nb = 1\r\na = 2\r\n\r\n", SavedBytes(file));
}

TEST(IniFile_Save, WritesANamelessSectionAsItIs) {
    IniFile file;
    file[L""][L"a"] << 1;
    EXPECT_EQ("[]\r\na = 1\r\n\r\n", SavedBytes(file));
}

TEST(IniFile_Save, TheResultOfTheRecordConventions) {
    IniFile file;
    Section& section = file[L"Style"];
    section[L"Name"] << L"Solid Line";
    section[L"Width"] << 2.5;
    section[L"Color"] << 16711935ul;
    section[L"Visible"] << true;
    section[L"Offset"] << short{-3};
    section.AddChecksum();
    EXPECT_EQ("[Style]\r\n"
              "Name       = Solid Line\r\n"
              "Width      = 2.500000\r\n"
              "Color      = 16711935\r\n"
              "Visible    = 1\r\n"
              "Offset     = -3\r\n"
              "$CHECKSUM$ = " +
                  std::to_string(section.ComputeChecksum()) + "\r\n\r\n",
              SavedBytes(file));
}

TEST(IniFile_Save, IsFalseWithoutATextAndWithoutAFile) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    const auto expectRefused = [](const ErrorString& result) {
        EXPECT_FALSE(result);
        EXPECT_EQ(L"", result.Text());
    };
    expectRefused(IniFile().Save(path));
    EXPECT_EQ(0u, folder.NumFiles());
    const IniFile file = FileOf({Made(L"s", {})});
    expectRefused(file.Save(folder.File(L"missing/a.ini")));
    expectRefused(file.Save(std::wstring()));
    expectRefused(file.Save(FileName()));
    expectRefused(file.Save(WidePath(folder.Path())));
    EXPECT_EQ(0u, folder.NumFiles());
    WriteBytes(path, "[old]\r\n");
    expectRefused(IniFile().Save(path));
    EXPECT_EQ("[old]\r\n", ReadBytes(path));
}

TEST(IniFile_Save, RefusesCharactersThatNoFileCanHold) {
    for (const wchar_t* text : {L"\u0100", L"a\u03A9b", L"\uFFFF", L"\U0001F6A2"}) {
        for (const Section& section : {Made(text, {}), Made(L"s", {}, text), Made(L"s", {{text, L"v", L""}}),
                                       Made(L"s", {{L"k", text, L""}}), Made(L"s", {{L"k", L"v", text}}),
                                       Made(L"s", {{L"k", L"v", L""}, {L"", L"", text}})}) {
            const TemporaryFolder folder;
            const std::wstring path = folder.File(L"a.ini");
            WriteBytes(path, "[old]\r\n");
            const ErrorString result = FileOf({Made(L"first", {}), section, Made(L"last", {})}).Save(path);
            EXPECT_FALSE(result);
            EXPECT_EQ(L"", result.Text());
            EXPECT_EQ("[old]\r\n", ReadBytes(path));
            EXPECT_EQ(1u, folder.NumFiles());
        }
    }
    // The value of a nameless key is not written, so it may hold anything.
    EXPECT_EQ("[s]\r\n\r\n\r\n", SavedBytes(FileOf({Made(L"s", {{L"", L"\u03A9", L""}})})));
}

TEST(IniFile_Save, ReplacesAFileWhateverTheirLengths) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    for (const std::size_t length : {0u, 1u, 100000u, 10u, 5000000u, 3u}) {
        const IniFile file = FileOf({Made(L"s", {{L"k", std::wstring(length, L'v'), L""}})});
        ASSERT_TRUE(file.Save(FileName(path)));
        ASSERT_EQ("[s]\r\nk = " + std::string(length, 'v') + "\r\n\r\n", ReadBytes(path));
        ASSERT_EQ(1u, folder.NumFiles());
    }
}

TEST(IniFile_Save, RandomFilesAreWrittenAsAStreamWouldAndComeBack) {
    Random random(11);
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    for (int i = 0; i < 40; ++i) { // each save waits for the disk
        IniFile file;
        for (unsigned s = i % 4 == 0 ? 200 : random.Below(4) + 1; s > 0; --s) {
            Section section(L"s" + std::to_wstring(s));
            section.SetComments(random.Text(L"ab ;", 4));
            for (unsigned k = random.Below(8); k > 0; --k)
                section.AddKey(SectionKey(HashedString<wchar_t>(random.Text(L"abA\u00E4\u00C4 \t=;[]\n", 8)),
                                          random.Text(L"v \u00FF=;\r\n", 9), random.Text(L"c ;=\n", 5)));
            file.AddSection(section);
        }
        ASSERT_TRUE(file.Save(path));
        const std::string bytes = ReadBytes(path);
        ASSERT_EQ(WritePlainly(file), bytes);
        std::wstring error;
        const PlainFile expected = ReadPlainly(bytes, error);
        IniFile again;
        ASSERT_EQ(error, again.Open(path).Text());
        ASSERT_EQ(expected, Plain(again));
        // What one reading made of it is what every further one makes of it.
        ASSERT_TRUE(again.Save(path));
        const std::string second = ReadBytes(path);
        IniFile third;
        ASSERT_TRUE(third.Open(path));
        ASSERT_TRUE(third.Save(path));
        IniFile fourth(path);
        ASSERT_TRUE(fourth.Save(path));
        ASSERT_EQ(ReadBytes(path), SavedBytes(fourth));
    }
}

TEST(IniFile_Save, TextsThatALineCanCarryComeBackUnchanged) {
    Random random(12);
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    std::wstring inner; // every character that is no blank and no sign of the format
    for (wchar_t c = 0; c < 256; ++c)
        if (std::wstring_view(L" \t\r\n;=[").find(c) == std::wstring_view::npos) inner += c;
    for (int i = 0; i < 10; ++i) {
        IniFile file;
        PlainFile expected;
        for (unsigned s = random.Below(300) + 1; s > 0; --s) {
            PlainSection section{L"s" + std::to_wstring(s), {}};
            for (unsigned k = random.Below(8); k > 0; --k)
                section.keys.push_back({L"n" + random.Text(std::wstring_view(inner), 5),
                                        random.Text(std::wstring_view(inner), 8),
                                        random.Text(std::wstring_view(inner), 8)});
            file.AddSection(Made(section.name, section.keys));
            expected.push_back(section);
        }
        ASSERT_TRUE(file.Save(path));
        IniFile again;
        ASSERT_TRUE(again.Open(path));
        ASSERT_EQ(expected, Plain(again));
        ASSERT_EQ(ReadBytes(path), SavedBytes(again));
    }
}

TEST(IniFile_Save, ReadingAndSavingKeepsOrderAndTexts) {
    const Opened opened("; head\n[Zeta]\nb   =1\nA=  two words ;why\n;alone\n\n\nA=3\n[alpha]\nlast\n");
    EXPECT_EQ("[Zeta]\r\nb = 1\r\nA = two words ;why\r\n;alone\r\nA = 3\r\n\r\n[alpha]\r\nlast = \r\n\r\n",
              SavedBytes(opened.file));
}

TEST(IniFile_Save, ASealSurvivesTheFile) {
    Random random(13);
    IniFile file;
    const int sections = 300;
    for (int i = 0; i < sections; ++i) {
        Section& section = file[std::to_wstring(i)];
        for (unsigned k = random.Below(10); k > 0; --k)
            section[random.Text(L"abc\u00E4\u00FF", 6)] << random.Text(L"1x\u00C4", 6);
        section.RemoveKey(L""); // a nameless key's value is not stored
        section[L"k"] << i;
        section.AddChecksum();
    }
    Opened again(SavedBytes(file));
    ASSERT_EQ(sections, again.file.NumSections());
    for (int i = 0; i < sections; ++i) {
        ASSERT_FALSE(again.file[i].IsModified());
        again.file[i][0].SetComments(L"by hand");
    }
    Opened commented(SavedBytes(again.file));
    for (int i = 0; i < sections; ++i) {
        ASSERT_FALSE(commented.file[i].IsModified());
        commented.file[i][0] << L"by hand";
    }
    const Opened changed(SavedBytes(commented.file));
    for (int i = 0; i < sections; ++i) ASSERT_TRUE(changed.file[i].IsModified());
}

TEST(IniFile_Open, TakesItsPathFromAKeyOfTheFileItself) {
    const TemporaryFolder folder;
    const std::wstring next = folder.File(L"next.ini"), missing = folder.File(L"missing.ini");
    WriteBytes(next, "[n]\r\na=1\r\n");
    for (const auto open :
         {+[](IniFile&file, const std::wstring&path) { return file.Open(path); },
          +[](IniFile&file, const std::wstring&path) { return file.Open(FileName(path)); }}) {
        IniFile file;
        file[L"P"][L"Next"] << next;
        EXPECT_EQ(L"", open(file, file[L"P"][L"Next"].GetValue()).Text());
        EXPECT_EQ((PlainFile{{L"n", {{L"a", L"1", L""}}}}), Plain(file));
        file[L"P"][L"Next"] << missing;
        EXPECT_EQ(L"Error opening \"" + missing + L"\" for reading!",
                  open(file, file[L"P"][L"Next"].GetValue()).Text());
    }
}

TEST(IniFile, EveryOperationTakesWhatLivesInTheFile) {
    const std::wstring longName = L"a name that is longer than any small buffer";
    for (const int others : {0, 100}) {
        const auto file = [&] {
            IniFile made = FileOf({Made(longName, {{longName, L"1", L""}}), Made(L"b", {})});
            for (int i = 0; i < others; ++i) made[std::to_wstring(i)];
            return made;
        };
        IniFile added = file();
        EXPECT_TRUE(added.AddSection(added[0]));
        EXPECT_EQ(Plain(file()), Plain(added));
        added[1] = added[0];
        EXPECT_TRUE(added.RemoveSection(added[0]));
        EXPECT_EQ(longName, added[0].GetName().String());
        EXPECT_TRUE(added.RemoveSection(added[0].GetName()));
        EXPECT_FALSE(added.HasSection(longName));
        EXPECT_EQ(others, added.NumSections());

        IniFile renamed = file();
        EXPECT_FALSE(renamed.RenameSection(renamed[0].GetName(), renamed[0].GetName()));
        EXPECT_TRUE(renamed.RenameSection(renamed[1].GetName(), renamed[0][0].GetValue()) || others > 1);
        EXPECT_TRUE(renamed.RenameSection(renamed[0].GetName(), renamed[0].GetName().String() + L"!"));
        EXPECT_TRUE(renamed.HasSection(longName + L"!"));
        renamed[0].SetName(renamed[0][longName].GetName());
        EXPECT_EQ(&renamed[0], &renamed[renamed[0].GetName()]);
        renamed[0].SetName(renamed[0].GetName());
        EXPECT_EQ(longName, renamed[0].GetName().String());

        IniFile assigned = file();
        const IniFile& self = assigned;
        assigned = self;
        EXPECT_EQ(Plain(file()), Plain(assigned));
        IniFile& same = assigned;
        assigned = std::move(same);
        EXPECT_EQ(Plain(file()), Plain(assigned));
        assigned[0] = std::move(assigned[1]);
        EXPECT_EQ(&assigned[0], &assigned[L"b"]);
        EXPECT_FALSE(assigned.HasSection(longName));
    }
}

// The sections of a file

TEST(IniFile, AddSectionAppendsOrReplacesWhole) {
    IniFile file;
    EXPECT_TRUE(file.Empty());
    EXPECT_TRUE(file.AddSection(Made(L"a", {{L"x", L"1", L""}}, L"first")));
    EXPECT_TRUE(file.AddSection(Made(L"b", {})));
    EXPECT_TRUE(file.AddSection(Made(L"A", {{L"y", L"2", L""}}, L"second")));
    EXPECT_THAT(SectionNames(file), ElementsAre(L"A", L"b"));
    EXPECT_EQ(L"second", file[0].GetComments());
    EXPECT_EQ((Keys{{L"y", L"2", L""}}), Plain(file)[0].keys);
    EXPECT_FALSE(file.AddSection(Section()));
    EXPECT_FALSE(file.AddSection(Made(L"", {{L"x", L"1", L""}})));
    EXPECT_EQ(2, file.NumSections());
    EXPECT_FALSE(file.Empty());
}

TEST(IniFile, ASectionOfTheFileItselfCanBeAdded) {
    IniFile file = FileOf({Made(L"a", {{L"x", L"1", L""}}), Made(L"b", {})});
    EXPECT_TRUE(file.AddSection(file[0]));
    EXPECT_EQ((PlainFile{{L"a", {{L"x", L"1", L""}}}, {L"b", {}}}), Plain(file));
}

TEST(IniFile, HasAndRemoveSection) {
    IniFile file = FileOf({Made(L"a", {}), Made(L"b", {}), Made(L"c", {})});
    EXPECT_TRUE(file.HasSection(L"B"));
    EXPECT_TRUE(file.HasSection(std::wstring(L"B")));
    EXPECT_TRUE(file.HasSection(Section(L"B")));
    EXPECT_FALSE(file.HasSection(L"bb"));
    EXPECT_FALSE(file.HasSection(static_cast<const wchar_t*>(nullptr)));
    EXPECT_TRUE(file.RemoveSection(L"B"));
    EXPECT_FALSE(file.RemoveSection(L"B"));
    EXPECT_TRUE(file.RemoveSection(std::wstring(L"C")));
    EXPECT_FALSE(file.RemoveSection(std::wstring(L"C")));
    EXPECT_TRUE(file.RemoveSection(file[0]));
    EXPECT_FALSE(file.RemoveSection(Section(L"a")));
    EXPECT_FALSE(file.RemoveSection(static_cast<const wchar_t*>(nullptr)));
    EXPECT_TRUE(file.Empty());
}

TEST(IniFile, RenameSection) {
    IniFile file = FileOf({Made(L"abc", {{L"x", L"1", L""}}, L"note"), Made(L"other", {})});
    EXPECT_FALSE(file.RenameSection(L"abc", L"ABC")); // taken: by itself
    EXPECT_FALSE(file.RenameSection(L"abc", L"OTHER"));
    EXPECT_FALSE(file.RenameSection(L"missing", L"new"));
    EXPECT_FALSE(file.RenameSection(L"missing", L"abc"));
    EXPECT_THAT(SectionNames(file), ElementsAre(L"abc", L"other"));
    EXPECT_TRUE(file.RenameSection(L"ABC", L"New"));
    EXPECT_THAT(SectionNames(file), ElementsAre(L"New", L"other"));
    EXPECT_EQ(HashedString<wchar_t>(L"new").Hash(), file[0].GetName().Hash());
    EXPECT_EQ(L"note", file[0].GetComments());
    EXPECT_EQ(1, file[0].NumKeys());
    EXPECT_TRUE(file.HasSection(L"new"));
    EXPECT_FALSE(file.HasSection(L"abc"));
    EXPECT_TRUE(file.RenameSection(std::wstring(L"new"), std::wstring(L"abc")));
    EXPECT_TRUE(file.HasSection(L"abc"));
    EXPECT_FALSE(file.RenameSection(static_cast<const wchar_t*>(nullptr), L"x"));
}

TEST(IniFile, TheIndexOperatorAppendsAMissingSection) {
    IniFile file = FileOf({Made(L"A", {})});
    EXPECT_EQ(&file[0], &file[L"a"]);
    EXPECT_EQ(&file[0], &file[std::wstring(L"a")]);
    EXPECT_EQ(L"b", file[L"b"].GetName().String());
    EXPECT_EQ(L"c", file[std::wstring(L"c")].GetName().String());
    EXPECT_THAT(SectionNames(file), ElementsAre(L"A", L"b", L"c"));
    EXPECT_EQ(0, file[2].NumKeys());
}

TEST(IniFile, TheConstIndexOperatorGivesTheErrorSection) {
    const IniFile file = FileOf({Made(L"A", {{L"x", L"1", L""}})});
    EXPECT_EQ(&file[0], &file[L"a"]);
    EXPECT_EQ(&IniFile::m_ErrorSection, &file[L"b"]);
    EXPECT_EQ(&IniFile::m_ErrorSection, &file[std::wstring(L"b")]);
    EXPECT_EQ(&IniFile::m_ErrorSection, &file[static_cast<const wchar_t*>(nullptr)]);
    EXPECT_EQ(1, file.NumSections());
    EXPECT_FALSE(IniFile::m_ErrorSection.IsValid());
    EXPECT_EQ(0, IniFile::m_ErrorSection.NumKeys());
    int number = 42;
    file[L"b"][L"x"] >> number;
    EXPECT_EQ(42, number);
}

TEST(IniFile, ReferencesHoldWhileSectionsAreAdded) {
    IniFile file;
    Section& first = file[L"first"];
    for (int i = 0; i < 2000; ++i) file[L"s" + std::to_wstring(i)];
    first[L"a"] << 1;
    EXPECT_EQ(1, file[0].NumKeys());
}

TEST(IniFile, ClearRemovesAllSections) {
    IniFile file = FileOf({Made(L"a", {}), Made(L"b", {})});
    file.Clear();
    EXPECT_TRUE(file.Empty());
    EXPECT_EQ(0, file.NumSections());
    EXPECT_FALSE(file.HasSection(L"a"));
}

TEST(IniFile, MovesTransferTheSections) {
    IniFile file = FileOf({Made(L"a", {{L"x", L"1", L""}}), Made(L"b", {})});
    IniFile moved(std::move(file));
    EXPECT_EQ((PlainFile{{L"a", {{L"x", L"1", L""}}}, {L"b", {}}}), Plain(moved));
    IniFile assigned = FileOf({Made(L"c", {})});
    assigned = std::move(moved);
    EXPECT_EQ((PlainFile{{L"a", {{L"x", L"1", L""}}}, {L"b", {}}}), Plain(assigned));
}

TEST(IniFile, RandomOperationsMatchAPlainList) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        Random random(seed);
        const auto anyName = [&] {
            return (random.OnceIn(2) ? L"s" : L"S") + std::to_wstring(random.Below(150));
        };
        IniFile file;
        PlainFile plain;
        const auto find = [&](const std::wstring& name) {
            std::size_t i = 0;
            while (i < plain.size() && !icompareW(plain[i].name, name)) ++i;
            return i;
        };
        for (int step = 0; step < 1000; ++step) {
            const std::wstring name = anyName(), other = anyName(), value = std::to_wstring(step);
            const std::size_t found = find(name);
            const bool isThere = found < plain.size();
            const unsigned removals = step / 250 % 2 ? 50 : 15;
            const unsigned choice = random.Below(100);
            if (choice < removals) {
                ASSERT_EQ(isThere, isThere && random.OnceIn(2) ? file.RemoveSection(file[name])
                                                               : file.RemoveSection(name));
                if (isThere) plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(found));
            } else if (choice < 70) {
                file[name][L"k"] << value;
                if (!isThere) plain.push_back({name, {}});
                plain[found].keys = {{L"k", value, L""}};
            } else if (choice < 80) {
                ASSERT_TRUE(file.AddSection(Made(name, {{L"k", value, L""}})));
                if (!isThere) plain.emplace_back();
                plain[found] = {name, {{L"k", value, L""}}};
            } else if (choice < 90) {
                const bool isFree = find(other) == plain.size();
                ASSERT_EQ(isThere && isFree, file.RenameSection(name, other));
                if (isThere && isFree) plain[found].name = other;
            } else if (choice < 95 && !plain.empty()) { // by a reference, also to a name that is taken
                const unsigned position = random.Below(plain.size());
                file[static_cast<int>(position)].SetName(HashedString<wchar_t>(other));
                plain[position].name = other;
            } else {
                IniFile copy(file);
                copy.RemoveSection(other);
                copy = file;
                file = std::move(copy);
            }
            const std::wstring sought = anyName();
            const std::size_t expected = find(sought);
            ASSERT_EQ(expected < plain.size(), std::as_const(file).HasSection(sought)) << seed;
            if (expected < plain.size()) {
                ASSERT_EQ(&file[static_cast<int>(expected)], &file[sought]) << seed;
            }
        }
        ASSERT_EQ(plain, Plain(file)) << seed;
    }
}

// The base library's container

TEST(IniFile_FileObject, OpenTakesItsSectionsInOrder) {
    FileObject source;
    source.SetItem(L"b", L"x", L"1", true);
    source.SetItem(L"a", L"y", L" two ; ", true);
    source.SetItem(L"b", L"z", L"3", true);
    IniFile file = FileOf({Made(L"kept", {}), Made(L"B", {{L"old", L"1", L"note"}}, L"note")});
    EXPECT_TRUE(file.Open(source));
    EXPECT_EQ((PlainFile{{L"kept", {}},
                         {L"b", {{L"x", L"1", L""}, {L"z", L"3", L""}}},
                         {L"a", {{L"y", L" two ; ", L""}}}}),
              Plain(file));
    EXPECT_EQ(L"", file[1].GetComments());
    EXPECT_TRUE(IniFile().Open(FileObject()));
}

TEST(IniFile_FileObject, SaveSetsEveryItemInOrder) {
    const IniFile file = FileOf({Made(L"b", {{L"x", L"1", L"lost"}, {L"", L"v", L"lost"}, {L"X", L"2", L""}}),
                                 Made(L"a", {{L"y", L"3", L""}}, L"lost")});
    FileObject target;
    target.SetItem(L"kept", L"k", L"v", true);
    target.SetItem(L"a", L"y", L"old", true);
    EXPECT_TRUE(file.Save(target));
    IniFile back;
    EXPECT_TRUE(back.Open(target));
    // The container holds each key once: the second "x" replaces the value of the first.
    EXPECT_EQ((PlainFile{{L"kept", {{L"k", L"v", L""}}},
                         {L"a", {{L"y", L"3", L""}}},
                         {L"b", {{L"x", L"2", L""}, {L"", L"v", L""}}}}),
              Plain(back));
    FileObject nothing;
    EXPECT_TRUE(IniFile().Save(nothing));
    EXPECT_EQ(0, nothing.NumSections());
}

TEST(IniFile_FileObject, OpenPassesOverANamelessSection) {
    FileObject source;
    source.SetItem(L"", L"x", L"1", true);
    source.SetItem(L"a", L"y", L"2", true);
    IniFile file;
    EXPECT_TRUE(file.Open(source));
    EXPECT_EQ((PlainFile{{L"a", {{L"y", L"2", L""}}}}), Plain(file));
}

// Where opening stopped

TEST(IniFile_Fault, TellsKindLineAndSection) {
    struct Row {
        std::string_view bytes;
        IniFile::Fault::Kind kind;
        std::uint32_t line, firstLine;
        std::wstring section;
    };
    using Fault = IniFile::Fault;
    for (const Row& row : std::initializer_list<Row>{
             {"[a]\nk=1\n", Fault::NONE, 0, 0, L""},
             {"", Fault::NONE, 0, 0, L""},
             {"[a]\n\n[b]\nk=1\n\n[A]\n", Fault::DUPLICATE_SECTION, 6, 1, L"A"},
             {"x\n[a]\n[b]\n[c]\r\n[b];c\n[a]\n", Fault::DUPLICATE_SECTION, 5, 3, L"b"},
             {"\n[a]\n  []\n[a]\n", Fault::NAMELESS_SECTION, 3, 0, L""},
             {"[]", Fault::NAMELESS_SECTION, 1, 0, L""},
         }) {
        SCOPED_TRACE(row.bytes);
        const TemporaryFolder folder;
        const std::wstring path = folder.File(L"a.ini");
        WriteBytes(path, row.bytes);
        IniFile file;
        Fault fault{Fault::NOT_READABLE, 7, 8, L"left from before"};
        const ErrorString result = file.Open(path, fault);
        EXPECT_EQ(row.kind == Fault::NONE, result);
        EXPECT_EQ(row.kind, fault.kind);
        EXPECT_EQ(row.line, fault.line);
        EXPECT_EQ(row.firstLine, fault.firstLine);
        EXPECT_EQ(row.section, fault.section);
        EXPECT_EQ(Opened(row.bytes).result.Text(), result.Text()); // the text is the same
    }
}

TEST(IniFile_ReadText, GivesWhatOpenGivesOfAFile) {
    for (const std::string_view bytes :
         {"", "x=1\n[a]\nk = v ;c\r\n[b]\n=\n", "[a]\nk=1\n[b]\n[A]\n", "[a]\n[]\n", "[a]\n\xFF=\xE9"}) {
        SCOPED_TRACE(bytes);
        const TemporaryFolder folder;
        WriteBytes(folder.File(L"a.ini"), bytes);
        IniFile opened, read;
        read[L"gone"][L"with"] = L"the old";
        IniFile::Fault ofFile, ofText;
        EXPECT_EQ(opened.Open(folder.File(L"a.ini"), ofFile).Text(), read.ReadText(bytes, ofText).Text());
        EXPECT_EQ(ofFile.kind, ofText.kind);
        EXPECT_EQ(ofFile.line, ofText.line);
        EXPECT_EQ(ofFile.firstLine, ofText.firstLine);
        EXPECT_EQ(ofFile.section, ofText.section);
        EXPECT_EQ(Plain(opened), Plain(read));
    }
}

TEST(IniFile_Fault, AFileThatCannotBeReadHasNoLine) {
    const TemporaryFolder folder;
    for (const std::wstring& path : {std::wstring(), folder.File(L"missing"), WidePath(folder.Path())}) {
        IniFile file;
        IniFile::Fault fault{IniFile::Fault::NONE, 7, 8, L"left from before"};
        EXPECT_FALSE(file.Open(path, fault));
        EXPECT_EQ(IniFile::Fault::NOT_READABLE, fault.kind);
        EXPECT_EQ(0u, fault.line);
        EXPECT_EQ(0u, fault.firstLine);
        EXPECT_EQ(L"", fault.section);
    }
}

// What does not come back

namespace {

/// Whether saving and opening gives what `file` holds, but for the comments of sections.
bool ComesBack(const IniFile& file) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    IniFile back;
    return file.Save(path) && back.Open(path) && Plain(back) == Plain(file);
}

/// The message of the check of a file with one section and one key; empty when nothing is lost.
std::wstring CheckOf(const std::wstring& section, const std::wstring& name, const std::wstring& value,
                     const std::wstring& comment) {
    IniFile file;
    file[L"placeholder"].AddKey(SectionKey(HashedString<wchar_t>(name), value, comment));
    file[0].SetName(HashedString<wchar_t>(section));
    const ErrorString result = file.CheckStorable();
    EXPECT_EQ(result, ComesBack(file)) << ToUtf8(result.Text());
    EXPECT_EQ(result, result.Text().empty());
    return result.Text();
}

} // namespace

TEST(IniFile_CheckStorable, NamesThePlaceAndTheReason) {
    struct Row {
        const wchar_t *section, *name, *value, *comment;
        std::wstring message;
    };
    const std::wstring key = L"[s] \"k\": ";
    const std::wstring oneLine = L"has a line break; a settings file keeps it on one line";
    const std::wstring noBlanks =
        L"begins or ends with a blank, which a settings file does not keep; leave it out";
    const std::wstring header =
        L"begins with \"[\" and a \"]\" follows: the line would be a section's header";
    for (const Row& row : std::initializer_list<Row>{
             {L"s", L"k", L"v", L"c", L""},
             {L" s [=;\r", L"k [a] \r x", L"= [v] \r x", L" c;]=\r x", L""},
             {L"s", L"k", L"", L"", L""},
             {L"s", L"", L"", L"note", L""},
             {L"s", L"[k", L"v", L"c", L""},
             {L"\u00FF", L"\u00FF", L"\u00A0", L"\u00A0", L""},
             {L"", L"k", L"v", L"", L"[]: the section name is empty"},
             {L"a]b", L"k", L"v", L"",
              L"[a]b]: the section name has a \"]\", which ends it in a settings file; leave it out"},
             {L"a\nb", L"k", L"v", L"", L"[a\nb]: the section name " + oneLine},
             {L"\u03A9", L"k", L"v", L"",
              L"[\u03A9]: the section name has the character U+03A9; a settings file holds characters up to "
              L"U+00FF"},
             {L"s", L"a=b", L"v", L"",
              L"[s] \"a=b\": the key name has a \"=\", which ends it in a settings file; leave it out"},
             {L"s", L"a;b", L"v", L"",
              L"[s] \"a;b\": the key name has a \";\", which ends it in a settings file; leave it out"},
             {L"s", L"k ", L"v", L"", L"[s] \"k \": the key name " + noBlanks},
             {L"s", L"\tk", L"v", L"", L"[s] \"\tk\": the key name " + noBlanks},
             {L"s", L"a\nb", L"v", L"", L"[s] \"a\nb\": the key name " + oneLine},
             {L"s", L"[k]", L"v", L"", L"[s] \"[k]\": the key name " + header},
             {L"s", L"[k", L"v]", L"", L"[s] \"[k\": the key name " + header},
             {L"s", L"[k", L"v", L"]", L"[s] \"[k\": the key name " + header},
             {L"s", L"k", L"a;b", L"",
              key + L"the value has a \";\", which ends it in a settings file; leave it out"},
             {L"s", L"k", L" v", L"", key + L"the value " + noBlanks},
             {L"s", L"k", L"v\r", L"", key + L"the value " + noBlanks},
             {L"s", L"k", L"a\nb", L"", key + L"the value " + oneLine},
             {L"s", L"k", L"\U0001F6A2", L"",
              key + L"the value has the character U+1F6A2; a settings file holds characters up to U+00FF"},
             {L"s", L"k", L"v", L"a\nb", key + L"the comment " + oneLine},
             {L"s", L"k", L"v", L"c ",
              key + L"the comment ends with a blank, which a settings file does not keep; leave it out"},
             {L"s", L"k", L"v", L" ",
              key + L"the comment ends with a blank, which a settings file does not keep; leave it out"},
             {L"s", L"", L"v", L"", L"[s] \"\": the key name is empty, and its value would be lost"},
             {L"s", L"", L"v", L"c", L"[s] \"\": the key name is empty, and its value would be lost"},
             {L"s", L"", L"", L"",
              L"[s] \"\": the key name is empty, and so is the comment: the line would be blank"},
         })
        EXPECT_EQ(row.message, CheckOf(row.section, row.name, row.value, row.comment));
}

TEST(IniFile_CheckStorable, AFileHasSectionsAndEachNameOnce) {
    IniFile file;
    EXPECT_EQ(L"there is no section", file.CheckStorable().Text());
    file[L"\u00E9 a"];
    file[L"b"];
    EXPECT_TRUE(file.CheckStorable());
    file[1].SetName(HashedString<wchar_t>(L"\u00C9 A"));
    EXPECT_EQ(L"[\u00C9 A]: another section has this name already (letter case does not count)",
              file.CheckStorable().Text());
    EXPECT_FALSE(ComesBack(file));
}

TEST(IniFile_CheckStorable, OfASectionsCommentOnlyWhatWouldBecomeALineCounts) {
    for (const auto& [comment, good] : std::initializer_list<std::pair<const wchar_t*, bool>>{
             {L" any ; [text] = ", true},
             {L"\n", true},
             {L"a\n \t\r\n", true},
             {L"a\nb", false},
             {L"\n;", false},
             {L"a\n[b]", false},
             {L"\u03A9", false},
         }) {
        IniFile file;
        file[L"s"].SetComments(comment);
        const ErrorString result = file.CheckStorable();
        EXPECT_EQ(good, result) << ::testing::PrintToString(comment);
        EXPECT_EQ(good, ComesBack(file)) << ::testing::PrintToString(comment);
        EXPECT_EQ(good, result.Text().find(L"[s]: the section comment ") != 0);
    }
}

TEST(IniFile_CheckStorable, IsTrueExactlyWhenEverythingComesBack) {
    Random random(91);
    const auto text = [&] {
        return random.Text(L"abA  \t\r\n;=[]\u00E9\u00C9\u03A9", random.OnceIn(4) ? 6 : 2);
    };
    int storable = 0, lost = 0;
    for (int round = 0; round < 1000; ++round) { // each waits for the disk
        IniFile file;
        const bool mild = random.OnceIn(2); // many faults hide each other
        const auto some = [&](const wchar_t* plain) {
            return mild && !random.OnceIn(8) ? std::wstring(plain) : text();
        };
        for (unsigned s = 1 + random.Below(2); s > 0; --s) {
            Section section(L"placeholder" + std::to_wstring(s));
            for (unsigned k = random.Below(3); k > 0; --k)
                section.AddKey(
                    SectionKey(HashedString<wchar_t>(some(L"name")), some(L"value"), some(L"comment")));
            if (random.OnceIn(4)) section.SetComments(some(L"comment"));
            file.AddSection(section);
        }
        for (int s = 0; s < file.NumSections(); ++s)
            file[s].SetName(HashedString<wchar_t>(some(s == 0 ? L"first" : L"second")));
        const ErrorString result = file.CheckStorable();
        ASSERT_EQ(result, ComesBack(file)) << ToUtf8(result.Text()) << '\n' << SavedBytes(file);
        ++(result ? storable : lost);
    }
    EXPECT_GT(storable, 125);
    EXPECT_GT(lost, 125);
}

TEST(IniFile_FileObject, ACommentLineBecomesANamelessItemThatLeavesAnEmptyLine) {
    const Opened opened("[s]\r\na = 1\r\n;a comment line\r\nlast = 2\r\n;another\r\n\r\n");
    ASSERT_EQ(4, opened.file[0].NumKeys());
    FileObject object;
    EXPECT_TRUE(opened.file.Save(object));
    ASSERT_NE(nullptr, object.GetItem(L"s", L""));
    EXPECT_EQ(L"", *object.GetItem(L"s", L""));
    EXPECT_EQ(3, object.GetSection(L"s")->NumItems());
    IniFile back;
    EXPECT_TRUE(back.Open(object));
    EXPECT_EQ((PlainFile{{L"s", {{L"a", L"1", L""}, {L"", L"", L""}, {L"last", L"2", L""}}}}), Plain(back));

    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    EXPECT_TRUE(object.Save(path, 0));
    EXPECT_EQ("[s]\r\na    = 1\r\n\r\nlast = 2\r\n\r\n", ReadBytes(path));
    EXPECT_TRUE(object.Open(path, 0));
    EXPECT_EQ(nullptr, object.GetItem(L"s", L""));
    EXPECT_EQ(2, object.GetSection(L"s")->NumItems());
}

TEST(IniFile, ItsMovesCannotFailAndLeaveAFileThatCanBeUsed) {
    static_assert(std::is_nothrow_move_constructible_v<IniFile> &&
                  std::is_nothrow_move_assignable_v<IniFile>);
    for (const int sections : {1, 100}) {
        IniFile file;
        for (int i = 0; i < sections; ++i) file[std::to_wstring(i)][L"k"] << i;
        const IniFile taken(std::move(file));
        file.Clear(); // NOLINT(bugprone-use-after-move): that is the point
        EXPECT_TRUE(file.Empty());
        file[L"new"][L"k"] << 1;
        EXPECT_EQ(&file[0], &file[L"NEW"]);
        EXPECT_EQ(sections, taken.NumSections());
        EXPECT_EQ(&taken[sections - 1], &taken[std::to_wstring(sections - 1)]);
    }
}
