// SPDX-License-Identifier: MIT
#include "tests/support/PackageCopy.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST(EditCommand_Module, ProgramWithoutTheModuleForWindowsSaysWhichItIs) {
    const PackageCopy package;
    const ProgramResult result =
        package.Run(ChartutilPath(), {"edit", ToUtf8(package.Folder().File(L"new.cdf"))});
    EXPECT_EQ(3, result.exitCode);
    EXPECT_THAT(result.error,
                AllOf(StartsWith("chartutil: the editor cannot be shown: "),
                      HasSubstr(package.Folder().Path().string() + "/utilitydll/FrameworkWindows.so"),
                      HasSubstr("Debian package")));
    EXPECT_EQ("", result.output);
    EXPECT_FALSE(std::filesystem::exists(package.Folder().Path() / "new.cdf"));
}
