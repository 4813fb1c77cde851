// SPDX-License-Identifier: MIT
// The module with the fonts: when it is loaded, and what is measured without it.

#include "Framework/device/DC.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>

namespace fs = std::filesystem;

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

fs::path TestFolder() { return fs::read_symlink("/proc/self/exe").parent_path(); }
fs::path Module() { return TestFolder().parent_path() / "lib/utilitydll/FrameworkFonts.so"; }

/// What a host says that has a folder of its own, with the libraries that it needs and this font module.
std::string HostWith(const std::string& module) {
    const TemporaryFolder folder;
    const fs::path path = folder.Path();
    fs::create_directories(path / "lib/utilitydll");
    fs::copy_file(TestFolder() / "FontHost", path / "FontHost");
    for (const char* const name : {"Framework.so.5", "VelmBaseR.so.5"})
        fs::copy_file(TestFolder().parent_path() / "lib" / name, path / "lib" / name);
    if (!module.empty()) WriteBytes(path / "lib/utilitydll/FrameworkFonts.so", module);
    const ProgramResult result = RunProgramAt((path / "FontHost").string(), {});
    EXPECT_EQ(0, result.exitCode) << result.error;
    return result.output;
}

} // namespace

TEST(DeviceModule, IsLoadedForTheFirstFontAlone) {
    CDC dc;
    ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    dc.SelectStockObject(SYSTEM_FONT);
    EXPECT_THAT(ReadBytes(fs::path("/proc/self/maps")), Not(HasSubstr("libfontconfig")));
    CFont font;
    font.CreateFontW(100, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, L"");
    EXPECT_THAT(ReadBytes(fs::path("/proc/self/maps")), HasSubstr("libfontconfig"));
}

TEST(DeviceModule, IsFoundBesideTheLibrary) { EXPECT_EQ("1139\n", HostWith(ReadBytes(Module()))); }

TEST(DeviceModule, WithoutItNothingIsMeasured) {
    EXPECT_EQ("0 bytes of metrics\n", HostWith(""));
    EXPECT_EQ("0 bytes of metrics\n", HostWith("no library"));
}

TEST(DeviceModule, OneOfAnotherVersionIsNotUsed) {
    std::string module = ReadBytes(Module());
    const std::string version = std::string("\0", 1) + PROJECT_VERSION;
    std::string other = version;
    other.back() = '?';
    int count = 0;
    for (std::size_t at = 0; (at = module.find(version, at)) != std::string::npos; ++count)
        module.replace(at, other.size(), other);
    ASSERT_GT(count, 0);
    EXPECT_EQ("0 bytes of metrics\n", HostWith(module));
}
