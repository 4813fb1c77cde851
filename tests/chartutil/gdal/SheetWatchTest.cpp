// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/project/FileWatch.h"
#include "tests/chartutil/posix/TypedCtrlC.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace {

constexpr std::chrono::milliseconds kNotAtAll(0);
constexpr std::chrono::seconds kAtMost(20);

class FileWatchTest : public ::testing::Test {
protected:
    std::filesystem::path Path(const char* name) const { return folder.Path() / name; }
    TemporaryFolder folder;
    FileWatch watch{{UserText(Path("a.ini").string()), UserText(Path("b.csv").string())}};
};

TEST_F(FileWatchTest, SeesWhatIsSavedInEachWay) {
    EXPECT_FALSE(watch.Wait(kNotAtAll));
    WriteBytes(Path("a.ini"), "1"); // which was not there
    EXPECT_TRUE(watch.Wait(kAtMost));
    EXPECT_FALSE(watch.Wait(kNotAtAll));
    WriteBytes(Path("a.ini~"), "2");
    EXPECT_FALSE(watch.Wait(kNotAtAll)) << "another file";
    std::filesystem::rename(Path("a.ini~"), Path("a.ini"));
    EXPECT_TRUE(watch.Wait(kAtMost)) << "by another name";
    std::filesystem::remove(Path("a.ini"));
    WriteBytes(Path("a.ini"), "3");
    WriteBytes(Path("b.csv"), "3");
    EXPECT_TRUE(watch.Wait(kAtMost));
    EXPECT_FALSE(watch.Wait(kNotAtAll)) << "several saves are one change";
}

TEST_F(FileWatchTest, SeesWhatALinkPointsTo) {
    const TemporaryFolder elsewhere;
    WriteBytes(elsewhere.Path() / "real.ini", "1");
    std::filesystem::create_symlink(elsewhere.Path() / "real.ini", Path("link.ini"));
    FileWatch linked({UserText(Path("link.ini").string())});
    WriteBytes(elsewhere.Path() / "real.ini", "2");
    EXPECT_TRUE(linked.Wait(kAtMost));
}

TEST(SheetWatch, DrawsAgainTellsOfFaultsAndEndsByCtrlC) {
    const TemporaryFolder folder;
    std::filesystem::copy(TEST_DATA_FOLDER "/chartutil/data/tiny-chart", folder.Path() / "p");
    const std::filesystem::path settings = folder.Path() / "p" / "project.ini";
    const std::string good = ReadBytes(settings), picture = (folder.Path() / "p.svg").string();
    int terminal = -1;
    const std::string program = ChartutilPath();
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0)
        BecomeChartutil({"sheet", settings.parent_path().string(), "-o", picture, "--watch"}, program);
    std::string shown;
    const auto readUntil = [&](const std::string& text) {
        char bytes[4096];
        while (shown.find(text) == std::string::npos) {
            const ssize_t got = read(terminal, bytes, sizeof bytes);
            if (got <= 0) return false;
            shown.append(bytes, static_cast<std::size_t>(got));
        }
        shown.erase(0, shown.find(text) + text.size());
        return true;
    };
    EXPECT_TRUE(readUntil("drawn: "));
    const std::string before = ReadBytes(std::filesystem::path(picture));
    WriteBytes(settings, good + "[Wrong]\n");
    EXPECT_TRUE(readUntil("[Wrong]: there is no such section"));
    std::filesystem::remove(settings);
    EXPECT_TRUE(readUntil("is no project"));
    WriteBytes(folder.Path() / "p" / "new", good);
    std::filesystem::rename(folder.Path() / "p" / "new", settings);
    EXPECT_TRUE(readUntil("drawn: "));
    EXPECT_EQ(before, ReadBytes(std::filesystem::path(picture)));
    EXPECT_EQ(1, write(terminal, "\x03", 1));
    while (readUntil("\n")) {
    }
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT);
}

} // namespace
