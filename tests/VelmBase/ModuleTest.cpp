// SPDX-License-Identifier: MIT
#include "VelmBase/Module.h"

#include "UtilityDLL/module/UtilityDLL.h"
#include "VelmBase/LibraryVersion.h"
#include "tests/support/TestFiles.h"

namespace {

int g_own;

TEST(Module, IsWhatHoldsTheAddress) {
    void* const utility = ModuleAt(reinterpret_cast<const void*>(&UtilityDLLStartUp));
    void* const base = ModuleAt(reinterpret_cast<const void*>(&VersionText));
    EXPECT_NE(nullptr, utility);
    EXPECT_NE(nullptr, base);
    EXPECT_NE(base, utility);
    EXPECT_NE(utility, ModuleAt(&g_own));
    const int automatic = 0;
    EXPECT_EQ(nullptr, ModuleAt(&automatic));
    EXPECT_EQ(nullptr, ModuleAt(nullptr));
}

TEST(Module, HasThePathOfItsFile) {
    const std::wstring path = ModulePath(ModuleAt(reinterpret_cast<const void*>(&UtilityDLLStartUp)));
    EXPECT_TRUE(NativePath(path).is_absolute()) << ToUtf8(path);
    EXPECT_TRUE(std::filesystem::is_regular_file(NativePath(path))) << ToUtf8(path);
    EXPECT_EQ(0u, NativePath(path).filename().string().find("UtilityDLL.")) << ToUtf8(path);
    EXPECT_EQ(L"", ModulePath(nullptr));
}

} // namespace
