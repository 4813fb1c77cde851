// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <filesystem>
#include <gmock/gmock.h>

TEST(ColorsImport_Files, TableMayNotTakeThePlaceOfItsSourceBehindALink) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"c.cpt"), "0 red 1 red\n");
    std::filesystem::create_symlink("c.cpt", folder.Path() / "soft.col");
    std::filesystem::create_hard_link(folder.Path() / "c.cpt", folder.Path() / "hard.col");
    for (const wchar_t* target : {L"soft.col", L"hard.col"}) {
        const ProgramResult result =
            RunChartutil({"colors", "import", ToUtf8(folder.File(L"c.cpt")), ToUtf8(folder.File(target))});
        EXPECT_EQ(2, result.exitCode);
        EXPECT_THAT(result.error, testing::HasSubstr("is the file to be read"));
        EXPECT_EQ("0 red 1 red\n", ReadBytes(folder.File(L"c.cpt")));
    }
}
