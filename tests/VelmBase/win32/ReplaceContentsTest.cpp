// SPDX-License-Identifier: MIT
// What FILES promises where Windows' own rules are in the way: share modes, read-only files, attributes and
// access lists, long paths, names of devices and of streams. The rules that all platforms share are tested
// beside.
#include "VelmBase/File.h"

#include "tests/support/TestFiles.h"
#include "tests/support/win32/Import.h"

#include <atomic>
#include <chrono>
#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>
#include <windows.h>

namespace {

constexpr auto kBound = std::chrono::seconds(3); // about one second is promised; the machine may be busy

struct CloseFile {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using HeldFile = std::unique_ptr<void, CloseFile>;

HeldFile Hold(const std::wstring& path, DWORD access, DWORD share) {
    const HANDLE handle = CreateFileW(path.c_str(), access, share, nullptr, OPEN_ALWAYS, 0, nullptr);
    EXPECT_NE(INVALID_HANDLE_VALUE, handle) << GetLastError();
    return HeldFile(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

// One that is marked for deletion is there too, and cannot be asked.
bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES ||
           GetLastError() != ERROR_FILE_NOT_FOUND;
}

// The access list of a file as bytes.
std::string AccessOf(HANDLE file) {
    DWORD size = 0;
    GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::string descriptor(size, '\0');
    EXPECT_TRUE(GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, descriptor.data(), size, &size));
    BOOL present = FALSE;
    BOOL defaulted = FALSE;
    PACL list = nullptr;
    EXPECT_TRUE(GetSecurityDescriptorDacl(descriptor.data(), &present, &list, &defaulted));
    return list ? std::string(reinterpret_cast<const char*>(list), list->AclSize) : std::string();
}

std::string AccessOf(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), READ_CONTROL, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(INVALID_HANDLE_VALUE, file) << GetLastError();
    const std::string list = AccessOf(file);
    CloseHandle(file);
    return list;
}

// Lets only the owner of the file have it.
void AllowOwnerOnly(const std::wstring& path) {
    DWORD size = 0;
    GetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION, nullptr, 0, &size);
    std::string owned(size, '\0');
    ASSERT_TRUE(GetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION, owned.data(), size, &size));
    PSID owner = nullptr;
    BOOL defaulted = FALSE;
    ASSERT_TRUE(GetSecurityDescriptorOwner(owned.data(), &owner, &defaulted));
    alignas(ACL) unsigned char list[256];
    ASSERT_TRUE(InitializeAcl(reinterpret_cast<PACL>(list), sizeof list, ACL_REVISION));
    ASSERT_TRUE(AddAccessAllowedAce(reinterpret_cast<PACL>(list), ACL_REVISION, FILE_ALL_ACCESS, owner));
    SECURITY_DESCRIPTOR descriptor;
    ASSERT_TRUE(InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION));
    ASSERT_TRUE(SetSecurityDescriptorDacl(&descriptor, TRUE, reinterpret_cast<PACL>(list), FALSE));
    ASSERT_TRUE(SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, &descriptor)) << GetLastError();
}

// While it lives, the library's calls of a function of the system come to another one.
class InsteadOf {
public:
    template <typename Function>
    InsteadOf(const char* name, Function* function)
        : m_name(name),
          m_usual(ReplaceImport(name, reinterpret_cast<ULONG_PTR>(function), L"VelmBaseR.dll")) {
        EXPECT_NE(0u, m_usual) << name;
    }
    ~InsteadOf() { ReplaceImport(m_name, m_usual, L"VelmBaseR.dll"); }
    InsteadOf(const InsteadOf&) = delete;
    InsteadOf& operator=(const InsteadOf&) = delete;

private:
    const char* m_name;
    ULONG_PTR m_usual;
};

// A clock that goes by the library's pauses alone.
std::atomic<ULONGLONG> milliseconds{0};
ULONGLONG WINAPI Milliseconds() { return milliseconds; }
void WINAPI Pass(DWORD time) {
    milliseconds += time;
    Sleep(0);
}

struct TimedSave {
    bool done = false;
    std::chrono::steady_clock::duration time{};
};

TimedSave Save(const std::wstring& path, std::string_view content) {
    const auto start = std::chrono::steady_clock::now();
    const bool done = !FILES::ReplaceContents(path, content);
    return {done, std::chrono::steady_clock::now() - start};
}

} // namespace

TEST(ReplaceContents, AFileHeldByAnotherIsTheWholeOldOrTheWholeNewOne) {
    struct Case {
        DWORD access;
        DWORD share;
        TemporaryFolder folder;
        HeldFile held;
        TimedSave save;
        std::wstring Path() const { return folder.File(L"held.ini"); }
    };
    std::deque<Case> cases;
    for (const DWORD access : {DWORD{GENERIC_READ}, DWORD{GENERIC_WRITE}})
        for (DWORD share = 0; share <= (FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE); ++share) {
            Case& held = cases.emplace_back(access, share);
            WriteBytes(held.Path(), "old");
            held.held = Hold(held.Path(), access, share);
        }
    // Side by side, since most of them wait for their second.
    std::vector<std::thread> threads;
    for (Case& held : cases) threads.emplace_back([&] { held.save = Save(held.Path(), "new content"); });
    for (std::thread& thread : threads) thread.join();
    for (Case& held : cases) {
        SCOPED_TRACE(::testing::Message() << "access " << held.access << " share " << held.share);
        held.held.reset();
        EXPECT_EQ(held.save.done ? "new content" : "old", ReadBytes(held.Path()));
        // Without sharing for deletion no system replaces the file; with it, Windows 10 does.
        if (!(held.share & FILE_SHARE_DELETE)) {
            EXPECT_FALSE(held.save.done);
        }
        EXPECT_LT(held.save.time, kBound);
        EXPECT_EQ(1u, held.folder.NumFiles());
        EXPECT_EQ(std::error_code(), FILES::ReplaceContents(held.Path(), "new content"));
    }
}

TEST(ReplaceContents, WaitsForAFileThatIsReleasedInTime) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"held.ini");
    WriteBytes(path, "old");
    HeldFile held = Hold(path, GENERIC_READ, FILE_SHARE_READ);
    std::thread other([&] {
        while (!Exists(folder.File(L".held.ini.saving"))) std::this_thread::yield();
        held.reset();
    });
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(path, "new"));
    other.join();
    EXPECT_EQ("new", ReadBytes(path));
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(ReplaceContents, ATemporaryFileThatAnotherHoldsForTenSecondsEndsTheSave) {
    const InsteadOf clock("GetTickCount64", &Milliseconds);
    const InsteadOf pause("Sleep", &Pass);
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"name.ini");
    WriteBytes(path, "old");
    HeldFile held = Hold(folder.File(L".name.ini.saving"), GENERIC_WRITE, 0);
    const ULONGLONG start = milliseconds;
    EXPECT_EQ(std::errc::device_or_resource_busy, FILES::ReplaceContents(path, "new"));
    EXPECT_NEAR(10'000, static_cast<double>(milliseconds - start), 500);
    EXPECT_EQ("old", ReadBytes(path));
    held.reset();
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(path, "new"));
    EXPECT_EQ("new", ReadBytes(path));
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(ReplaceContents, AsLongAsOthersFinishTheWaitingGoesOn) {
    const InsteadOf clock("GetTickCount64", &Milliseconds);
    const InsteadOf pause("Sleep", &Pass);
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"name.ini");
    WriteBytes(path, "old");
    HeldFile held = Hold(folder.File(L".name.ini.saving"), GENERIC_WRITE, 0);
    const ULONGLONG start = milliseconds;
    std::thread others([&] {
        for (int turn = 1; turn <= 3; ++turn) {
            while (milliseconds < start + static_cast<ULONGLONG>(turn) * 8000) std::this_thread::yield();
            WriteBytes(folder.File(L"made"), "others'");
            MoveFileExW(folder.File(L"made").c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING);
        }
        held.reset();
    });
    EXPECT_EQ(std::error_code(), FILES::UpdateContents(path, [](std::string& content, bool) {
                  content += "+more";
                  return true;
              }));
    others.join();
    EXPECT_LE(start + 24'000, milliseconds);
    EXPECT_EQ("others'+more", ReadBytes(path));
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(ReplaceContents, ALeftTemporaryFileIsUsedAgain) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L".name.ini.saving"), "torn content of a killed process, longer than what comes");
    EXPECT_TRUE(SetFileAttributesW(folder.File(L".name.ini.saving").c_str(), FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(folder.File(L"name.ini"), "new"));
    EXPECT_EQ("new", ReadBytes(folder.File(L"name.ini")));
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(ReplaceContents, ManyWritersTakeTurnsAndReadersNeverSeeATornFile) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"shared.ini");
    const std::string contents[] = {std::string(5000, 'a'), std::string(70000, 'b')};
    WriteBytes(path, contents[0]);
    std::atomic<bool> stop{false};
    std::atomic<int> torn{0};
    std::atomic<int> reads{0};
    std::atomic<int> refused{0};
    std::thread reader([&] {
        while (!stop) {
            FILES::Reader file(path);
            if (!file.IsOpen()) {
                ++refused;
                continue;
            }
            std::string bytes(100'000, '\0');
            std::size_t size = 0;
            while (const std::size_t got = file.Read(bytes.data() + size, bytes.size() - size)) size += got;
            bytes.resize(size);
            if (bytes != contents[0] && bytes != contents[1]) ++torn;
            ++reads;
        }
    });
    std::atomic<int> saved{0};
    std::thread writers[2];
    for (std::size_t i = 0; i < 2; ++i)
        writers[i] = std::thread([&, i] {
            for (int n = 0; n < 200; ++n) saved += !FILES::ReplaceContents(path, contents[i]);
        });
    for (std::thread& writer : writers) writer.join();
    stop = true;
    reader.join();
    EXPECT_EQ(0, torn);
    EXPECT_EQ(0, refused);
    EXPECT_LT(0, reads);
    EXPECT_LT(0, saved);
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(ReplaceContents, AReadOnlyFileIsNotReplaced) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"readonly.ini");
    WriteBytes(path, "old");
    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
    const TimedSave save = Save(path, "new");
    EXPECT_FALSE(save.done);
    EXPECT_EQ("old", ReadBytes(path));
    EXPECT_EQ(FILE_ATTRIBUTE_READONLY, GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(1u, folder.NumFiles());
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(path, "new"));
}

TEST(ReplaceContents, AttributesAndAccessListStay) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"private.ini");
    WriteBytes(path, "old");
    AllowOwnerOnly(path);
    const std::string access = AccessOf(path);
    WriteBytes(folder.File(L"other.ini"), "other");
    ASSERT_NE(access, AccessOf(folder.File(L"other.ini")))
        << "the list is an ordinary one: nothing is tested";

    ASSERT_EQ(std::error_code(), FILES::ReplaceContents(path, "new"));
    EXPECT_EQ("new", ReadBytes(path));
    EXPECT_EQ(access, AccessOf(path));

    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_HIDDEN));
    const DWORD attributes = GetFileAttributesW(path.c_str());
    ASSERT_EQ(std::error_code(), FILES::ReplaceContents(path, "newer"));
    EXPECT_EQ("newer", ReadBytes(path));
    EXPECT_EQ(attributes, GetFileAttributesW(path.c_str()));
}

namespace {
std::wstring temporaryFile;
std::vector<std::string> accessLists;
BOOL WINAPI LookAndSet(HANDLE file, FILE_INFO_BY_HANDLE_CLASS what, void* value, DWORD size) {
    const bool isMade = what == FileDispositionInfo && accessLists.empty();
    if (isMade) accessLists.push_back(AccessOf(temporaryFile)); // not marked yet
    const BOOL done = SetFileInformationByHandle(file, what, value, size);
    const bool isBare =
        what == FileDispositionInfo && !static_cast<FILE_DISPOSITION_INFO*>(value)->DeleteFile;
    if (isBare) accessLists.push_back(AccessOf(temporaryFile)); // about to be renamed
    return done;
}
} // namespace

TEST(ReplaceContents, TheTemporaryFileHasTheAccessListFromItsFirstMoment) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"private.ini");
    temporaryFile = folder.File(L".private.ini.saving");
    accessLists.clear();
    WriteBytes(path, "old");
    AllowOwnerOnly(path);
    const std::string access = AccessOf(path);
    const InsteadOf look("SetFileInformationByHandle", &LookAndSet);
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(path, "new"));
    EXPECT_EQ((std::vector<std::string>{access, access}), accessLists);
    EXPECT_EQ(access, AccessOf(path));
}

TEST(ReplaceContents, AHardLinkedFileIsWrittenWhereItIs) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"name.ini");
    const std::wstring link = folder.File(L"link.ini");
    WriteBytes(path, "old and longer");
    ASSERT_TRUE(CreateHardLinkW(link.c_str(), path.c_str(), nullptr));
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(link, "new"));
    EXPECT_EQ("new", ReadBytes(path));
    EXPECT_EQ("new", ReadBytes(link));
    EXPECT_EQ(2u, folder.NumFiles());
}

TEST(ReplaceContents, NamesOfDevicesStreamsAndFoldersAreRefused) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"name.ini"), "old");
    for (const std::wstring& path : {std::wstring(L"NUL"), std::wstring(L"CON"), folder.Path().wstring(),
                                     folder.File(L"name.ini:stream"), folder.File(L"missing:stream"),
                                     folder.Path().wstring() + L"\\", folder.File(L"missing\\name.ini")}) {
        SCOPED_TRACE(ToUtf8(path));
        EXPECT_TRUE(FILES::ReplaceContents(path, "new"));
    }
    for (const std::wstring& path :
         {std::wstring(L"NUL"), folder.Path().wstring(), std::wstring(L"\\\\.\\pipe\\no")}) {
        SCOPED_TRACE(ToUtf8(path));
        EXPECT_FALSE(FILES::Reader(path).IsOpen());
        for (const wchar_t* mode : {L"r", L"w", L"a"}) EXPECT_EQ(nullptr, FILES::OpenStream(path, mode));
    }
    EXPECT_EQ("old", ReadBytes(folder.File(L"name.ini")));
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(LongPaths, EveryFileFunctionTakesThem) {
    const TemporaryFolder folder;
    std::wstring path = folder.Path().wstring();
    for (int i = 0; i < 12; ++i) {
        path += L"\\folder of a long path " + std::to_wstring(i);
        ASSERT_TRUE(CreateDirectoryW((L"\\\\?\\" + path).c_str(), nullptr)) << GetLastError();
    }
    path += L"\\settings.ini";
    ASSERT_LT(260u, path.size());
    std::wstring withSlashes = path;
    for (wchar_t& c : withSlashes) c = c == L'\\' ? L'/' : c;
    for (const std::wstring& name : {path, withSlashes, L"\\\\?\\" + path}) {
        SCOPED_TRACE(ToUtf8(name));
        EXPECT_EQ(std::error_code(), FILES::ReplaceContents(name, "first"));
        EXPECT_EQ(std::error_code(), FILES::ReplaceContents(name, "second"));
        FILES::Reader reader(name);
        ASSERT_TRUE(reader.IsOpen());
        EXPECT_EQ(6u, reader.Size());
        std::uint32_t seconds = 0;
        EXPECT_TRUE(FILES::ModificationTime(name, seconds));
        for (const wchar_t* mode : {L"r", L"r+", L"a", L"a+", L"w", L"w+"}) {
            std::FILE* const stream = FILES::OpenStream(name, mode);
            ASSERT_NE(nullptr, stream);
            std::fclose(stream);
        }
    }
    // remove_all does not reach it.
    EXPECT_TRUE(DeleteFileW((L"\\\\?\\" + path).c_str()));
    for (path.resize(path.rfind(L'\\')); path != folder.Path().wstring(); path.resize(path.rfind(L'\\')))
        EXPECT_TRUE(RemoveDirectoryW((L"\\\\?\\" + path).c_str()));
}

TEST(LongPaths, ANameOfTheLargestLengthIsSaved) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(std::wstring(251, L'n') + L".ini");
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(path, "first"));
    EXPECT_EQ(std::error_code(), FILES::ReplaceContents(path, "second"));
    EXPECT_EQ(1u, folder.NumFiles());
    EXPECT_TRUE(DeleteFileW((L"\\\\?\\" + path).c_str()));
}
