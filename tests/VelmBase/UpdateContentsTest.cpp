// SPDX-License-Identifier: MIT
#include "VelmBase/File.h"

#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

std::error_code Append(const std::wstring& path, const std::string& text) {
    return FILES::UpdateContents(path, [&](std::string& content, bool) {
        content += text;
        return true;
    });
}

class UpdateContents : public ::testing::Test {
protected:
    std::wstring Path() const { return m_folder.File(L"a.ini"); }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(UpdateContents, ChangesWhatTheFileHolds) {
    const std::string large(300'000, '\0');
    for (const std::string& before : {std::string("old\r\n"), std::string(), large}) {
        WriteBytes(Path(), before);
        EXPECT_EQ(std::error_code(), FILES::UpdateContents(Path(), [&](std::string& content, bool exists) {
                      EXPECT_TRUE(exists);
                      EXPECT_EQ(before, content);
                      content.insert(0, "new ");
                      return true;
                  }));
        EXPECT_EQ("new " + before, ReadBytes(Path()));
        EXPECT_EQ(1u, m_folder.NumFiles());
    }
}

TEST_F(UpdateContents, MakesAFileThatIsNotThere) {
    EXPECT_EQ(std::error_code(), FILES::UpdateContents(Path(), [](std::string& content, bool exists) {
                  EXPECT_FALSE(exists);
                  EXPECT_EQ("", content);
                  content = "new";
                  return true;
              }));
    EXPECT_EQ("new", ReadBytes(Path()));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

TEST_F(UpdateContents, LeavesTheFileWhereTheChangeIsNotWanted) {
    const auto refuse = [](std::string& content, bool) {
        content = "new";
        return false;
    };
    EXPECT_EQ(std::error_code(), FILES::UpdateContents(Path(), refuse));
    EXPECT_EQ(0u, m_folder.NumFiles());
    WriteBytes(Path(), "old");
    EXPECT_EQ(std::error_code(), FILES::UpdateContents(Path(), refuse));
    EXPECT_EQ("old", ReadBytes(Path()));
    EXPECT_EQ(std::error_code(), Append(Path(), "+more")) << "it is still locked";
}

TEST_F(UpdateContents, PassesOnWhatTheChangeThrowsAndLeavesTheFile) {
    WriteBytes(Path(), "old");
    EXPECT_THROW(std::ignore = FILES::UpdateContents(Path(),
                                                     [](std::string& content, bool) -> bool {
                                                         content = "new";
                                                         throw std::runtime_error("no");
                                                     }),
                 std::runtime_error);
    EXPECT_EQ("old", ReadBytes(Path()));
    EXPECT_EQ(1u, m_folder.NumFiles());
    EXPECT_EQ(std::error_code(), Append(Path(), "+more")) << "it is still locked";
}

TEST_F(UpdateContents, KeepsHardLinksTogether) {
    WriteBytes(Path(), "old");
    std::filesystem::create_hard_link(NativePath(Path()), m_folder.Path() / "other.ini");
    EXPECT_EQ(std::error_code(), Append(Path(), "+more"));
    EXPECT_EQ("old+more", ReadBytes(m_folder.File(L"other.ini")));
    EXPECT_EQ(2u, m_folder.NumFiles());
}

TEST_F(UpdateContents, RefusesWhatIsNoFileBeforeTheChangeIsAskedFor) {
    const auto change = [](std::string&, bool) {
        ADD_FAILURE() << "asked";
        return true;
    };
    EXPECT_EQ(std::errc::is_a_directory, FILES::UpdateContents(WidePath(m_folder.Path()), change));
    EXPECT_EQ(std::errc::no_such_file_or_directory,
              FILES::UpdateContents(m_folder.File(L"missing/a.ini"), change));
    EXPECT_EQ(std::errc::invalid_argument, FILES::UpdateContents(L"", change));
    EXPECT_EQ(0u, m_folder.NumFiles());
}

TEST_F(UpdateContents, BeginsAgainWithWhatAProgramWithoutALockHasWritten) {
    const auto rewrite = [&] { WriteBytes(Path(), "edited"); };
    const auto replace = [&] {
        WriteBytes(m_folder.File(L"editor's"), "edited");
        std::filesystem::rename(NativePath(m_folder.File(L"editor's")), NativePath(Path()));
    };
    const auto remove = [&] { std::filesystem::remove(NativePath(Path())); };
    const std::vector<std::pair<std::function<void()>, std::string>> editors = {
        {rewrite, "edited"}, {replace, "edited"}, {remove, ""}};
    for (const auto& [edit, edited] : editors) {
        WriteBytes(Path(), "old");
        std::vector<std::string> seen;
        EXPECT_EQ(std::error_code(), FILES::UpdateContents(Path(), [&](std::string& content, bool exists) {
                      EXPECT_EQ(!content.empty(), exists);
                      seen.push_back(content);
                      content += "+more";
                      if (seen.size() == 1) edit();
                      return true;
                  }));
        EXPECT_EQ((std::vector<std::string>{"old", edited}), seen);
        EXPECT_EQ(edited + "+more", ReadBytes(Path()));
        EXPECT_EQ(1u, m_folder.NumFiles());
    }
}

TEST_F(UpdateContents, GivesUpAFileThatIsWrittenAgainAndAgain) {
    WriteBytes(Path(), "0");
    std::string written;
    EXPECT_EQ(std::errc::device_or_resource_busy,
              FILES::UpdateContents(Path(), [&](std::string& content, bool) {
                  content += "+more";
                  WriteBytes(Path(), written += "1");
                  return true;
              }));
    EXPECT_EQ(20u, written.size());
    EXPECT_EQ(written, ReadBytes(Path()));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

TEST_F(UpdateContents, ManyThreadsLoseNothingOfEachOther) {
    constexpr int kThreads = 10;
    constexpr int kUpdates = 10;
    for (const bool hardLinked : {false, true}) { // replaced, and written in place
        if (hardLinked) {
            WriteBytes(Path(), "");
            std::filesystem::create_hard_link(NativePath(Path()), m_folder.Path() / "other.ini");
        }
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back([&, t] {
                for (int i = 0; i < kUpdates; ++i)
                    EXPECT_EQ(std::error_code(), Append(Path(), std::string(1, static_cast<char>('a' + t))));
            });
        for (std::thread& thread : threads) thread.join();
        const std::string content = ReadBytes(Path());
        for (int t = 0; t < kThreads; ++t)
            EXPECT_EQ(kUpdates, std::count(content.begin(), content.end(), static_cast<char>('a' + t)));
        EXPECT_EQ(hardLinked ? 2u : 1u, m_folder.NumFiles());
    }
}
