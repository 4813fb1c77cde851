// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/CRCFile.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using Json = nlohmann::json;

namespace {

class CrcCommand : public ::testing::Test {
protected:
    std::string Path(const char* name) const { return ToUtf8(m_folder.File(NameOf(name))); }
    std::filesystem::path Native(const char* name) const { return m_folder.Path() / name; }
    std::string Bytes(const char* name) const { return ReadBytes(Native(name)); }
    std::string Write(const char* name, std::string_view bytes) const {
        WriteBytes(Native(name), bytes);
        return Path(name);
    }

    // Whether the library's own class takes the file for sealed.
    bool Opens(const char* name) const {
        CRCFile file;
        return static_cast<bool>(file.Open(m_folder.File(NameOf(name)), L"rb"));
    }

    TemporaryFolder m_folder;

private:
    static std::wstring NameOf(const char* name) { return FromUtf8(name); }
};

constexpr std::string_view kDigits = "123456789"; // its CRC-32 is CBF43926
const std::string kSealedDigits = std::string(kDigits) + "\x26\x39\xF4\xCB";

} // namespace

TEST_F(CrcCommand, HelpShowsExamplesAndExitCodes) {
    for (const char* name : {"seal", "check", "print"}) {
        SCOPED_TRACE(name);
        const ProgramResult result = RunChartutil({"crc", name, "--help"});
        EXPECT_EQ(0, result.exitCode);
        EXPECT_THAT(result.output, AllOf(HasSubstr(std::string("  chartutil crc ") + name),
                                         HasSubstr("Exit codes: 0 success")));
    }
    EXPECT_EQ(2, RunChartutil({"crc"}).exitCode);
    EXPECT_EQ(2, RunChartutil({"crc", "seal"}).exitCode);
}

TEST_F(CrcCommand, SealAddsTheChecksumOnce) {
    const std::string path = Write("digits", kDigits);
    const ProgramResult first = RunChartutil({"crc", "seal", path});
    EXPECT_EQ(0, first.exitCode);
    EXPECT_EQ(path + ": sealed, CBF43926\n", first.output);
    EXPECT_EQ(kSealedDigits, Bytes("digits"));
    EXPECT_TRUE(Opens("digits"));

    const ProgramResult second = RunChartutil({"crc", "seal", path});
    EXPECT_EQ(0, second.exitCode);
    EXPECT_THAT(second.output, EndsWith(": sealed already, left alone\n"));
    EXPECT_EQ(kSealedDigits, Bytes("digits"));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

TEST_F(CrcCommand, SealsWhatTheLibraryAccepts) {
    const std::size_t block = 1024 * 1024;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{3}, std::size_t{4},
                                   std::size_t{5}, block - 1, block, block + 3, block + 4, 2 * block + 5}) {
        SCOPED_TRACE(size);
        std::string bytes(size, '\0');
        for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 251 + 1);
        const std::string path = Write("data", bytes);
        EXPECT_EQ(1, RunChartutil({"crc", "check", path}).exitCode);
        EXPECT_FALSE(Opens("data"));
        EXPECT_EQ(0, RunChartutil({"crc", "seal", path}).exitCode);
        EXPECT_EQ(0, RunChartutil({"crc", "check", path}).exitCode);
        EXPECT_TRUE(Opens("data"));
        EXPECT_EQ(bytes, Bytes("data").substr(0, size));
        EXPECT_EQ(size + 4, Bytes("data").size());
    }
}

TEST_F(CrcCommand, ChecksWhatTheLibrarySealed) {
    {
        CRCFile file;
        ASSERT_TRUE(file.Open(m_folder.File(L"data"), L"wb"));
        file.Write(kDigits.data(), 1, kDigits.size());
    }
    const ProgramResult intact = RunChartutil({"crc", "check", Path("data")});
    EXPECT_EQ(0, intact.exitCode);
    EXPECT_EQ(Path("data") + ": intact\n", intact.output);

    const std::string sealed = Bytes("data");
    for (std::size_t i = 0; i < sealed.size(); ++i) {
        std::string changed = sealed;
        changed[i] = static_cast<char>(changed[i] ^ 0x10);
        Write("data", changed);
        const ProgramResult result = RunChartutil({"crc", "check", Path("data")});
        EXPECT_EQ(1, result.exitCode) << i;
        EXPECT_THAT(result.output, HasSubstr("FAILED"));
    }
}

TEST_F(CrcCommand, PrintShowsStoredAndComputedValues) {
    Write("sealed", kSealedDigits);
    Write("plain", kDigits);
    Write("short", "abc");
    const ProgramResult text = RunChartutil({"crc", "print", Path("sealed")});
    EXPECT_EQ(0, text.exitCode);
    EXPECT_THAT(text.output, HasSubstr("stored CBF43926, computed CBF43926, over all 13 bytes "));

    const ProgramResult json =
        RunChartutil({"crc", "print", "--json", Path("sealed"), Path("plain"), Path("short")});
    EXPECT_EQ(0, json.exitCode);
    const Json files = Json::parse(json.output)["files"];
    ASSERT_EQ(3u, files.size());
    EXPECT_EQ("CBF43926", files[0]["stored"]);
    EXPECT_EQ("CBF43926", files[0]["computed"]);
    EXPECT_EQ(13, files[0]["size"]);
    EXPECT_EQ("39383736", files[1]["stored"]);   // "6789", low byte first
    EXPECT_EQ("CBF53A1C", files[1]["computed"]); // of "12345"
    EXPECT_EQ("CBF43926", files[1]["whole"]);
    EXPECT_TRUE(files[2]["stored"].is_null());
    EXPECT_EQ("352441C2", files[2]["whole"]); // the CRC-32 of "abc"
}

TEST_F(CrcCommand, OneBadFileDoesNotKeepTheOthersFromBeingDone) {
    const std::string good = Write("good", kSealedDigits);
    const std::string bad = Write("bad", kDigits);
    const ProgramResult checked = RunChartutil({"crc", "check", Path("none"), bad, good});
    EXPECT_EQ(3, checked.exitCode); // an input error weighs more than a failed check
    EXPECT_THAT(checked.error, HasSubstr(Path("none") + ": no such file"));
    EXPECT_THAT(checked.output, AllOf(HasSubstr(bad + ": FAILED"), HasSubstr(good + ": intact")));
    EXPECT_EQ(1, RunChartutil({"crc", "check", bad, good}).exitCode);

    const ProgramResult sealed = RunChartutil({"crc", "seal", "--json", Path("none"), bad, good});
    EXPECT_EQ(3, sealed.exitCode);
    const Json files = Json::parse(sealed.output)["files"];
    EXPECT_THAT(files[0]["error"].get<std::string>(), HasSubstr("no such file"));
    EXPECT_EQ(true, files[1]["sealed"]);
    EXPECT_EQ(false, files[2]["sealed"]);
    EXPECT_TRUE(Opens("bad"));
}

TEST_F(CrcCommand, RefusesFoldersAndLeavesNothing) {
    std::filesystem::create_directory(Native("folder"));
    for (const char* name : {"seal", "check", "print"}) {
        const ProgramResult result = RunChartutil({"crc", name, Path("folder")});
        EXPECT_EQ(3, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr("is a folder"));
    }
    EXPECT_EQ(1u, m_folder.NumFiles());
}
