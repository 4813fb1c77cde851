// The moments between opening the temporary file of a save and having it: another process may finish or begin
// in them. Here only because the system call that lies in between is replaced for this program.
#include "VelmBase/File.h"

#include "tests/support/TestFiles.h"

#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// Called around the n-th flock() of the library, from 1.
std::function<void(int)> beforeLock, afterLock;
int numLocks = 0;

ino_t NumberOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

/// What another process does with the temporary file.
class OtherProcess {
public:
    explicit OtherProcess(const std::string& temporary) : m_temporary(temporary) {}
    ~OtherProcess() { Close(); }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    void Begin() {
        m_fd = open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
        ASSERT_NE(-1, m_fd);
        ASSERT_EQ(0, syscall(SYS_flock, m_fd, LOCK_EX | LOCK_NB));
        ASSERT_EQ(5, write(m_fd, "other", 5));
        m_number = NumberOf(m_temporary);
    }
    bool HasItsFile() const { return m_number != 0 && NumberOf(m_temporary) == m_number; }
    void Finish(const std::string& target) {
        ASSERT_EQ(0, rename(m_temporary.c_str(), target.c_str()));
        Close();
    }

private:
    void Close() {
        if (m_fd != -1) close(m_fd);
        m_fd = -1;
    }
    std::string m_temporary;
    int m_fd = -1;
    ino_t m_number = 0;
};

class ReplaceContents_Lock : public ::testing::Test {
protected:
    void SetUp() override {
        numLocks = 0;
        beforeLock = afterLock = nullptr;
        WriteBytes(m_folder.File(L"a.ini"), "old");
    }
    void TearDown() override { beforeLock = afterLock = nullptr; }
    std::string Target() const { return ToUtf8(m_folder.File(L"a.ini")); }
    std::string Temporary() const { return ToUtf8(m_folder.File(L".a.ini.saving")); }

    TemporaryFolder m_folder;
};

} // namespace

extern "C" __attribute__((visibility("default"))) int flock(int fd, int operation) noexcept {
    ++numLocks;
    if (beforeLock) beforeLock(numLocks);
    const auto result = static_cast<int>(syscall(SYS_flock, fd, operation));
    const int error = errno;
    if (afterLock) afterLock(numLocks);
    errno = error;
    return result;
}

TEST_F(ReplaceContents_Lock, TheFileOfAProcessThatBeganBetweenTwoLooksIsNotRemoved) {
    // A killed process left its file. Two processes find it, and the other one is faster.
    WriteBytes(m_folder.File(L".a.ini.saving"), "torn");
    OtherProcess other(Temporary());
    afterLock = [&](int n) {
        if (n == 1) { // locked is the file of the dead
            ASSERT_EQ(0, unlink(Temporary().c_str()));
            other.Begin();
        } else if (n == 2) { // refused, since the other has it
            EXPECT_TRUE(other.HasItsFile()) << "its file was removed";
            other.Finish(Target());
        }
    };
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(m_folder.File(L"a.ini"), "new"));
    EXPECT_EQ(3, numLocks);
    EXPECT_EQ("new", ReadBytes(m_folder.File(L"a.ini")));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

TEST_F(ReplaceContents_Lock, AFileThatWasTakenForADeadOnesBeforeItsLockIsMadeAgain) {
    OtherProcess other(Temporary());
    beforeLock = [&](int n) {
        if (n != 1) return;
        ASSERT_EQ(0, unlink(Temporary().c_str())); // made and not locked yet: the other took it for left
        other.Begin();
    };
    afterLock = [&](int n) {
        if (n != 2) return;
        EXPECT_TRUE(other.HasItsFile()) << "its file was removed or replaced";
        other.Finish(Target());
    };
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(m_folder.File(L"a.ini"), "new"));
    EXPECT_EQ(3, numLocks);
    EXPECT_EQ("new", ReadBytes(m_folder.File(L"a.ini")));
    EXPECT_EQ(1u, m_folder.NumFiles());
}
