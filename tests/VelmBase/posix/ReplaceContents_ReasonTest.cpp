// SPDX-License-Identifier: MIT
// Why a file could not be written or read, in the words of the system.
#include "VelmBase/File.h"

#include "tests/support/TestFiles.h"
#include "tests/support/posix/SizeLimit.h"

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// The number of the reason that `act` gives to a user to whom permissions mean something.
int AsOrdinaryUser(const std::function<std::error_code()>& act) {
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(255);
        _exit(act().value());
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) != 255);
    return WEXITSTATUS(status);
}

std::error_code Replace(const std::wstring& path) {
    return FILES::ReplaceContents(path, std::string(200'000, 'n'));
}
std::error_code Update(const std::wstring& path) {
    return FILES::UpdateContents(path, [](std::string& content, bool) {
        content.append(200'000, 'n');
        return true;
    });
}
std::error_code Read(const std::wstring& path) { return FILES::Reader(path).Error(); }

class ReplaceContents_Reason : public ::testing::Test {
protected:
    void SetUp() override { WriteBytes(m_folder.File(L"old.ini"), "old"); }
    std::string Native(const std::wstring& name) const { return ToUtf8(m_folder.File(name)); }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(ReplaceContents_Reason, IsThatOfWhatStandsAtThePath) {
    fs::create_directory(m_folder.Path() / "folder");
    fs::create_symlink("loop", m_folder.Path() / "loop");
    fs::create_symlink("missing/a.ini", m_folder.Path() / "nowhere");
    ASSERT_EQ(0, mkfifo(Native(L"pipe").c_str(), 0666));
    struct Row {
        std::wstring name;
        std::errc written, read;
    };
    using enum std::errc;
    const std::errc none{};
    for (const Row& row :
         {Row{L"missing/a.ini", no_such_file_or_directory, no_such_file_or_directory},
          Row{L"missing/", no_such_file_or_directory, no_such_file_or_directory},
          Row{L"old.ini/a.ini", not_a_directory, not_a_directory},
          Row{L"folder", is_a_directory, is_a_directory}, Row{L"folder/", is_a_directory, is_a_directory},
          Row{L"folder/..", is_a_directory, is_a_directory}, Row{L"pipe", invalid_argument, invalid_argument},
          Row{L"loop", too_many_symbolic_link_levels, too_many_symbolic_link_levels},
          Row{L"nowhere", no_such_file_or_directory, no_such_file_or_directory},
          Row{std::wstring(256, L'n'), filename_too_long, filename_too_long},
          Row{std::wstring(L"a\0b", 3), invalid_argument, invalid_argument}, Row{L"old.ini", none, none}}) {
        SCOPED_TRACE(ToUtf8(row.name));
        const std::wstring path = m_folder.File(row.name);
        EXPECT_EQ(std::make_error_condition(row.read), Read(path));
        EXPECT_EQ(std::make_error_condition(row.written), Replace(path));
        EXPECT_EQ(std::make_error_condition(row.written), Update(path));
        EXPECT_EQ(5u, m_folder.NumFiles());
    }
    EXPECT_EQ(std::errc::invalid_argument, Replace(L""));
    EXPECT_EQ(std::errc::invalid_argument, Read(L""));
    EXPECT_EQ(std::errc::invalid_argument, Read(L"/dev/null"));
    EXPECT_EQ(std::errc::invalid_argument, Replace(L"/dev/full"));
}

TEST_F(ReplaceContents_Reason, IsThatOfThePermissions) {
    ASSERT_EQ(0, chmod(m_folder.Path().c_str(), 0755));
    struct Row {
        mode_t mode;
        int replaced, updated, read;
    };
    // In a folder that takes no new file, so that it is written in place.
    for (const Row& row : {Row{0444, EACCES, EACCES, 0}, Row{0000, EACCES, EACCES, EACCES},
                           Row{0222, EACCES, EACCES, EACCES}, Row{0666, 0, 0, 0}}) {
        ASSERT_EQ(0, chmod(Native(L"old.ini").c_str(), row.mode));
        const std::wstring path = m_folder.File(L"old.ini");
        EXPECT_EQ(row.read, AsOrdinaryUser([&] { return Read(path); })) << row.mode;
        EXPECT_EQ(row.replaced, AsOrdinaryUser([&] { return Replace(path); })) << row.mode;
        EXPECT_EQ(row.updated, AsOrdinaryUser([&] { return Update(path); })) << row.mode;
    }
    EXPECT_EQ(EACCES, AsOrdinaryUser([&] { return Replace(m_folder.File(L"new.ini")); }));
    EXPECT_EQ(EACCES, AsOrdinaryUser([&] { return Update(m_folder.File(L"new.ini")); }));
    const auto compose = [](const FILES::ContentSink& sink) { return sink("new"); };
    EXPECT_EQ(EACCES, AsOrdinaryUser([&] {
                  return FILES::ReplaceContents(m_folder.File(L"old.ini"), compose); // not in place
              }));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

TEST_F(ReplaceContents_Reason, IsThatOfTheDisk) {
    const TemporaryFolder mountPoint;
    if (mount("tmpfs", mountPoint.Path().c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no small file system can be mounted here";
    struct Unmount {
        std::string path;
        ~Unmount() { umount(path.c_str()); }
    };
    const Unmount unmount{mountPoint.Path().string()};
    const std::wstring path = mountPoint.File(L"a.ini");
    WriteBytes(path, "old");
    for (const wchar_t* name : {L"a.ini", L"new.ini"}) {
        EXPECT_EQ(std::errc::no_space_on_device, Replace(mountPoint.File(name)));
        EXPECT_EQ(std::errc::no_space_on_device, Update(mountPoint.File(name)));
    }
    ASSERT_EQ(0, mount("tmpfs", unmount.path.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, ""));
    for (const wchar_t* name : {L"a.ini", L"new.ini"}) {
        EXPECT_EQ(std::errc::read_only_file_system, Replace(mountPoint.File(name)));
        EXPECT_EQ(std::errc::read_only_file_system, Update(mountPoint.File(name)));
    }
    EXPECT_EQ("old", ReadBytes(path));
    EXPECT_EQ(1u, mountPoint.NumFiles());
}

TEST_F(ReplaceContents_Reason, IsThatOfALimitOrOfHardLinksOrOfTheComposer) {
    const std::wstring path = m_folder.File(L"old.ini");
    {
        const SizeLimit limit(100'000);
        EXPECT_EQ(std::errc::file_too_large, Replace(path));
        EXPECT_EQ(std::errc::file_too_large, Replace(m_folder.File(L"new.ini")));
    }
    const auto giveUp = [](const FILES::ContentSink&) { return false; };
    EXPECT_EQ(std::errc::operation_canceled, FILES::ReplaceContents(path, giveUp));
    const auto compose = [](const FILES::ContentSink& sink) { return sink("new"); };
    fs::create_hard_link(NativePath(path), m_folder.Path() / "other.ini");
    EXPECT_EQ(std::errc::too_many_links, FILES::ReplaceContents(path, compose));
    EXPECT_EQ("old", ReadBytes(path));
    EXPECT_EQ(2u, m_folder.NumFiles());
}

TEST_F(ReplaceContents_Reason, IsFileExistsWhereSomethingElseHasTheTemporaryName) {
    fs::create_directory(m_folder.Path() / ".old.ini.saving");
    EXPECT_EQ(std::errc::file_exists, Replace(m_folder.File(L"old.ini")));
    EXPECT_EQ("old", ReadBytes(m_folder.File(L"old.ini")));
    EXPECT_EQ(2u, m_folder.NumFiles());
}

TEST_F(ReplaceContents_Reason, AFileThatMayBeWrittenAndNotReadIsReplaced) {
    if (geteuid() != 0) GTEST_SKIP() << "needs root to make a file of another user";
    for (const std::string& path : {m_folder.Path().string(), Native(L"old.ini")})
        ASSERT_EQ(0, chown(path.c_str(), 65534, 65534));
    ASSERT_EQ(0, chmod(Native(L"old.ini").c_str(), 0200));
    EXPECT_EQ(0, AsOrdinaryUser([&] { return Replace(m_folder.File(L"old.ini")); }));
    EXPECT_EQ(200'000u, ReadBytes(m_folder.File(L"old.ini")).size());
    EXPECT_EQ(EACCES, AsOrdinaryUser([&] { return Update(m_folder.File(L"old.ini")); }));
}
