// SPDX-License-Identifier: MIT
#include "VelmBase/private/LanguageFile.h"

#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

namespace {

struct Entry {
    std::uint32_t number;
    std::wstring original, translation;

    bool operator==(const Entry&) const = default;
};

using Entries = std::vector<Entry>;

void PrintTo(const Entry& entry, std::ostream* out) {
    *out << entry.number << " " << ::testing::PrintToString(entry.original) << " "
         << ::testing::PrintToString(entry.translation);
}

Entries Read(std::string_view bytes) {
    Entries entries;
    LANGUAGES::ReadEntries(
        bytes, [&](std::uint32_t number, const std::wstring& original, const std::wstring& translation) {
            entries.push_back({number, original, translation});
        });
    return entries;
}

const std::string kEntry = "msgctxt \"7\"\nmsgid \"a\"\nmsgstr \"b\"\n";
const Entries kRead = {{7, L"a", L"b"}};

TEST(LanguageFile, HoldsNumberOriginalAndTranslation) {
    struct Row {
        std::string bytes;
        Entries entries;
    };
    for (const Row& row : {
             Row{kEntry, kRead},
             Row{kEntry.substr(0, kEntry.size() - 1), kRead}, // no line break at the end
             Row{"\xEF\xBB\xBF" + kEntry, kRead},
             Row{"msgctxt \"7\"\r\nmsgid \"a\"\r\nmsgstr \"b\"\r\n", kRead},
             Row{"  msgctxt\t\"7\" \n\tmsgid\"a\"\nmsgstr   \"b\"\n", kRead},
             Row{"# c\n#: place\n" + kEntry + "#~ msgid \"old\"\n", kRead},
             Row{"msgctxt \"\"\n\"7\"\nmsgid \"\"\n\"a\"\nmsgstr \"\"\n\"b\"\n", kRead},
             Row{kEntry + "msgctxt \"08\"\nmsgid \"\"\nmsgstr \"\"\n", {{7, L"a", L"b"}, {8, L"", L""}}},
             Row{kEntry + kEntry, {kRead[0], kRead[0]}},
             Row{"msgctxt \"7\"\nmsgid \" a\\n\\t\\\"\\\\ \"\nmsgstr \"\"\n\" "
                 "\xC3\xBC\"\n\"\xF0\x9F\x8C\x8A,\"\n",
                 {{7, L" a\n\t\"\\ ", L" \u00FC\U0001F30A,"}}},
             Row{"msgctxt \"999999999\"\nmsgid \"a\"\nmsgstr \"b\"\n", {{999999999, L"a", L"b"}}},
             Row{"", {}},
         })
        EXPECT_EQ(row.entries, Read(row.bytes)) << row.bytes;
}

// Each stands between two good entries, with and without empty lines.
TEST(LanguageFile, WhatIsDamagedIsLeftOutAlone) {
    const std::string damages[] = {
        "msgctxt \"8\"\nmsgid \"a\"\n",
        "msgctxt \"8\"\nmsgstr \"b\"\n",
        "msgid \"a\"\nmsgstr \"b\"\n", // the head that editors of such files write
        "msgid \"\"\nmsgstr \"\"\n\"Content-Type: text/plain\\n\"\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgid \"b\"\nmsgstr \"b\"\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgid_plural \"a\"\nmsgstr[0] \"b\"\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"b\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr b\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"b\" c\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"b\"c\"\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"b\\\"\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"\\x\"\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"b\xFF\"\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"b\xC3\"\n",
        std::string("msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"b\0\"\n", 34),
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"\x1B[31m\"\n",
        "msgctxt \"8\"\nmsgid \"a\"\nmsgstr \"\xC2\x9B\"\n",
        "msgctxt \"\"\nmsgid \"a\"\nmsgstr \"b\"\n",
        "msgctxt \"-8\"\nmsgid \"a\"\nmsgstr \"b\"\n",
        "msgctxt \"8 \"\nmsgid \"a\"\nmsgstr \"b\"\n",
        "msgctxt \"0x8\"\nmsgid \"a\"\nmsgstr \"b\"\n",
        "msgctxt \"4294967304\"\nmsgid \"a\"\nmsgstr \"b\"\n",
        "#, fuzzy\nmsgctxt \"8\"\nmsgid \"a\"\nmsgstr \"b\"\n",
        "#, c-format, fuzzy\nmsgctxt \"8\"\nmsgid \"a\"\nmsgstr \"b\"\n",
        "msgctxt \"8\"\n#, fuzzy\nmsgid \"a\"\nmsgstr \"b\"\n",
        "noise\n",
        "\"\n",
        "msgctxt\n",
    };
    for (const std::string& damage : damages) {
        EXPECT_EQ(Entries({kRead[0], kRead[0]}), Read(kEntry + "\n" + damage + "\n" + kEntry)) << damage;
        EXPECT_EQ(kRead, Read(damage + kEntry)) << damage;
    }
}

TEST(LanguageFile, AByteThatChangesCostsTheEntriesThatItTouches) {
    const std::string bytes = kEntry + "\n" + kEntry + "\n" + kEntry;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        for (const char byte : {'\0', '"', '\\', '\n', '#', 'x', '\xFF'}) {
            std::string changed = bytes;
            changed[i] = byte;
            std::size_t intact = 0;
            for (const Entry& entry : Read(changed)) intact += entry == kRead[0];
            EXPECT_GE(intact, bytes[i] == '\n' ? 1u : 2u)
                << changed; // lines that are joined may be those of two
        }
}

TEST(LanguageFile, OfAFileTheBytesAreReadUpToAMebibyte) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.po");
    const auto count = [&](bool isRead) {
        int entries = 0;
        EXPECT_EQ(isRead, LANGUAGES::ReadEntriesOf(path, [&](auto&&...) { ++entries; }));
        return entries;
    };
    EXPECT_EQ(0, count(false));
    WriteBytes(path, kEntry);
    EXPECT_EQ(1, count(true));
    WriteBytes(path, kEntry + std::string((1 << 20) - kEntry.size(), '\n'));
    EXPECT_EQ(1, count(true));
    WriteBytes(path, kEntry + std::string((1 << 20) - kEntry.size() + 1, '\n'));
    EXPECT_EQ(0, count(false));
    std::filesystem::remove(NativePath(path));
    std::filesystem::create_directory(NativePath(path));
    EXPECT_EQ(0, count(false));
}

} // namespace
