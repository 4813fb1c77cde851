// SPDX-License-Identifier: MIT
// Paths that lead to no plain file, on POSIX systems: every reader and writer of files refuses them at once,
// without waiting at a pipe, reading a device for ever or replacing what stands there.

#include "UtilityDLL/settings/CRCFile.h"
#include "UtilityDLL/settings/FileChecksum.h"
#include "VelmBase/FileObject.h"
#include "tests/support/IniFiles.h"
#include "tests/support/Program.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// Ends the test program if something waits for ever after all.
class Alarm {
public:
    Alarm() { alarm(60); }
    ~Alarm() { alarm(0); }
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;
};

IniFile SomeFile() {
    IniFile file;
    file[L"s"][L"a"] << 1;
    return file;
}

void ExpectNotReadable(const std::wstring& path) {
    const Alarm alarm;
    IniFile file;
    const ErrorString result = file.Open(path);
    EXPECT_FALSE(result);
    EXPECT_EQ(L"Error opening \"" + path + L"\" for reading!", result.Text());
    EXPECT_TRUE(file.Empty());
    EXPECT_FALSE(FileObject().Open(path, 0));
    for (const wchar_t* mode : {L"rb", L"r+b"}) {
        CRCFile checked;
        EXPECT_EQ(L"Error opening \"" + path + L"\".", checked.Open(path, mode).Text());
        EXPECT_FALSE(checked.IsOpen());
    }
    EXPECT_EQ(0u, CRCFile::GetCRC(path));
    EXPECT_EQ(0u, FileChecksum(path, 100).Value());
    EXPECT_EQ(0u, FileChecksum(path, FileChecksum::ALL_WORDS).Value());
    EXPECT_EQ(0u, FileChecksum(path, 0).Value());
}

void ExpectNotWritable(const std::wstring& path) {
    const Alarm alarm;
    const ErrorString result = SomeFile().Save(path);
    EXPECT_FALSE(result);
    EXPECT_EQ(L"", result.Text());
    FileObject object;
    object.SetItem(L"s", L"k", L"v", true);
    EXPECT_FALSE(object.Save(path, 0));
    for (const wchar_t* mode : {L"wb", L"w+b", L"ab"}) {
        CRCFile checked;
        EXPECT_EQ(L"Error opening \"" + path + L"\".", checked.Open(path, mode).Text());
        EXPECT_FALSE(checked.IsOpen());
    }
}

bool AsOrdinaryUser(bool (*act)(const std::wstring&), const std::wstring& path) {
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(3);
        _exit(act(path) ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) < 2);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

TEST(HostilePath, Folder) {
    const TemporaryFolder folder;
    ExpectNotReadable(WidePath(folder.Path()));
    ExpectNotWritable(WidePath(folder.Path()));
    ExpectNotWritable(WidePath(folder.Path()) + L"/");
    EXPECT_TRUE(fs::is_directory(folder.Path()));
    EXPECT_EQ(0u, folder.NumFiles());
}

TEST(HostilePath, Pipe) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"pipe");
    ASSERT_EQ(0, mkfifo(ToUtf8(path).c_str(), 0666));
    ExpectNotReadable(path);
    ExpectNotWritable(path);
    EXPECT_TRUE(fs::is_fifo(NativePath(path)));
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(HostilePath, Socket) {
    const TemporaryFolder folder(fs::temp_directory_path());
    const fs::path name = folder.Path() / "s";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(name.string().size(), sizeof address.sun_path);
    name.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const int handle = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(0, bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    ExpectNotReadable(WidePath(name));
    ExpectNotWritable(WidePath(name));
    EXPECT_TRUE(fs::is_socket(name));
    close(handle);
}

TEST(HostilePath, Devices) {
    for (const wchar_t* path : {L"/dev/zero", L"/dev/null", L"/dev/full", L"/dev/tty", L"/proc/self/fd/0"}) {
        SCOPED_TRACE(ToUtf8(path));
        if (fs::is_regular_file(NativePath(path))) continue; // the standard input may be a file
        ExpectNotReadable(path);
    }
    for (const wchar_t* path : {L"/dev/zero", L"/dev/null", L"/dev/full"}) {
        ExpectNotWritable(path);
        EXPECT_TRUE(fs::is_character_file(NativePath(path)));
    }
}

TEST(HostilePath, LinksToSpecialFiles) {
    const TemporaryFolder folder;
    fs::create_symlink("/dev/zero", folder.Path() / "zero");
    fs::create_directory_symlink("/tmp", folder.Path() / "folder");
    fs::create_symlink("loop", folder.Path() / "loop");
    for (const wchar_t* name : {L"zero", L"folder", L"loop"}) {
        ExpectNotReadable(folder.File(name));
        ExpectNotWritable(folder.File(name));
        EXPECT_TRUE(fs::is_symlink(NativePath(folder.File(name))));
    }
    fs::create_symlink("nowhere", folder.Path() / "dangling");
    ExpectNotReadable(folder.File(L"dangling"));
    fs::create_symlink("no/where", folder.Path() / "deep");
    ExpectNotReadable(folder.File(L"deep"));
    ExpectNotWritable(folder.File(L"deep"));
    EXPECT_EQ(5u, folder.NumFiles());
}

TEST(HostilePath, AFileAsAFolder) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"file"), "[s]\n");
    for (const wchar_t* name : {L"file/a.ini", L"file/"}) {
        ExpectNotReadable(folder.File(name));
        ExpectNotWritable(folder.File(name));
    }
    EXPECT_EQ("[s]\n", ReadBytes(folder.File(L"file")));
}

TEST(HostilePath, UnreadableFile) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    WriteBytes(path, "[s]\na=1\n");
    ASSERT_EQ(0, chmod(ToUtf8(path).c_str(), 0));
    EXPECT_TRUE(AsOrdinaryUser(
        [](const std::wstring& file) {
            ExpectNotReadable(file);
            ExpectNotWritable(file);
            return !::testing::Test::HasFailure();
        },
        path));
    ASSERT_EQ(0, chmod(ToUtf8(path).c_str(), 0600));
    EXPECT_EQ("[s]\na=1\n", ReadBytes(path));
}

TEST(HostilePath, OddNamesAreNamesLikeAnyOther) {
    const TemporaryFolder folder;
    for (const std::wstring& name :
         {std::wstring(L"line\nbreak\r.ini"), std::wstring(L" "), std::wstring(L"-rf"),
          std::wstring(L"\"quoted\""), std::wstring(L"a\\b"), std::wstring(L"\U0001F6A2"),
          std::wstring(L"*?"), FromUtf8("latin1\xFC\xFF.ini"), FromUtf8("\xED\xB2\x80"),
          FromUtf8("\xC0\xAE")}) {
        const std::wstring path = folder.File(name);
        SCOPED_TRACE(::testing::PrintToString(name));
        EXPECT_TRUE(SomeFile().Save(path));
        EXPECT_TRUE(fs::exists(ToUtf8(path)));
        EXPECT_EQ("[s]\r\na = 1\r\n\r\n", ReadBytes(fs::path(ToUtf8(path))));
        IniFile file;
        EXPECT_TRUE(file.Open(path));
        EXPECT_EQ(1, file.NumSections());
        EXPECT_NE(0u, FileChecksum(path, 100).Value());
        fs::remove(ToUtf8(path));
        EXPECT_FALSE(file.Open(path));
        EXPECT_EQ(L"Error opening \"" + path + L"\" for reading!", file.Open(path).Text());
    }
    EXPECT_EQ(0u, folder.NumFiles());
}

TEST(HostilePath, APathWithANulIsNoPath) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"a.ini"), "[s]\n");
    const std::wstring path = folder.File(L"a.ini") + std::wstring(L"\0x", 2);
    ExpectNotReadable(path); // not the file whose name ends before the NUL
    ExpectNotWritable(path);
    EXPECT_EQ("[s]\n", ReadBytes(folder.File(L"a.ini")));
}

TEST(HostilePath, PathsThatAreTooLong) {
    const TemporaryFolder folder;
    for (const std::wstring& path :
         {folder.File(std::wstring(256, L'n')), folder.File(std::wstring(4096, L'n')),
          WidePath(folder.Path()) + std::wstring(4096, L'/'), std::wstring(1000000, L'x')}) {
        ExpectNotReadable(path);
        ExpectNotWritable(path);
    }
    // As long as may be: 4095 bytes with the NUL behind them.
    std::wstring longest = WidePath(folder.Path());
    while (ToUtf8(longest).size() < 4095 - 6) longest += ToUtf8(longest).size() % 2 == 1 ? L"/." : L"/";
    longest += L"/a.ini";
    if (ToUtf8(longest).size() <= 4095) {
        EXPECT_TRUE(SomeFile().Save(longest));
        EXPECT_TRUE(IniFile().Open(longest));
        EXPECT_EQ(1u, folder.NumFiles());
    }
}

TEST(HostilePath, AFileThatChangesWhileItIsRead) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    WriteBytes(path, "[s]\n");
    const pid_t writer = fork();
    if (writer == 0) { // for ever longer, shorter and other bytes, in place
        for (unsigned i = 0;; ++i) {
            std::ofstream file(NativePath(path), std::ios::binary | std::ios::trunc);
            for (unsigned line = 0; line < i % 3000; ++line) file << "[s" << line << "]\nkey=value;comment\n";
        }
    }
    for (int i = 0; i < 300; ++i) {
        IniFile file;
        const ErrorString result = file.Open(path);
        EXPECT_TRUE(result || !result.Text().empty());
        for (int s = 0; s < file.NumSections(); ++s) ASSERT_TRUE(file[s].IsValid());
        (void)CRCFile().Open(path, L"rb");
        FileChecksum(path, 100000);
    }
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
}

TEST(HostilePath, ALongLineCostsMemoryInProportion) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    const std::size_t size = 64u << 20;
    WriteBytes(path, "[s]\nk=" + std::string(size, 'v'));
    const pid_t child = fork(); // its peak is its own
    if (child == 0) {
        rusage before{}, after{};
        getrusage(RUSAGE_SELF, &before);
        IniFile file;
        const bool good = file.Open(path) && file[0][0].GetValue().size() == size;
        getrusage(RUSAGE_SELF, &after);
        // Four bytes a character are kept, and one or two hold the line while it is read.
        const auto peak = static_cast<std::size_t>(after.ru_maxrss - before.ru_maxrss) * 1024;
        std::fprintf(stderr, "peak: %zu MB for a line of %zu MB\n", peak >> 20, size >> 20);
        _exit(good && peak < 8 * size ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(0, status);
}

TEST(HostilePath, AFileWhoseReadingFails) {
    const std::wstring path = L"/proc/self/mem"; // a regular file that opens; its first bytes cannot be read
    IniFile file;
    file[L"old"];
    const ErrorString result = file.Open(path);
    EXPECT_FALSE(result);
    EXPECT_EQ(L"Error opening \"/proc/self/mem\" for reading!", result.Text());
    EXPECT_TRUE(file.Empty());
    CRCFile guarded;
    EXPECT_FALSE(guarded.Open(path, L"rb"));
    EXPECT_FALSE(guarded.IsOpen());
    EXPECT_EQ(0u, CRCFile::GetCRC(path));
    EXPECT_EQ(0u, FileChecksum(path, 100).Value());
}

TEST(HostilePath, PicturesOfFilesWhoseNamesAreNoUtf8AreWellFormed) {
    const TemporaryFolder folder;
    const std::string table = (folder.Path() / "b\xFF.col").string(),
                      contours = (folder.Path() / "b\xFF.cdf").string();
    WriteBytes(fs::path(table), "[ColorTable]\nEntry(0)=0,1,2,3\n");
    WriteBytes(fs::path(contours), "[Contour(0)]\nLevel=1\n");
    if (!fs::exists(fs::path(table))) GTEST_SKIP() << "this file system takes no such names";
    const std::string picture = ToUtf8(folder.File(L"t.svg"));
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"colors", "table", table}, {"contours", "list", contours}}) {
        std::vector<std::string> all = arguments;
        all.insert(all.end(), {"--picture", picture});
        ASSERT_EQ(0, RunChartutil(all).exitCode);
        const std::string svg = ReadBytes(folder.File(L"t.svg"));
        EXPECT_EQ(std::string::npos, svg.find('\xFF'));
        EXPECT_NE(std::string::npos, svg.find("b\xEF\xBF\xBD."));
    }
}
