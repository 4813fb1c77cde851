// SPDX-License-Identifier: MIT
// Where windows come from a module: where it is looked for, and what is said when it cannot be used.

#include "tests/support/Program.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace fs = std::filesystem;

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

fs::path TestFolder() { return fs::read_symlink("/proc/self/exe").parent_path(); }

/// A host in a folder of its own, with the libraries that it needs and without any module.
class LonelyHost {
public:
    LonelyHost() {
        fs::create_directories(ModulePath().parent_path());
        fs::copy_file(TestFolder() / "WindowHost", m_folder.Path() / "WindowHost");
        const fs::path libraries = TestFolder().parent_path() / "lib";
        for (const char* name : {"Framework.so.5", "VelmBaseR.so.5"})
            fs::copy_file(libraries / name, m_folder.Path() / "lib" / name);
    }

    fs::path ModulePath() const { return m_folder.Path() / "lib/utilitydll/FrameworkWindows.so"; }

    /// What it says; `relative` has the libraries found by a path in relation to the current folder.
    std::string Run(bool relative = false) const {
        WriteBytes(m_folder.Path() / "empty", "");
        const std::string host = (m_folder.Path() / "WindowHost").string();
        const std::vector<std::string> arguments =
            relative ? std::vector<std::string>{"-c", "cd \"$1\" && LD_LIBRARY_PATH=lib ./WindowHost", "sh",
                                                m_folder.Path().string()}
                     : std::vector<std::string>{"-c", "\"$1\"", "sh", host};
        EXPECT_EQ(0, RunWithFiles("/bin/sh", arguments, m_folder.File(L"empty"), m_folder.File(L"output"),
                                  m_folder.File(L"error")));
        EXPECT_EQ("", ReadBytes(m_folder.Path() / "error"));
        return ReadBytes(m_folder.Path() / "output");
    }

private:
    TemporaryFolder m_folder;
};

// The libraries that the system's loader brings in for a file, with all that they need.
std::string Libraries(const fs::path& file) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "empty", "");
    EXPECT_EQ(0, RunWithFiles("/usr/bin/ldd", {file.string()}, folder.File(L"empty"), folder.File(L"output"),
                              folder.File(L"error")));
    return ReadBytes(folder.Path() / "output");
}

} // namespace

TEST(Wnd_Module, MissingModuleIsNamedWithItsPackage) {
    const LonelyHost host;
    EXPECT_EQ("Windows cannot be made: this program has no " + host.ModulePath().string() +
                  " (the Debian package utilitydll-gui has it; a build makes it where qt6-base-dev is "
                  "installed)",
              host.Run());
}

TEST(Wnd_Module, IsLookedForInTheFolderOfTheLibrary) {
    const LonelyHost host;
    EXPECT_THAT(host.Run(true), HasSubstr("has no " + host.ModulePath().string() + " "));
}

TEST(Wnd_Module, FileThatIsNoModuleIsNamedWithWhatItNeeds) {
    const LonelyHost host;
    WriteBytes(host.ModulePath(), "no library");
    EXPECT_THAT(host.Run(), AllOf(HasSubstr("this program cannot load " + host.ModulePath().string() + " ("),
                                  HasSubstr("it needs the Debian package libqt6widgets6)")));
    fs::remove(host.ModulePath()); // a library without what is looked for
    fs::copy_file(TestFolder().parent_path() / "lib/VelmBaseR.so.5", host.ModulePath());
    EXPECT_THAT(host.Run(),
                AllOf(HasSubstr("this program cannot load "), HasSubstr("FrameworkWindowsModule")));
}

TEST(Wnd_Module, ModuleOfAnotherVersionIsNotUsed) {
    const LonelyHost host;
    fs::copy_file(TestFolder().parent_path() / "lib/ForeignModule.so", host.ModulePath());
    EXPECT_EQ("Windows cannot be made: this program cannot use " + host.ModulePath().string() +
                  ", which has the version 4.9.0.1 and not this library's, " PROJECT_VERSION,
              host.Run());
}

TEST(Wnd_Module, LibrariesNeedNoQt) {
    for (const char* name : {"Framework.so", "UtilityDLL.so"})
        EXPECT_THAT(Libraries(TestFolder().parent_path() / "lib" / name),
                    AllOf(HasSubstr("VelmBaseR.so"), Not(HasSubstr("Qt")), Not(HasSubstr("libX"))));
}

TEST(Wnd_Module, HostWithoutApplicationIsTold) {
    const fs::path module = TestFolder().parent_path() / "lib/utilitydll/FrameworkWindows.so";
    if (!fs::exists(module)) GTEST_SKIP() << "built without Qt";
    const LonelyHost host;
    fs::copy_file(module, host.ModulePath());
    EXPECT_EQ("Windows cannot be made: there is no QApplication", host.Run());
}
