// SPDX-License-Identifier: MIT
// Disks that are full, and files and folders that a user may not read or write.

#include "UtilityDLL/contours/private/ContourEditing.h"

#include "tests/support/TestFiles.h"
#include "tests/support/posix/SizeLimit.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

using ::testing::HasSubstr;

namespace {

std::wstring Saved(const std::wstring& path) {
    ContourDefinitionList list;
    list.Add({.level = 5});
    EXPECT_TRUE(list.Save(path.c_str()));
    return path;
}

// In a process of a user who is not root: what `say` returns there.
template <typename Say> std::string AsOrdinaryUser(const Say& say) {
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(3);
        const std::string said = ToUtf8(say());
        _exit(write(ends[1], said.data(), said.size()) < 0 ? 2 : 0);
    }
    close(ends[1]);
    std::string said(10000, '\0');
    std::size_t size = 0;
    for (ssize_t count = 0; (count = read(ends[0], said.data() + size, said.size() - size)) > 0;)
        size += static_cast<std::size_t>(count);
    close(ends[0]);
    said.resize(size);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(0, status);
    return said;
}

constexpr char kNotSaved[] =
    "The contours were not saved.\nCheck that the folder may be written to and has room:";

} // namespace

TEST(ContourEditing_Fault, AFullDiskIsSaidAndTheOldFileStays) {
    const TemporaryFolder folder;
    const std::wstring path = Saved(folder.File(L"chart.cdf"));
    const std::string before = ReadBytes(path);
    ContourEditing editing(path);
    for (int level = 10; level < 100; ++level) editing.Add({.level = static_cast<double>(level)});
    {
        const SizeLimit full(before.size());
        EXPECT_THAT(ToUtf8(editing.Save(editing.Target())), HasSubstr(kNotSaved));
    }
    EXPECT_EQ(before, ReadBytes(path));
    EXPECT_EQ(1U, folder.NumFiles());
    EXPECT_EQ(L"", editing.Question()); // it is the file that was opened still
    EXPECT_EQ(L"", editing.Save(editing.Target()));
    EXPECT_NE(before, ReadBytes(path));
}

TEST(ContourEditing_Fault, AFolderThatMayNotBeWrittenToIsSaid) {
    const TemporaryFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0555));
    EXPECT_THAT(AsOrdinaryUser([&] {
                    ContourEditing editing(folder.File(L"new.cdf"));
                    editing.Add({.level = 5});
                    return editing.Save(editing.Target());
                }),
                HasSubstr(kNotSaved));
    EXPECT_EQ(0U, folder.NumFiles());
}

TEST(ContourEditing_Fault, AFileThatMayNotBeWrittenIsSaidAndStays) {
    const TemporaryFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
    const std::wstring path = Saved(folder.File(L"chart.cdf"));
    std::filesystem::permissions(NativePath(path), std::filesystem::perms(0444));
    const std::string before = ReadBytes(path);
    EXPECT_THAT(AsOrdinaryUser([&] {
                    ContourEditing editing(path);
                    editing.Add({.level = 7});
                    return editing.Question() + editing.Save(editing.Target());
                }),
                HasSubstr(kNotSaved));
    EXPECT_EQ(before, ReadBytes(path));
}

TEST(ContourEditing_Fault, AFileThatMayNotBeReadIsSaidAndAskedFor) {
    const TemporaryFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0777));
    const std::wstring path = Saved(folder.File(L"chart.cdf"));
    std::filesystem::permissions(NativePath(path), std::filesystem::perms(0000));
    const std::string said = AsOrdinaryUser([&] {
        const ContourEditing editing(path);
        return editing.OpeningFault() + L"|" + editing.Question();
    });
    EXPECT_THAT(said, HasSubstr("or cannot be read:\n\t" + ToUtf8(path) + "|"));
    EXPECT_THAT(said, HasSubstr("Replace it?\n\t" + ToUtf8(path)));
}
