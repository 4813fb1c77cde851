// SPDX-License-Identifier: MIT
// Ctrl-C while a text is measured that takes many seconds.

#include "tests/chartutil/posix/TypedCtrlC.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>

using ::testing::EndsWith;

TEST(TextCommandInterrupt, CtrlCEndsTheMeasuringOfALongText) {
    std::string text; // with marks, the letters are shaped before they are measured
    while (text.size() < 6'000'000) text += "e\u0301";
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"long.txt"), text);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"text", "measure", "-", "--width", "100"},
          {"text", "measure", "-", "--width", "50", "--json"}}) {
        const TypedCtrlC run(arguments, "the text", ToUtf8(folder.File(L"long.txt")));
        EXPECT_EQ(SIGINT, run.signal);
        EXPECT_THAT(run.shown, EndsWith("chartutil: interrupted at the text; nothing was changed\r\n"));
    }
}
