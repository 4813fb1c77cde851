// SPDX-License-Identifier: MIT
// What Windows reads in the libraries and the program without running them.

#include "VersionControl/VersionControl.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <shellapi.h>

namespace {

struct File {
    std::wstring path, name;
    DWORD type;
};

std::wstring PathOf(HMODULE module) {
    wchar_t path[MAX_PATH] = L"";
    EXPECT_NE(0u, GetModuleFileNameW(module, path, MAX_PATH));
    return path;
}

// Each library of the suite, as it tells its name itself, and the program.
std::vector<File> Files() {
    std::vector<File> files = {{FromUtf8(ChartutilPath()), L"chartutil", VFT_APP}};
    for (const CheckedLibrary& library : CheckLibraries(0)) {
        const std::wstring name = FromUtf8(library.name);
        files.push_back({PathOf(GetModuleHandleW((name + L".dll").c_str())), name, VFT_DLL});
    }
    EXPECT_EQ(6u, files.size());
    return files;
}

class VersionOf {
public:
    explicit VersionOf(const std::wstring& path) : m_data(GetFileVersionInfoSizeW(path.c_str(), nullptr)) {
        EXPECT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(m_data.size()), m_data.data()));
    }
    VS_FIXEDFILEINFO Numbers() const {
        const auto* const numbers = static_cast<const VS_FIXEDFILEINFO*>(Find(L"\\"));
        return numbers ? *numbers : VS_FIXEDFILEINFO{};
    }
    std::wstring Text(const std::wstring& name) const {
        const void* const text = Find(L"\\StringFileInfo\\040904B0\\" + name);
        return text ? static_cast<const wchar_t*>(text) : L"";
    }

private:
    const void* Find(const std::wstring& place) const {
        void* found = nullptr;
        UINT length = 0;
        return VerQueryValueW(m_data.data(), place.c_str(), &found, &length) ? found : nullptr;
    }
    std::vector<unsigned char> m_data;
};

TEST(FileResources, TellTheVersionOfEachLibraryAndTheProgram) {
    for (const File& file : Files()) {
        SCOPED_TRACE(ToUtf8(file.path));
        const VersionOf version(file.path);
        const VS_FIXEDFILEINFO numbers = version.Numbers();
        EXPECT_EQ(MAKELONG(0, 5), static_cast<LONG>(numbers.dwFileVersionMS));
        EXPECT_EQ(MAKELONG(20, 0), static_cast<LONG>(numbers.dwFileVersionLS));
        EXPECT_EQ(numbers.dwFileVersionMS, numbers.dwProductVersionMS);
        EXPECT_EQ(numbers.dwFileVersionLS, numbers.dwProductVersionLS);
        EXPECT_EQ(file.type, numbers.dwFileType);
        EXPECT_EQ(L"5.0.0.20", version.Text(L"FileVersion"));
        EXPECT_EQ(L"5.0.0.20", version.Text(L"ProductVersion"));
        EXPECT_EQ(L"UtilityDLL", version.Text(L"ProductName"));
        EXPECT_EQ(file.name, version.Text(L"InternalName"));
        EXPECT_THAT(file.path, ::testing::EndsWith(version.Text(L"OriginalFilename")));
        EXPECT_THAT(version.Text(L"OriginalFilename"), ::testing::StartsWith(file.name + L'.'));
        EXPECT_NE(L"", version.Text(L"FileDescription"));
    }
}

// What the manifest of that number in a file asks for besides itself, as the system understands it.
std::wstring AskedFor(const std::wstring& path, int number) {
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    description.lpSource = path.c_str();
    description.lpResourceName = MAKEINTRESOURCEW(number);
    const HANDLE context = CreateActCtxW(&description);
    if (context == INVALID_HANDLE_VALUE) return L"no manifest";
    ULONG asked = 2; // 1 is the file itself
    alignas(ACTIVATION_CONTEXT_ASSEMBLY_DETAILED_INFORMATION) unsigned char place[4096];
    SIZE_T size = 0;
    std::wstring identity = L"nothing";
    if (QueryActCtxW(0, context, &asked, AssemblyDetailedInformationInActivationContext, place, sizeof place,
                     &size))
        identity = reinterpret_cast<const ACTIVATION_CONTEXT_ASSEMBLY_DETAILED_INFORMATION*>(place)
                       ->lpAssemblyEncodedAssemblyIdentity;
    ReleaseActCtx(context);
    return identity;
}

TEST(FileResources, AskForThePresentControls) {
    const auto present = ::testing::AllOf(::testing::HasSubstr(L"Microsoft.Windows.Common-Controls"),
                                          ::testing::HasSubstr(L"version=\"6."));
    EXPECT_THAT(AskedFor(PathOf(GetModuleHandleW(L"Framework.dll")), 2), present); // of what a library makes
    EXPECT_THAT(AskedFor(FromUtf8(ChartutilPath()), 1), present);                  // of a whole program
}

TEST(FileResources, GiveTheProgramItsIcon) {
    HICON icon = nullptr;
    EXPECT_EQ(1u, ExtractIconExW(FromUtf8(ChartutilPath()).c_str(), 0, &icon, nullptr, 1));
    EXPECT_NE(nullptr, icon);
    DestroyIcon(icon);
}

} // namespace
