// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/IniDocument.h"
#include "UtilityDLL/settings/IniFile.h"
#include "tests/support/TestFiles.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <set>
#include <vector>

// Settings files that other people wrote for other programs: units of the system's services, desktop entries,
// icon themes, the interpreter's configuration. Which of them there are depends on the machine; ./test
// installs enough.

namespace {

struct Key {
    std::wstring name, value, comment;
    bool operator==(const Key&) const = default;
};
struct Block {
    std::wstring name;
    std::vector<Key> keys;
    bool operator==(const Block&) const = default;
};
using Blocks = std::vector<Block>;

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\n\r");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\n\r") - first + 1);
}

std::wstring Wide(const std::string& bytes) {
    std::wstring text;
    for (const char c : bytes) text += static_cast<wchar_t>(static_cast<unsigned char>(c));
    return text;
}

// The rules of the format, written out plainly. `fault` is what opening must fail with, if anything.
Blocks ReadPlainly(const std::string& bytes, std::wstring& fault) {
    Blocks blocks;
    std::set<std::wstring> names;
    std::size_t number = 0;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        const std::string line = Trimmed(bytes.substr(begin, end - begin));
        begin = end + 1;
        ++number;
        const std::size_t bracket = line.find(']');
        if (!line.empty() && line[0] == '[' && bracket != std::string::npos) {
            const std::wstring name = Wide(line.substr(1, bracket - 1));
            std::wstring capitals = name;
            std::transform(capitals.begin(), capitals.end(), capitals.begin(), ToUpperW);
            if (name.empty())
                fault = L"Invalid section definition on line " + std::to_wstring(number);
            else if (!names.insert(capitals).second)
                fault = L"Error! Duplicate section" + name + L" found!";
            if (!fault.empty()) return blocks;
            blocks.push_back({name, {}});
        } else if (!line.empty() && !blocks.empty()) {
            const std::size_t semicolon = line.find(';');
            const std::string comment = semicolon == std::string::npos ? "" : line.substr(semicolon + 1);
            const std::string assignment = line.substr(0, semicolon);
            const std::size_t equals = assignment.find('=');
            const std::string value = equals == std::string::npos ? "" : assignment.substr(equals + 1);
            blocks.back().keys.push_back(
                {Wide(Trimmed(assignment.substr(0, equals))), Wide(Trimmed(value)), Wide(comment)});
        }
    }
    return blocks;
}

Blocks ContentOf(const IniFile& file) {
    Blocks blocks;
    for (int i = 0; i < file.NumSections(); ++i) {
        blocks.push_back({file[i].GetName().String(), {}});
        for (int k = 0; k < file[i].NumKeys(); ++k) {
            const SectionKey& key = file[i][k];
            blocks.back().keys.push_back({key.GetName().String(), key.GetValue(), key.GetComments()});
        }
    }
    return blocks;
}

std::vector<std::filesystem::path> FilesIn(const std::vector<const char*>& roots,
                                           const std::set<std::string>& endings) {
    using Iterator = std::filesystem::recursive_directory_iterator;
    std::set<std::filesystem::path> found; // by their real place: many are linked from several folders
    for (const char* const root : roots) {
        std::error_code error;
        const auto options = std::filesystem::directory_options::skip_permission_denied;
        for (Iterator entry(root, options, error), end; !error && entry != end; entry.increment(error)) {
            std::error_code ignored;
            const std::string name = entry->path().filename().string();
            const bool looksRight =
                endings.count(entry->path().extension().string()) > 0 || name.rfind("php.ini", 0) == 0;
            if (!looksRight || !entry->is_regular_file(ignored)) continue;
            const std::filesystem::path real = std::filesystem::canonical(entry->path(), ignored);
            if (!ignored) found.insert(real);
        }
    }
    return {found.begin(), found.end()};
}

} // namespace

TEST(ForeignSettingsFiles, AreTheSameAfterOpeningSavingAndOpening) {
    const TemporaryFolder folder;
    const std::wstring copy = folder.File(L"copy.ini");
    std::size_t numKept = 0;
    std::size_t numFaulty = 0;
    for (const std::filesystem::path& path :
         FilesIn({"/usr/lib/systemd", "/lib/systemd", "/usr/share/applications", "/usr/share/icons",
                  "/usr/lib/php", "/etc/php", "/usr/share/vim"},
                 {".service", ".timer", ".socket", ".desktop", ".theme", ".ini"})) {
        SCOPED_TRACE(path.string());
        std::wstring fault;
        Blocks expected = ReadPlainly(ReadBytes(path), fault);
        IniFile file;
        const ErrorString opened = file.Open(WidePath(path));
        EXPECT_EQ(fault, opened.Text());
        EXPECT_EQ(fault.empty(), static_cast<bool>(opened));
        EXPECT_TRUE(expected == ContentOf(file));
        numFaulty += fault.empty() ? 0 : 1;
        if (!fault.empty() || file.Empty()) continue;

        ASSERT_TRUE(file.Save(copy));
        IniFile again;
        ASSERT_TRUE(again.Open(copy));
        for (Block& block : expected) {
            for (Key& key : block.keys) // a line cannot carry a value without a name
                if (key.name.empty()) key.value.clear();
            std::erase(block.keys, Key{}); // a ";" alone is saved as a blank line
        }
        EXPECT_TRUE(expected == ContentOf(again));

        // What is dropped is dropped at once: from the second save on the bytes stay.
        ASSERT_TRUE(again.Save(copy));
        const std::string saved = ReadBytes(folder.Path() / "copy.ini");
        ASSERT_TRUE(again.Open(copy));
        ASSERT_TRUE(again.Save(copy));
        EXPECT_TRUE(saved == ReadBytes(folder.Path() / "copy.ini"));
        ++numKept;
        if (::testing::Test::HasFailure()) return; // one file shows enough
    }
    std::cout << numKept << " files kept, " << numFaulty << " refused by rule\n";
    EXPECT_GE(numKept, 10u)
        << "this machine has too few settings files of other programs; ./test installs some";
}

namespace {

// Where two texts differ.
struct Difference {
    std::size_t begin = 0;
    std::string before, after;
};

Difference Compare(const std::string& before, const std::string& after) {
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t begin = 0;
    while (begin < shorter && before[begin] == after[begin]) ++begin;
    std::size_t end = 0;
    while (end < shorter - begin && before[before.size() - 1 - end] == after[after.size() - 1 - end]) ++end;
    return {begin, before.substr(begin, before.size() - begin - end),
            after.substr(begin, after.size() - begin - end)};
}

// Makes one edit after the other in a copy of the document, and asks what became of the bytes.
struct Editor {
    const std::string& content;
    IniDocument document = {};

    Difference Try(const std::function<void()>& edit) {
        IniFile::Fault fault;
        EXPECT_TRUE(document.Parse(content, fault));
        edit();
        const std::string text = document.Text();
        IniFile file;
        EXPECT_EQ(L"", file.ReadText(text, fault).Text());
        read = std::move(file);
        return Compare(content, text);
    }
    IniFile read = {}; // of the edited text
};

std::size_t NumLines(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

void TryEditsOfKey(Editor& editor, const std::wstring& section, const SectionKey& key) {
    SCOPED_TRACE(ToUtf8(key.GetName().String()));
    const std::wstring& name = key.GetName();
    const Difference changed =
        editor.Try([&] { EXPECT_TRUE(editor.document.Set(section, name, L"<another value>")); });
    EXPECT_LE(changed.before.size(), key.GetValue().size());
    EXPECT_EQ(0u, NumLines(changed.before + changed.after));
    EXPECT_EQ(L"<another value>", editor.read[section][name].GetValue());

    const Difference removed = editor.Try([&] { EXPECT_TRUE(editor.document.Remove(section, name)); });
    EXPECT_EQ("", removed.after);
    EXPECT_GE(1u, NumLines(removed.before));
}

void TryEditsOfSection(Editor& editor, const std::wstring& section) {
    SCOPED_TRACE(ToUtf8(section));
    const Difference added =
        editor.Try([&] { EXPECT_TRUE(editor.document.Set(section, L"New key", L"<a value>")); });
    EXPECT_EQ("", added.before);
    EXPECT_EQ(1u, NumLines(added.after));
    EXPECT_EQ(L"<a value>", editor.read[section][L"New key"].GetValue());

    const Difference removed = editor.Try([&] { EXPECT_TRUE(editor.document.Remove(section)); });
    EXPECT_EQ("", removed.after);
    EXPECT_FALSE(editor.read.HasSection(section));
}

} // namespace

TEST(ForeignSettingsFiles, KeepEveryByteButTheEditedOnes) {
    std::size_t numFiles = 0;
    std::size_t numPlainFiles = 0; // without a section: they get one
    std::size_t numKeys = 0;
    for (const std::filesystem::path& path :
         FilesIn({"/usr/share", "/usr/lib", "/etc"}, {".service", ".timer", ".socket", ".target", ".desktop",
                                                      ".theme", ".ini", ".conf", ".cfg", ".pc"})) {
        std::error_code error;
        if (std::filesystem::file_size(path, error) > 1u << 20 || error) continue;
        const std::string content = ReadBytes(path);
        Editor editor{content};
        IniFile::Fault fault;
        if (content.empty() || !editor.document.Parse(content, fault)) continue; // /etc has files of secrets
        SCOPED_TRACE(path.string());
        const std::vector<std::wstring> sections = editor.document.SectionNames();
        ++(sections.empty() ? numPlainFiles : numFiles);
        IniFile file;
        EXPECT_EQ(L"", file.ReadText(content, fault).Text());
        for (const std::size_t i : std::set<std::size_t>{0, sections.size() / 2, sections.size() - 1}) {
            if (i >= sections.size()) continue;
            TryEditsOfSection(editor, sections[i]);
            const Section& section = file[sections[i]];
            for (const int k : std::set<int>{0, section.NumKeys() / 2, section.NumKeys() - 1}) {
                if (k < 0 || k >= section.NumKeys() || !section[k].IsValid()) continue;
                TryEditsOfKey(editor, sections[i], section[section[k].GetName()]);
                ++numKeys;
            }
        }
        const Difference added =
            editor.Try([&] { EXPECT_TRUE(editor.document.Set(L"New section", L"New key", L"<a value>")); });
        EXPECT_EQ("", added.before);
        EXPECT_GE(3u, NumLines(added.after));
        EXPECT_EQ(L"<a value>", editor.read[L"New section"][L"New key"].GetValue());
        if (::testing::Test::HasFailure()) return; // one file shows enough
    }
    std::cout << numFiles << " files with sections, " << numPlainFiles << " without, " << numKeys
              << " keys edited\n";
    if (numFiles < 300) GTEST_SKIP() << "this machine has too few settings files of other programs";
}
