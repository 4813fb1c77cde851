#include "UtilityDLL/settings/IniFile.h"
#include "tests/support/TestFiles.h"

#include <algorithm>
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

std::vector<std::filesystem::path> FindFiles() {
    using Iterator = std::filesystem::recursive_directory_iterator;
    const std::set<std::string> endings = {".service", ".timer", ".socket", ".desktop", ".theme", ".ini"};
    std::set<std::filesystem::path> found; // by their real place: many are linked from several folders
    for (const char* root : {"/usr/lib/systemd", "/lib/systemd", "/usr/share/applications",
                             "/usr/share/icons", "/usr/lib/php", "/etc/php", "/usr/share/vim"}) {
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
    for (const std::filesystem::path& path : FindFiles()) {
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
