#include "tests/support/Program.h"

TEST(EditCommand_NoDialogs, SaysThatThisBuildHasNoneAndWhatDoesItsWork) {
    const TemporaryFolder folder;
    const ProgramResult result = RunChartutil({"edit", ToUtf8(folder.File(L"new.cdf"))});
    EXPECT_EQ(3, result.exitCode);
    EXPECT_EQ(
        "chartutil: the editor cannot be shown: this program was built without dialogs; 'chartutil contours' "
        "lists, makes and checks contour definition files\n",
        result.error);
    EXPECT_EQ("", result.output);
    EXPECT_EQ(0u, folder.NumFiles());
}
