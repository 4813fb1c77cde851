// SPDX-License-Identifier: MIT
// What processes that save the same file do to each other between two of their steps. The system calls that
// lie there are replaced for this program: others come in between, and ten seconds of waiting take no time.
#include "VelmBase/File.h"

#include "tests/support/TestFiles.h"
#include "tests/support/posix/NamelessFiles.h"

#include <csignal>
#include <ctime>
#include <functional>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <tuple>

namespace {

/// Called around the n-th flock() of the library, from 1, and with each pause of it.
std::function<void(int)> beforeLock, afterLock, onPause;
int numLocks = 0;
int numPauses = 0;
double waited = 0; // seconds

ino_t NumberOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

/// What another process does.
class OtherProcess {
public:
    OtherProcess() = default;
    ~OtherProcess() { Unlock(); }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    /// It has that file, which it makes when there is none.
    void Lock(const std::string& path) {
        Unlock();
        m_path = path;
        m_fd = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        ASSERT_NE(-1, m_fd);
        ASSERT_EQ(0, syscall(SYS_flock, m_fd, LOCK_EX | LOCK_NB));
        m_number = NumberOf(path);
    }
    bool HasItsFile() const { return m_number != 0 && NumberOf(m_path) == m_number; }

    /// Replaces the file, and has the new one.
    void Replace(const std::string& path, const std::string& content) {
        const std::string made = path + ".other";
        Lock(made);
        ASSERT_EQ(content.size(), static_cast<std::size_t>(write(m_fd, content.data(), content.size())));
        ASSERT_EQ(0, rename(made.c_str(), path.c_str()));
    }
    void Unlock() {
        if (m_fd != -1) close(m_fd);
        m_fd = -1;
    }

private:
    std::string m_path;
    int m_fd = -1;
    ino_t m_number = 0;
};

class ReplaceContents_Lock : public ::testing::Test {
protected:
    void SetUp() override {
        numLocks = numPauses = 0;
        waited = 0;
        beforeLock = afterLock = onPause = nullptr;
        WriteBytes(Path(), "old");
    }
    void TearDown() override {
        beforeLock = afterLock = onPause = nullptr;
        unsetenv("WITHOUT_NAMELESS_FILES");
    }
    std::wstring Path() const { return m_folder.File(L"a.ini"); }
    std::string Target() const { return ToUtf8(Path()); }
    std::string Temporary() const { return ToUtf8(m_folder.File(L".a.ini.saving")); }

    /// Puts a word behind what the file holds.
    std::error_code Append(const std::string& word) {
        return FILES::UpdateContents(Path(), [&](std::string& content, bool exists) {
            m_seen.push_back(exists ? content : "<no file>");
            content += word;
            return true;
        });
    }
    mode_t Mode() const {
        struct stat status {};
        EXPECT_EQ(0, stat(Target().c_str(), &status));
        return status.st_mode & 07777;
    }

    TemporaryFolder m_folder;
    std::vector<std::string> m_seen; ///< by Append()
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

extern "C" __attribute__((visibility("default"))) int nanosleep(const timespec* time, timespec*) {
    waited += static_cast<double>(time->tv_sec) + static_cast<double>(time->tv_nsec) / 1e9;
    ++numPauses;
    if (onPause) onPause(numPauses);
    return 0;
}

// The file itself

TEST_F(ReplaceContents_Lock, WhoHasTheFileForTenSecondsEndsTheWaiting) {
    OtherProcess other;
    other.Lock(Target());
    EXPECT_EQ(std::errc::device_or_resource_busy, FILES::ReplaceContents(Path(), "new"));
    EXPECT_NEAR(10, waited, 0.5);
    EXPECT_EQ(std::errc::device_or_resource_busy, Append("+more"));
    EXPECT_NEAR(20, waited, 1);
    EXPECT_TRUE(m_seen.empty());
    EXPECT_EQ("old", ReadBytes(Path()));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

TEST_F(ReplaceContents_Lock, AsLongAsOthersFinishTheWaitingGoesOn) {
    // Five others, each of whom has the file for nine seconds.
    OtherProcess others[5];
    others[0].Lock(Target());
    constexpr int kPausesOfNineSeconds = 4500;
    onPause = [&](int n) {
        if (n % kPausesOfNineSeconds != 0) return;
        const int done = n / kPausesOfNineSeconds;
        if (done < 5) others[done].Replace(Target(), "turn " + std::to_string(done));
        others[done - 1].Unlock();
    };
    EXPECT_EQ(std::error_code(), Append("+more"));
    EXPECT_NEAR(45, waited, 1);
    EXPECT_EQ(std::vector<std::string>{"turn 4"}, m_seen);
    EXPECT_EQ("turn 4+more", ReadBytes(Path()));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

TEST_F(ReplaceContents_Lock, AsLongAsTheFileIsWrittenInPlaceTheWaitingGoesOn) {
    OtherProcess other;
    other.Lock(Target());
    constexpr int kPausesOfNineSeconds = 4500;
    onPause = [&](int n) {
        if (n % kPausesOfNineSeconds == 0) WriteBytes(Path(), std::string(static_cast<std::size_t>(n), 'x'));
        if (n == 4 * kPausesOfNineSeconds) other.Unlock();
    };
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(Path(), "new"));
    EXPECT_NEAR(36, waited, 1);
}

TEST_F(ReplaceContents_Lock, WaitsForNoMoreThanItHasTo) {
    OtherProcess other;
    other.Lock(Target());
    onPause = [&](int n) {
        if (n == 3) other.Unlock();
    };
    EXPECT_EQ(std::error_code(), Append("+more"));
    EXPECT_EQ(3, numPauses);
    EXPECT_EQ("old+more", ReadBytes(Path()));
}

TEST_F(ReplaceContents_Lock, AFileThatIsReplacedBeforeItIsLockedIsReadAgain) {
    OtherProcess other;
    beforeLock = [&](int n) {
        if (n == 1) other.Replace(Target(), "newer");
        if (n == 2) other.Unlock();
    };
    EXPECT_EQ(std::error_code(), Append("+more"));
    EXPECT_EQ("newer+more", ReadBytes(Path()));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

TEST_F(ReplaceContents_Lock, AFileThatIsRemovedBeforeItIsLockedIsMade) {
    beforeLock = [&](int n) {
        if (n == 1) std::filesystem::remove(NativePath(Path()));
    };
    EXPECT_EQ(std::error_code(), Append("+more"));
    EXPECT_EQ(std::vector<std::string>{"<no file>"}, m_seen);
    EXPECT_EQ("+more", ReadBytes(Path()));
}

TEST_F(ReplaceContents_Lock, TheLockIsHeldUntilTheNewFileIsInPlace) {
    OtherProcess other;
    const auto locked = [&] {
        const int fd = open(Target().c_str(), O_RDWR | O_CLOEXEC);
        const bool isFree = syscall(SYS_flock, fd, LOCK_EX | LOCK_NB) == 0;
        close(fd);
        return !isFree;
    };
    for (const bool inPlace : {false, true}) {
        if (inPlace) std::filesystem::create_hard_link(NativePath(Path()), m_folder.Path() / "other.ini");
        int composed = 0;
        const auto compose = [&](const FILES::ContentSink& sink) {
            ++composed;
            EXPECT_TRUE(locked());
            return sink("new");
        };
        EXPECT_EQ(std::error_code(), FILES::ReplaceContents(Path(), compose, FILES::InPlace::ALLOWED));
        EXPECT_EQ(inPlace ? 2 : 1, composed);
        EXPECT_FALSE(locked());
    }
}

TEST_F(ReplaceContents_Lock, AProcessThatIsStoppedIsWaitedForAndADeadOneIsNot) {
    for (const bool nameless : {true, false}) {
        if (!nameless) setenv("WITHOUT_NAMELESS_FILES", "1", 1);
        WriteBytes(Path(), "old");
        const pid_t child = fork();
        if (child == 0) {
            std::ignore = FILES::ReplaceContents(Path(), [](const FILES::ContentSink& sink) {
                sink("half");
                return raise(SIGSTOP) == 0;
            });
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(child, waitpid(child, &status, WUNTRACED));
        ASSERT_TRUE(WIFSTOPPED(status));
        waited = 0;
        EXPECT_EQ(std::errc::device_or_resource_busy, Append("+more"));
        EXPECT_NEAR(10, waited, 0.5);
        EXPECT_EQ("old", ReadBytes(Path()));

        kill(child, SIGKILL);
        ASSERT_EQ(child, waitpid(child, &status, 0));
        EXPECT_EQ(nameless ? 1u : 2u, m_folder.NumFiles());
        waited = 0;
        EXPECT_EQ(std::error_code(), Append("+more"));
        EXPECT_EQ(0, waited);
        EXPECT_EQ("old+more", ReadBytes(Path()));
        EXPECT_EQ(1u, m_folder.NumFiles());
    }
}

// A file that there was none of

TEST_F(ReplaceContents_Lock, WhatSomebodyMakesMeanwhileIsUpdatedAndKeepsItsMode) {
    for (const bool nameless : {true, false}) {
        if (!nameless) setenv("WITHOUT_NAMELESS_FILES", "1", 1);
        std::filesystem::remove(NativePath(Path()));
        m_seen.clear();
        OtherProcess other;
        const std::string word = "+more";
        EXPECT_EQ(std::error_code(), FILES::UpdateContents(Path(), [&](std::string& content, bool exists) {
                      m_seen.push_back(exists ? content : "<no file>");
                      content += word;
                      if (!exists) {
                          WriteBytes(Path(), "made");
                          EXPECT_EQ(0, chmod(Target().c_str(), 0640));
                      }
                      return true;
                  }));
        EXPECT_EQ((std::vector<std::string>{"<no file>", "made"}), m_seen);
        EXPECT_EQ("made+more", ReadBytes(Path()));
        EXPECT_EQ(0640u, Mode());
        EXPECT_EQ(1u, m_folder.NumFiles());
    }
}

TEST_F(ReplaceContents_Lock, WhatSomebodyMakesMeanwhileIsReplacedInItsTurnByWhatWasComposedOnce) {
    for (const bool nameless : {true, false}) {
        if (!nameless) setenv("WITHOUT_NAMELESS_FILES", "1", 1);
        std::filesystem::remove(NativePath(Path()));
        numPauses = 0;
        OtherProcess other;
        onPause = [&](int n) {
            EXPECT_EQ("", ReadBytes(Path())) << "replaced out of turn";
            if (n == 3) other.Unlock();
        };
        int composed = 0;
        EXPECT_EQ(std::error_code(), FILES::ReplaceContents(Path(), [&](const FILES::ContentSink& sink) {
                      ++composed;
                      other.Lock(Target());
                      return sink("new");
                  }));
        EXPECT_EQ(1, composed);
        EXPECT_EQ(3, numPauses);
        EXPECT_EQ("new", ReadBytes(Path()));
        EXPECT_EQ(0600u, Mode());
        EXPECT_EQ(1u, m_folder.NumFiles());
    }
}

TEST_F(ReplaceContents_Lock, WithoutNamelessFilesTheTemporaryNameIsTheLockOfAFileThatIsMade) {
    setenv("WITHOUT_NAMELESS_FILES", "1", 1);
    std::filesystem::remove(NativePath(Path()));
    OtherProcess other;
    other.Lock(Temporary());
    onPause = [&](int n) {
        if (n != 3) return;
        other.Replace(Target(), "made"); // by the name that it has, as far as anybody sees
        std::filesystem::remove(Temporary());
        other.Unlock();
    };
    EXPECT_EQ(std::error_code(), Append("+more"));
    EXPECT_EQ((std::vector<std::string>{"<no file>", "made"}), m_seen);
    EXPECT_EQ("made+more", ReadBytes(Path()));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

// The temporary name

TEST_F(ReplaceContents_Lock, TheFileOfAProcessThatBeganBetweenTwoLooksIsNotRemoved) {
    // A killed process left its file. Two processes find it, and the other one is faster.
    WriteBytes(Temporary(), "torn");
    OtherProcess other;
    constexpr int kLocksBefore = 2; // of the file and of the new one
    afterLock = [&](int n) {
        if (n == kLocksBefore + 1) { // locked is the file of the dead
            ASSERT_EQ(0, unlink(Temporary().c_str()));
            other.Lock(Temporary());
        } else if (n == kLocksBefore + 2) { // refused, since the other has it
            EXPECT_TRUE(other.HasItsFile()) << "its file was removed";
            ASSERT_EQ(0, unlink(Temporary().c_str()));
            other.Unlock();
        }
    };
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(Path(), "new"));
    EXPECT_EQ(kLocksBefore + 2, numLocks);
    EXPECT_EQ(1, numPauses);
    EXPECT_EQ("new", ReadBytes(Path()));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

TEST_F(ReplaceContents_Lock, AFileThatWasTakenForADeadOnesBeforeItsLockIsMadeAgain) {
    setenv("WITHOUT_NAMELESS_FILES", "1", 1);
    OtherProcess other;
    beforeLock = [&](int n) {
        if (n != 2) return;                        // of the new file, behind that of the old one
        ASSERT_EQ(0, unlink(Temporary().c_str())); // made and not locked yet: the other took it for left
        other.Lock(Temporary());
    };
    afterLock = [&](int n) {
        if (n != 3) return;
        EXPECT_TRUE(other.HasItsFile()) << "its file was removed or replaced";
        ASSERT_EQ(0, unlink(Temporary().c_str()));
        other.Unlock();
    };
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(Path(), "new"));
    EXPECT_EQ(4, numLocks);
    EXPECT_EQ("new", ReadBytes(Path()));
    EXPECT_EQ(1u, m_folder.NumFiles());
}

TEST_F(ReplaceContents_Lock, ATemporaryNameThatOthersKeepEndsTheSave) {
    OtherProcess other;
    other.Lock(Temporary());
    EXPECT_EQ(std::errc::device_or_resource_busy, FILES::ReplaceContents(Path(), "new"));
    EXPECT_NEAR(10, waited, 0.5);
    EXPECT_EQ("old", ReadBytes(Path()));
    EXPECT_TRUE(other.HasItsFile());
}
