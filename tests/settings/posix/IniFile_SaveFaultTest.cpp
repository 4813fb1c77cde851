// SPDX-License-Identifier: MIT
// Saving under fault, on POSIX systems: whatever happens, the file is the whole old one or the whole new one,
// and the result of the save says which.

#include "UtilityDLL/settings/IniFile.h"

#include "tests/support/IniFiles.h"
#include "tests/support/Random.h"
#include "tests/support/posix/NamelessFiles.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// Longer than what is saved over it, so that a new file with an old end would be seen.
const std::string kOld = "[Old]\r\nkept = as it was" + std::string(500, '!') + "\r\n\r\n";

std::string SaveLoopProgram() {
    return (fs::read_symlink("/proc/self/exe").parent_path() / "SaveLoop").string();
}

/// A process of this test; killed if it still runs when the test is done with it.
class Process {
public:
    explicit Process(const std::vector<std::string>& arguments, int output = -1) {
        m_id = fork();
        if (m_id != 0) return;
        setenv("ASAN_OPTIONS", "detect_leaks=0", 1); // leaks cannot be looked for in a traced process
        if (output >= 0) dup2(output, STDOUT_FILENO);
        std::vector<char*> words;
        for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        execvp(words[0], words.data());
        _exit(127);
    }
    ~Process() { Kill(); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    void Kill() {
        if (m_id <= 0) return;
        kill(m_id, SIGKILL);
        Wait();
    }

    /// The exit code, or -1 when a signal ended it.
    int Wait() {
        int status = 0;
        if (m_id > 0) waitpid(m_id, &status, 0);
        m_id = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t m_id = 0;
};

int RunProgram(const std::vector<std::string>& arguments) { return Process(arguments).Wait(); }

/// Runs `act` in a child process and gives its result; for what this process could not take back.
bool InChild(const std::function<bool()>& act) {
    const pid_t child = fork();
    if (child == 0) _exit(act() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) < 2) << "the child did not end by itself";
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool IsRoot() { return geteuid() == 0; }

/// The same as another user than root, to whom permissions mean something.
bool AsOrdinaryUser(const std::function<bool()>& act) {
    return InChild([&] {
        if (IsRoot() && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(3);
        return act();
    });
}

IniFile NewContent(std::size_t size = 0) {
    IniFile file;
    file[L"New"][L"value"] << std::wstring(size, L'v');
    return file;
}

std::string NewBytes(std::size_t size = 0) {
    return "[New]\r\nvalue = " + std::string(size, 'v') + "\r\n\r\n";
}

/// A folder with the settings file "a.ini" in it.
class SaveTarget {
public:
    explicit SaveTarget(bool exists, const fs::path& parent = fs::temp_directory_path()) : m_folder(parent) {
        if (exists) WriteBytes(Path(), kOld);
    }
    std::wstring Path() const { return m_folder.File(L"a.ini"); }
    std::string NativeName() const { return ToUtf8(Path()); }
    const TemporaryFolder& Folder() const { return m_folder; }
    std::string Bytes() const { return ReadBytes(Path()); }
    bool Exists() const { return fs::exists(NativePath(Path())); }
    struct stat Status() const {
        struct stat status {};
        EXPECT_EQ(0, stat(NativeName().c_str(), &status));
        return status;
    }

private:
    TemporaryFolder m_folder;
};

std::vector<std::string> SaveCommand(const SaveTarget& target, const std::string& value = "new") {
    return {SaveLoopProgram(), "save", target.NativeName(), value, "3"};
}

/// What a save of that command leaves in the file.
std::string SavedByCommand(const std::string& value = "new") {
    const SaveTarget target(false);
    EXPECT_EQ(0, RunProgram(SaveCommand(target, value)));
    return target.Bytes();
}

std::vector<std::string> UpdateCommand(const SaveTarget& target) {
    return {SaveLoopProgram(), "update", target.NativeName(), "more", "1"};
}

// Tracing

struct SystemCall {
    std::string name;
    int number = 0; ///< how many of that name came before it in the process, and itself
    std::string line;
};

/// Whether a call concerns memory alone, which no file shows. How many there are is a sanitizer's affair, and
/// differs from run to run.
bool ConcernsMemory(const std::string& name) {
    return std::set<std::string>{"brk", "madvise", "mmap", "mprotect", "mremap", "munmap"}.contains(name);
}

/// The system calls of a command, from the first that names the target to the end of the process. Empty when
/// nothing could be traced.
std::vector<SystemCall> Traced(const std::vector<std::string>& traced) {
    const TemporaryFolder folder;
    const std::string trace = (folder.Path() / "trace").string();
    std::vector<std::string> command = {"strace", "-f", "-y", "-o", trace};
    command.insert(command.end(), traced.begin(), traced.end());
    EXPECT_EQ(0, RunProgram(command));
    std::vector<SystemCall> calls;
    std::map<std::string, int> numbers;
    std::istringstream lines(ReadBytes(fs::path(trace)));
    bool begun = false;
    for (std::string line; std::getline(lines, line);) {
        line.erase(0, line.find_first_not_of("0123456789 ")); // the process number
        const std::size_t end = line.find('(');
        if (end == std::string::npos || line[0] == '+' || line[0] == '-' || line[0] == '<') continue;
        const std::string name = line.substr(0, end);
        const int number = ++numbers[name];
        if (name != "execve" && line.find("a.ini") != std::string::npos) begun = true;
        // Through pipes a sanitizer asks whether memory can be read; a save has none.
        if (!begun || ConcernsMemory(name) || line.find("<pipe:") != std::string::npos) continue;
        calls.push_back({name, number, line});
    }
    return calls;
}

/// The system calls that work on files: those that can fail by the disk's or the folder's fault.
bool WorksOnFiles(const std::string& name) {
    for (const char* part :
         {"open", "write", "sync", "chmod", "chown", "rename", "close", "stat", "unlink", "truncate", "lseek",
          "readlink", "access", "pread", "fcntl", "flock", "allocate", "link"})
        if (name.find(part) != std::string::npos) return true;
    return name == "read";
}

/// Each test runs twice: on a file system that has files without a name, and as if it had none.
class TracedSaves : public ::testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        if (!IsNameless()) setenv("WITHOUT_NAMELESS_FILES", "1", 1);
        ASSERT_EQ(0, RunProgram({"strace", "-o", "/dev/null", "true"}))
            << "strace is missing or may not trace here: nothing of this test can be shown";
    }
    void TearDown() override { unsetenv("WITHOUT_NAMELESS_FILES"); }

    static bool IsNameless() { return GetParam(); }

    /// Runs a command with a fault injected into `call`, and into so many of that name in a row; its exit
    /// code, -1 when it was killed.
    static int RunWithFault(const std::vector<std::string>& faulted, const SystemCall& call,
                            const std::string& fault, int times = 1) {
        std::vector<std::string> command = {"strace",
                                            "-f",
                                            "-qq",
                                            "-o",
                                            "/dev/null",
                                            "-e",
                                            "trace=" + call.name,
                                            "-e",
                                            "inject=" + call.name + ":" + fault +
                                                ":when=" + std::to_string(call.number) + ".." +
                                                std::to_string(call.number + times - 1)};
        command.insert(command.end(), faulted.begin(), faulted.end());
        return RunProgram(command);
    }
};

std::string KindOfFile(const ::testing::TestParamInfo<bool>& isNameless) {
    return isNameless.param ? "Nameless" : "Named";
}
INSTANTIATE_TEST_SUITE_P(NewFile, TracedSaves, ::testing::Bool(), KindOfFile);

} // namespace

// Kept: permissions, owners, links

TEST(IniFile_SaveFault, KeepsModeAndOwner) {
    for (const mode_t mode : {0600u, 0640u, 0644u, 0664u, 0666u, 0755u, 04755u, 02755u, 01644u, 07777u}) {
        const SaveTarget target(true);
        if (IsRoot()) {
            ASSERT_EQ(0, chown(target.NativeName().c_str(), 1234, 4321));
        }
        ASSERT_EQ(0, chmod(target.NativeName().c_str(), mode)); // behind chown, which takes set-id bits away
        ASSERT_TRUE(NewContent().Save(target.Path()));
        EXPECT_EQ(NewBytes(), target.Bytes());
        EXPECT_EQ(mode, target.Status().st_mode & 07777);
        if (IsRoot()) {
            EXPECT_EQ(1234u, target.Status().st_uid);
            EXPECT_EQ(4321u, target.Status().st_gid);
        }
        EXPECT_EQ(1u, target.Folder().NumFiles());
    }
}

TEST(IniFile_SaveFault, KeepsTheSetIdBitsThatWritingTakesFromAnOrdinaryUsersFile) {
    for (const bool inPlace : {false, true})
        for (const mode_t mode : {04755u, 02755u, 01755u, 06711u}) {
            const SaveTarget target(true);
            if (IsRoot()) {
                ASSERT_EQ(0, chown(target.NativeName().c_str(), 65534, 65534));
                ASSERT_EQ(0, chown(target.Folder().Path().c_str(), 65534, 65534));
            }
            if (inPlace)
                fs::create_hard_link(NativePath(target.Path()), target.Folder().Path() / "other.ini");
            ASSERT_EQ(0, chmod(target.NativeName().c_str(), mode));
            EXPECT_TRUE(AsOrdinaryUser([&] { return NewContent().Save(target.Path()); }));
            EXPECT_EQ(NewBytes(), target.Bytes());
            EXPECT_EQ(mode, target.Status().st_mode & 07777) << inPlace;
        }
}

TEST(IniFile_SaveFault, KeepsAFileThatItsOwnerMayNotWrite) {
    for (const mode_t mode : {0400u, 0444u, 0577u}) {
        const SaveTarget target(true);
        if (IsRoot()) {
            ASSERT_EQ(0, chown(target.NativeName().c_str(), 65534, 65534));
            ASSERT_EQ(0,
                      chown(target.Folder().Path().c_str(), 65534, 65534)); // which would take another file
        }
        ASSERT_EQ(0, chmod(target.NativeName().c_str(), mode));
        EXPECT_TRUE(AsOrdinaryUser([&] { return !NewContent().Save(target.Path()); })) << mode;
        EXPECT_EQ(kOld, target.Bytes()) << mode;
        EXPECT_EQ(mode, target.Status().st_mode & 07777);
        EXPECT_EQ(1u, target.Folder().NumFiles()) << mode;
    }
}

TEST(IniFile_SaveFault, ANewFileHasTheModeOfTheProcess) {
    for (const mode_t mask : {022u, 077u, 0u}) {
        const SaveTarget target(false);
        const mode_t before = umask(mask);
        const bool saved = static_cast<bool>(NewContent().Save(target.Path()));
        umask(before);
        ASSERT_TRUE(saved);
        EXPECT_EQ(0666 & ~mask, target.Status().st_mode & 07777);
    }
}

TEST(IniFile_SaveFault, KeepsTheOwnerWhereOnlyWritingInPlaceCan) {
    if (!IsRoot()) GTEST_SKIP() << "needs root to make a file of another user";
    const SaveTarget target(true);
    ASSERT_EQ(0, chmod(target.NativeName().c_str(), 0666));
    ASSERT_EQ(0, chmod(target.Folder().Path().c_str(), 0777));
    EXPECT_TRUE(AsOrdinaryUser([&] { return static_cast<bool>(NewContent().Save(target.Path())); }));
    EXPECT_EQ(NewBytes(), target.Bytes());
    EXPECT_EQ(0u, target.Status().st_uid);
    EXPECT_EQ(0666u, target.Status().st_mode & 07777);
    EXPECT_EQ(1u, target.Folder().NumFiles());
}

TEST(IniFile_SaveFault, ASymbolicLinkStaysALink) {
    const TemporaryFolder links, files;
    WriteBytes(files.File(L"real.ini"), kOld);
    fs::create_symlink(files.Path() / "real.ini", links.Path() / "absolute.ini");
    fs::create_symlink("absolute.ini", links.Path() / "chain.ini");
    fs::create_directory_symlink(files.Path(), links.Path() / "folder");
    int size = 0;
    for (const wchar_t* name : {L"absolute.ini", L"chain.ini", L"folder/real.ini"}) {
        const std::wstring path = links.File(name);
        ASSERT_TRUE(NewContent(static_cast<std::size_t>(++size)).Save(path));
        EXPECT_EQ(NewBytes(static_cast<std::size_t>(size)), ReadBytes(files.File(L"real.ini")));
        EXPECT_TRUE(fs::is_symlink(links.Path() / "absolute.ini"));
        EXPECT_TRUE(fs::is_symlink(links.Path() / "chain.ini"));
        EXPECT_EQ(3u, links.NumFiles());
        EXPECT_EQ(1u, files.NumFiles());
    }
}

TEST(IniFile_SaveFault, EachLinkOfALongChainStaysALink) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"0"), kOld);
    for (int i = 1; i <= 5; ++i) fs::create_symlink(std::to_string(i - 1), folder.Path() / std::to_string(i));
    ASSERT_TRUE(NewContent().Save(folder.File(L"5")));
    for (int i = 1; i <= 5; ++i) EXPECT_TRUE(fs::is_symlink(folder.Path() / std::to_string(i))) << i;
    EXPECT_FALSE(fs::is_symlink(folder.Path() / "0"));
    EXPECT_EQ(NewBytes(), ReadBytes(folder.File(L"0")));
    EXPECT_EQ(6u, folder.NumFiles());
}

TEST(IniFile_SaveFault, ADanglingLinkGetsItsFile) {
    const TemporaryFolder folder;
    fs::create_directory(folder.Path() / "d");
    fs::create_symlink("d/new.ini", folder.Path() / "link.ini");
    IniFile file;
    EXPECT_EQ(L"Error opening \"" + folder.File(L"link.ini") + L"\" for reading!",
              file.Open(folder.File(L"link.ini")).Text());
    EXPECT_TRUE(NewContent().Save(folder.File(L"link.ini")));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link.ini"));
    EXPECT_EQ(NewBytes(), ReadBytes(folder.File(L"d/new.ini")));
    EXPECT_EQ(2u, folder.NumFiles());
}

TEST(IniFile_SaveFault, ALoopOfLinksIsRefused) {
    const TemporaryFolder folder;
    fs::create_symlink("b.ini", folder.Path() / "a.ini");
    fs::create_symlink("a.ini", folder.Path() / "b.ini");
    EXPECT_FALSE(NewContent().Save(folder.File(L"a.ini")));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "a.ini"));
    EXPECT_EQ(2u, folder.NumFiles());
}

TEST(IniFile_SaveFault, HardLinksStayTogether) {
    const SaveTarget target(true);
    fs::create_hard_link(NativePath(target.Path()), target.Folder().Path() / "other.ini");
    ASSERT_TRUE(NewContent().Save(target.Path()));
    EXPECT_EQ(NewBytes(), target.Bytes());
    EXPECT_EQ(NewBytes(), ReadBytes(target.Folder().File(L"other.ini")));
    EXPECT_EQ(2u, target.Status().st_nlink);
    EXPECT_EQ(2u, target.Folder().NumFiles());
}

TEST(IniFile_SaveFault, NamesOfFullLengthCanBeSaved) {
    const TemporaryFolder folder;
    for (const std::size_t length : {240u, 246u, 247u, 248u, 249u, 250u, 254u, 255u}) {
        const std::wstring path = folder.File(std::wstring(length, L'n'));
        for (const std::size_t size : {1u, 2u}) { // as a new file, and over the old one
            ASSERT_TRUE(NewContent(size).Save(path)) << length;
            EXPECT_EQ(NewBytes(size), ReadBytes(path));
        }
    }
    EXPECT_FALSE(NewContent().Save(folder.File(std::wstring(256, L'n'))));
    EXPECT_EQ(8u, folder.NumFiles());
}

// Taken away: permissions and room

TEST(IniFile_SaveFault, AReadOnlyFileIsKept) {
    const SaveTarget target(true);
    ASSERT_EQ(0, chmod(target.NativeName().c_str(), 0444));
    ASSERT_EQ(0, chmod(target.Folder().Path().c_str(), 0777));
    EXPECT_FALSE(AsOrdinaryUser([&] { return static_cast<bool>(NewContent().Save(target.Path())); }));
    EXPECT_EQ(kOld, target.Bytes());
    EXPECT_EQ(1u, target.Folder().NumFiles());
    EXPECT_EQ(0444u, target.Status().st_mode & 07777);
}

TEST(IniFile_SaveFault, AReadOnlyFileOfTheUsersOwnIsKept) {
    const SaveTarget target(true);
    ASSERT_EQ(0, chmod(target.NativeName().c_str(), 0444));
    if (IsRoot()) {
        ASSERT_EQ(0, chown(target.NativeName().c_str(), 65534, 65534));
    }
    if (IsRoot()) {
        ASSERT_EQ(0, chown(target.Folder().Path().c_str(), 65534, 65534));
    }
    EXPECT_FALSE(AsOrdinaryUser([&] { return static_cast<bool>(NewContent().Save(target.Path())); }));
    EXPECT_EQ(kOld, target.Bytes());
    EXPECT_EQ(1u, target.Folder().NumFiles());
}

TEST(IniFile_SaveFault, AReadOnlyFolderLetsAFileBeWrittenInPlace) {
    const SaveTarget target(true);
    ASSERT_EQ(0, chmod(target.NativeName().c_str(), 0666));
    ASSERT_EQ(0, chmod(target.Folder().Path().c_str(), 0555));
    for (const std::size_t size : {100000u, 0u}) {
        EXPECT_TRUE(AsOrdinaryUser([&] { return static_cast<bool>(NewContent(size).Save(target.Path())); }));
        EXPECT_EQ(NewBytes(size), target.Bytes());
    }
    EXPECT_EQ(1u, target.Folder().NumFiles());
}

TEST(IniFile_SaveFault, AReadOnlyFolderTakesNoNewFile) {
    const SaveTarget target(false);
    ASSERT_EQ(0, chmod(target.Folder().Path().c_str(), 0555));
    EXPECT_FALSE(AsOrdinaryUser([&] { return static_cast<bool>(NewContent().Save(target.Path())); }));
    EXPECT_EQ(0u, target.Folder().NumFiles());
}

TEST(IniFile_SaveFault, AFileBesideTheTemporaryNamesIsLeftAlone) {
    // What a stranger put where the temporary file goes: a folder, a link to a file of somebody.
    for (const bool link : {false, true}) {
        const SaveTarget target(true);
        const TemporaryFolder elsewhere;
        WriteBytes(elsewhere.File(L"precious"), "precious");
        const fs::path temporary = target.Folder().Path() / ".a.ini.saving";
        if (link)
            fs::create_symlink(elsewhere.Path() / "precious", temporary);
        else
            fs::create_directory(temporary);
        const bool saved = static_cast<bool>(NewContent().Save(target.Path()));
        EXPECT_EQ(saved ? NewBytes() : kOld, target.Bytes());
        EXPECT_FALSE(fs::is_symlink(NativePath(target.Path())));
        EXPECT_EQ("precious", ReadBytes(elsewhere.File(L"precious")));
    }
}

TEST(IniFile_SaveFault, AFileSizeLimitKeepsTheOldFile) {
    for (const bool inPlace : {false, true})
        for (const rlim_t limit : {0ul, 1ul, 100ul, 4096ul, 70000ul}) {
            const SaveTarget target(true);
            if (inPlace)
                fs::create_hard_link(NativePath(target.Path()), target.Folder().Path() / "other.ini");
            const bool saved = InChild([&] {
                std::signal(SIGXFSZ, SIG_IGN);
                const rlimit most{limit, limit};
                setrlimit(RLIMIT_FSIZE, &most);
                return static_cast<bool>(NewContent(100000).Save(target.Path()));
            });
            EXPECT_FALSE(saved);
            EXPECT_EQ(kOld, target.Bytes()) << inPlace << ' ' << limit;
            EXPECT_EQ(inPlace ? 2u : 1u, target.Folder().NumFiles());
            EXPECT_TRUE(NewContent(100000).Save(target.Path()));
        }
}

TEST(IniFile_SaveFault, AFileThatIsMostlyPaddingFailsForItsSizeAndNotForMemory) {
    // A long name sets the column of 20,000 short keys: four gigabytes from a third of a megabyte of texts.
    IniFile file;
    Section& section = file[L"s"];
    section.AddKey(std::wstring(200'000, L'n'));
    for (int i = 0; i < 20'000; ++i) section.AddKey(L"k" + std::to_wstring(i));
    for (const bool inPlace : {false, true}) {
        const SaveTarget target(true);
        if (inPlace) fs::create_hard_link(NativePath(target.Path()), target.Folder().Path() / "other.ini");
        EXPECT_FALSE(InChild([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit most{4 << 20, 4 << 20};
            setrlimit(RLIMIT_FSIZE, &most);
            return file.Save(target.Path());
        }));
        EXPECT_EQ(kOld, target.Bytes()) << inPlace;
        EXPECT_EQ(inPlace ? 2u : 1u, target.Folder().NumFiles());
    }
}

TEST(IniFile_SaveFault, ATextThatCannotBeStoredLeavesAFileOfSeveralLinks) {
    const SaveTarget target(true);
    fs::create_hard_link(NativePath(target.Path()), target.Folder().Path() / "other.ini");
    const timespec before = target.Status().st_mtim;
    IniFile file = NewContent(200'000); // the fault comes after the first pieces
    file[L"New"][L"last"] << L"\u03A9";
    EXPECT_FALSE(file.Save(target.Path()));
    EXPECT_EQ(kOld, target.Bytes());
    const timespec after = target.Status().st_mtim;
    EXPECT_EQ(std::pair(before.tv_sec, before.tv_nsec), std::pair(after.tv_sec, after.tv_nsec));
}

TEST(IniFile_SaveFault, AFullDiskKeepsTheOldFile) {
    const TemporaryFolder mountPoint;
    if (mount("tmpfs", mountPoint.Path().c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no small file system can be mounted here; the file size limit shows the same";
    struct Unmount {
        const char* path;
        ~Unmount() { umount(path); }
    };
    const std::string mounted = mountPoint.Path().string();
    const Unmount unmount{mounted.c_str()};
    const std::wstring path = mountPoint.File(L"a.ini");
    for (const bool inPlace : {false, true}) {
        WriteBytes(path, kOld);
        if (inPlace) fs::create_hard_link(NativePath(path), mountPoint.Path() / "other.ini");
        for (const std::size_t size : {66000u, 1000000u}) { // more than there is
            EXPECT_FALSE(NewContent(size).Save(path));
            EXPECT_EQ(kOld, ReadBytes(path)) << inPlace;
            EXPECT_EQ(inPlace ? 2u : 1u, mountPoint.NumFiles());
        }
        { // nothing left at all
            std::ofstream filler(NativePath(mountPoint.File(L"filler")), std::ios::binary);
            for (int i = 0; i < 100 && filler.flush(); ++i) filler << std::string(1024, 'x');
        }
        const bool saved = static_cast<bool>(NewContent(10000).Save(path));
        EXPECT_FALSE(saved);
        EXPECT_EQ(kOld, ReadBytes(path)) << inPlace;
        EXPECT_EQ(inPlace ? 3u : 2u, mountPoint.NumFiles());
        fs::remove(NativePath(mountPoint.File(L"filler")));
        EXPECT_TRUE(NewContent(10000).Save(path));
        EXPECT_EQ(NewBytes(10000), ReadBytes(path));
        fs::remove(NativePath(path));
    }
}

TEST(IniFile_SaveFault, ADeviceIsNotReplaced) {
    const TemporaryFolder folder;
    const std::string node = (folder.Path() / "device").string();
    if (mknod(node.c_str(), S_IFCHR | 0666, makedev(1, 7)) != 0) // as /dev/full
        GTEST_SKIP() << "no device can be made here";
    EXPECT_FALSE(NewContent().Save(folder.File(L"device")));
    EXPECT_TRUE(fs::is_character_file(node));
    EXPECT_EQ(1u, folder.NumFiles());
}

// Killed

TEST(IniFile_SaveFault, AProcessKilledAtAnyMomentLeavesAWholeFile) {
    Random random(90);
    // Many saves: in memory, if there is such a file system, so that they need not wait for a disk.
    const SaveTarget target(true, fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path());
    int saves = 0, torn = 0;
    for (int round = 0; round < 60 || (saves < 500 && round < 600); ++round) {
        int pipe[2];
        ASSERT_EQ(0, ::pipe(pipe));
        Process host({SaveLoopProgram(), "loop", target.NativeName(), "20000"}, pipe[1]);
        close(pipe[1]);
        char byte = 0;
        for (unsigned n = 4 + random.Below(10); n > 0 && read(pipe[0], &byte, 1) == 1; --n) ++saves;
        // Some more of the next save: the time that this takes is the moment of the kill.
        volatile unsigned spin = random.Below(4000000);
        while (spin > 0) spin = spin - 1;
        host.Kill();
        close(pipe[0]);
        IniFile file;
        const ErrorString result = file.Open(target.Path());
        torn += !result || file.NumSections() != 1 || file[0].IsModified();
        ASSERT_LE(target.Folder().NumFiles(), 2u) << "more than one temporary file";
    }
    EXPECT_EQ(0, torn);
    EXPECT_GE(saves, 500);
    ASSERT_TRUE(NewContent().Save(target.Path()));
    EXPECT_EQ(NewBytes(), target.Bytes());
    EXPECT_EQ(1u, target.Folder().NumFiles()) << "the next save clears the killed one's temporary file";
}

TEST_P(TracedSaves, KilledAtEverySystemCallTheFileIsWhole) {
    for (const auto command : {+[](const SaveTarget& target) { return SaveCommand(target); }, +UpdateCommand})
        for (const bool exists : {true, false}) {
            const SaveTarget sample(exists);
            const std::vector<SystemCall> calls = Traced(command(sample));
            ASSERT_GT(calls.size(), 5u);
            const std::string before = exists ? kOld : "<no file>";
            std::set<std::string> outcomes, leaving;
            for (const SystemCall& call : calls) {
                const SaveTarget target(exists);
                EXPECT_EQ(-1, RunWithFault(command(target), call, "signal=KILL")) << call.line;
                const std::string bytes = target.Exists() ? target.Bytes() : "<no file>";
                outcomes.insert(bytes);
                EXPECT_TRUE(bytes == sample.Bytes() || bytes == before) << call.line << '\n' << bytes;
                EXPECT_LE(target.Folder().NumFiles(), target.Exists() + 1u) << call.line;
                if (target.Folder().NumFiles() > target.Exists()) leaving.insert(call.name);
                EXPECT_TRUE(NewContent().Save(target.Path())) << call.line;
                EXPECT_EQ(NewBytes(), target.Bytes());
                EXPECT_EQ(1u, target.Folder().NumFiles()) << call.line;
            }
            EXPECT_EQ(2u, outcomes.size()); // both were met: the kills lay on both sides of the exchange
            if (!IsNameless()) {
                EXPECT_GT(leaving.size(), 3u); // the shortage was felt
            } else if (exists) {
                EXPECT_THAT(leaving, ::testing::ElementsAre("renameat"));
            } else {
                EXPECT_THAT(leaving, ::testing::IsEmpty());
            }
        }
}

TEST_P(TracedSaves, APrivateFileIsPrivateAtEveryMoment) {
    for (const mode_t mode : {0600u, 0640u, 0604u}) {
        const auto prepare = [&](const SaveTarget& target) {
            if (IsRoot()) {
                ASSERT_EQ(0, chown(target.NativeName().c_str(), 1234, 4321));
            }
            ASSERT_EQ(0, chmod(target.NativeName().c_str(), mode));
        };
        const SaveTarget sample(true);
        prepare(sample);
        int seen = 0;
        for (const SystemCall& call : Traced(SaveCommand(sample))) {
            const SaveTarget target(true);
            prepare(target);
            RunWithFault(SaveCommand(target), call, "signal=KILL");
            struct stat left {};
            const fs::path temporary = target.Folder().Path() / ".a.ini.saving";
            if (stat(temporary.c_str(), &left) != 0) continue;
            ++seen;
            EXPECT_EQ(0u, left.st_mode & 07777 & ~mode) << call.line;
        }
        // Without a name nobody can come to it before the last moment.
        EXPECT_GE(seen, IsNameless() ? 1 : 4) << "the temporary file was hardly seen: nothing is shown";
    }
}

TEST_P(TracedSaves, AnInterruptedSystemCallIsDoneAgain) {
    const std::string saved = SavedByCommand();
    for (const bool inPlace : {false, true}) {
        const auto prepare = [&](const SaveTarget& target) {
            if (inPlace)
                fs::create_hard_link(NativePath(target.Path()), target.Folder().Path() / "other.ini");
        };
        const SaveTarget sample(true);
        prepare(sample);
        int interrupted = 0;
        for (const SystemCall& call : Traced(SaveCommand(sample))) {
            if (!WorksOnFiles(call.name) || call.name == "close") continue;
            const SaveTarget target(true);
            prepare(target);
            EXPECT_EQ(0, RunWithFault(SaveCommand(target), call, "error=EINTR", 3)) << call.line;
            EXPECT_EQ(saved, target.Bytes()) << call.line;
            ++interrupted;
        }
        EXPECT_GT(interrupted, 5);
    }
}

TEST_P(TracedSaves, EverySystemCallMayFailAndTheReasonIsTold) {
    const std::map<std::string, int> errors = {
        {"EIO", EIO}, {"EINTR", EINTR}, {"ENOSPC", ENOSPC}, {"EDQUOT", EDQUOT}, {"EACCES", EACCES}};
    enum Target { NEW, OLD, LINK, HARD_LINK };
    for (const auto command : {+[](const SaveTarget& target) { return SaveCommand(target); }, +UpdateCommand})
        for (const Target kind : {NEW, OLD, LINK, HARD_LINK}) {
            const auto prepare = [&](const SaveTarget& target) {
                if (kind == LINK) {
                    fs::rename(NativePath(target.Path()), target.Folder().Path() / "real.ini");
                    fs::create_symlink("real.ini", NativePath(target.Path()));
                }
                if (kind == HARD_LINK)
                    fs::create_hard_link(NativePath(target.Path()), target.Folder().Path() / "other.ini");
            };
            const bool isUpdate = command == +UpdateCommand;
            if (isUpdate && (kind == LINK || kind == HARD_LINK)) continue; // written as a save writes them
            const SaveTarget sample(kind != NEW);
            prepare(sample);
            const std::size_t files = kind == NEW || kind == OLD ? 1 : 2;
            std::set<std::string> failing;
            for (const SystemCall& call : Traced(command(sample))) {
                if (!WorksOnFiles(call.name)) continue;
                for (const auto& [error, number] : errors) {
                    if ((kind == NEW || kind == LINK || isUpdate) && error != "EIO" && error != "EINTR")
                        continue;
                    SCOPED_TRACE(call.line + " fails with " + error);
                    const SaveTarget target(kind != NEW);
                    prepare(target);
                    const int result = RunWithFault(command(target), call, "error=" + error);
                    EXPECT_TRUE(result == 0 || result == number) << result;
                    const std::string bytes = target.Exists() ? target.Bytes() : "<no file>";
                    EXPECT_EQ(result == 0 ? sample.Bytes() : kind == NEW ? "<no file>" : kOld, bytes);
                    if (result != 0) failing.insert(call.line);
                    if (kind == LINK) {
                        EXPECT_TRUE(fs::is_symlink(NativePath(target.Path())));
                    }
                    // A temporary file stays only where taking it away is what fails.
                    if (call.name.find("unlink") == std::string::npos) {
                        EXPECT_EQ(bytes == "<no file>" ? 0 : files, target.Folder().NumFiles());
                    }
                    EXPECT_TRUE(NewContent().Save(target.Path()));
                    EXPECT_EQ(NewBytes(), target.Bytes());
                    EXPECT_EQ(files, target.Folder().NumFiles());
                }
            }
            EXPECT_GT(failing.size(), 5u) << kind; // the faults were felt
        }
}

TEST_P(TracedSaves, ContentAndNameReachTheDiskInOrder) {
    for (const bool exists : {true, false}) {
        const SaveTarget target(exists);
        // The new file while it is written, as the trace names it.
        const auto isNewFile = [](const std::string& line) {
            return line.find(IsNameless() ? "(deleted)" : ".saving>") != std::string::npos;
        };
        std::vector<std::string> order;
        for (const SystemCall& call : Traced(SaveCommand(target))) {
            if (call.name.find("write") != std::string::npos && isNewFile(call.line))
                order.push_back("write");
            else if (call.name.find("sync") != std::string::npos)
                order.push_back(isNewFile(call.line) ? "sync file" : "sync folder");
            else if (call.name.find("link") == 0 || call.name.find("rename") == 0)
                order.push_back(call.name);
        }
        order.erase(std::unique(order.begin(), order.end()), order.end());
        std::vector<std::string> expected = {"write", "sync file"};
        if (IsNameless()) expected.push_back("linkat");
        if (exists || !IsNameless()) expected.push_back(exists ? "renameat" : "renameat2");
        expected.push_back("sync folder");
        EXPECT_EQ(expected, order);
    }
}

TEST(IniFile_SaveFault, TwoProcessesSavingWhileAThirdOpens) {
    const SaveTarget target(false);
    ASSERT_EQ(0, RunProgram(SaveCommand(target)));
    Process first({SaveLoopProgram(), "count", target.NativeName(), "50", "400"});
    Process second({SaveLoopProgram(), "count", target.NativeName(), "300", "400"});
    Process reader({SaveLoopProgram(), "read", target.NativeName(), "4000"});
    EXPECT_EQ(0, reader.Wait()) << "a torn file was seen";
    EXPECT_EQ(0, first.Wait());
    EXPECT_EQ(0, second.Wait());
    EXPECT_EQ(0, RunProgram({SaveLoopProgram(), "read", target.NativeName(), "1"}));
    EXPECT_EQ(1u, target.Folder().NumFiles());
}

namespace {
std::string AccessList(std::initializer_list<std::array<unsigned, 3>> entries) { // tag, permissions, id
    std::string list("\2\0\0\0", 4);
    for (const auto& [tag, permissions, id] : entries) {
        for (const unsigned number : {tag, permissions}) {
            list += static_cast<char>(number & 0xFF);
            list += static_cast<char>(number >> 8 & 0xFF);
        }
        for (int shift = 0; shift < 32; shift += 8) list += static_cast<char>(id >> shift & 0xFF);
    }
    return list;
}
constexpr const char* kAccess = "system.posix_acl_access";
constexpr const char* kDefault = "system.posix_acl_default";
std::string AccessListOf(const std::string& path) {
    char bytes[256];
    const ssize_t size = getxattr(path.c_str(), kAccess, bytes, sizeof bytes);
    return size < 0 ? std::string() : std::string(bytes, static_cast<std::size_t>(size));
}
} // namespace

TEST(IniFile_SaveFault, KeepsTheAccessList) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    const std::string name = ToUtf8(path);
    WriteBytes(path, "[old]\r\n");
    // The owner and one more user may write, the group may nothing: the mode alone would let it in.
    const std::string list =
        AccessList({{1, 6, ~0u}, {2, 6, 65534}, {4, 0, ~0u}, {0x10, 6, ~0u}, {0x20, 0, ~0u}});
    if (setxattr(name.c_str(), kAccess, list.data(), list.size(), 0) != 0)
        GTEST_SKIP() << "this file system has no access lists";
    ASSERT_TRUE(NewContent().Save(path));
    EXPECT_EQ(list, AccessListOf(name));
}

TEST(IniFile_SaveFault, TakesNoAccessListFromTheFolder) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    WriteBytes(path, "[old]\r\n");
    ASSERT_EQ(0, chmod(ToUtf8(path).c_str(), 0640));
    const std::string list =
        AccessList({{1, 7, ~0u}, {2, 6, 65534}, {4, 5, ~0u}, {0x10, 7, ~0u}, {0x20, 5, ~0u}});
    if (setxattr(folder.Path().c_str(), kDefault, list.data(), list.size(), 0) != 0)
        GTEST_SKIP() << "this file system has no access lists";
    ASSERT_TRUE(NewContent().Save(path));
    EXPECT_EQ("", AccessListOf(ToUtf8(path)));
    struct stat status {};
    ASSERT_EQ(0, stat(ToUtf8(path).c_str(), &status));
    EXPECT_EQ(0640u, status.st_mode & 07777);
}

TEST(IniFile_SaveFault, AFolderThatMayNotBeListedTakesANewFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(0, chmod(folder.Path().c_str(), 0333));
    EXPECT_TRUE(AsOrdinaryUser([&] { return static_cast<bool>(NewContent().Save(folder.File(L"a.ini"))); }));
    ASSERT_EQ(0, chmod(folder.Path().c_str(), 0700));
    EXPECT_EQ("[New]\r\nvalue = \r\n\r\n", ReadBytes(folder.File(L"a.ini")));
    EXPECT_EQ(1u, folder.NumFiles());
}
