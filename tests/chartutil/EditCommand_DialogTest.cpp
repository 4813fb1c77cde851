// SPDX-License-Identifier: MIT
// The command with its dialog, in this process: what is saved, and what its caller is told.

#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "apps/chartutil/Program.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class EditCommandDialogTest : public ::testing::Test {
protected:
    struct Told {
        ExitCode code;
        std::string output;
        std::string error;
    };

    static Told Edit(const std::vector<std::wstring>& files) {
        std::vector<std::string> arguments = {"edit"};
        for (const std::wstring& file : files) arguments.push_back(ToUtf8(file));
        ::testing::internal::CaptureStdout();
        ::testing::internal::CaptureStderr();
        const ExitCode code = RunProgram(arguments);
        const std::string output = ::testing::internal::GetCapturedStdout();
        return {code, output, ::testing::internal::GetCapturedStderr()};
    }

    static int NumContoursIn(const std::wstring& path) {
        ContourDefinitionList list;
        list.Load(path.c_str());
        return list.NumContours();
    }

    EventLoop m_loop;
    TemporaryFolder m_folder;
    DialogDriver m_driver;
};

void AddOne(OpenDialog& editor) { editor.Click(L"Add"); }
void TakeIt(OpenDialog& contour) { contour.Click(L"OK"); }

} // namespace

TEST_F(EditCommandDialogTest, OkMakesAFileThatIsNotThereYet) {
    const std::wstring path = m_folder.File(L"new.cdf");
    m_driver
        .Then([](OpenDialog& editor) {
            EXPECT_EQ(L"new", editor.Title());
            AddOne(editor);
            editor.Click(L"OK");
        })
        .Then(TakeIt);
    const Told told = Edit({path});
    EXPECT_EQ(ExitCode::SUCCESS, told.code);
    EXPECT_EQ("", told.output);
    EXPECT_THAT(told.error, Not(HasSubstr("chartutil"))); // Qt may have remarks on its platform
    EXPECT_EQ(1, NumContoursIn(path));
}

TEST_F(EditCommandDialogTest, OkChangesAFile) {
    const std::wstring path = m_folder.File(L"chart.cdf");
    WriteBytes(path, "[Contour(0)]\nLevel=5\n");
    m_driver
        .Then([](OpenDialog& editor) {
            EXPECT_EQ(1u, editor.Rows().size());
            AddOne(editor);
            editor.Click(L"OK");
        })
        .Then(TakeIt);
    EXPECT_EQ(ExitCode::SUCCESS, Edit({path}).code);
    EXPECT_EQ(2, NumContoursIn(path));
}

TEST_F(EditCommandDialogTest, CancelWritesNothingAndIsNoFailure) {
    const std::wstring path = m_folder.File(L"new.cdf");
    m_driver
        .Then([](OpenDialog& editor) {
            AddOne(editor);
            editor.Key("Escape");
        })
        .Then(TakeIt);
    const Told told = Edit({path});
    EXPECT_EQ(ExitCode::SUCCESS, told.code);
    EXPECT_EQ("", told.output);
    EXPECT_THAT(told.error, Not(HasSubstr("chartutil"))); // Qt may have remarks on its platform
    EXPECT_EQ(0u, m_folder.NumFiles());
}

TEST_F(EditCommandDialogTest, OkThatCannotSaveIsAFailureForScripts) {
    m_driver.Then([](OpenDialog& editor) { editor.Click(L"OK"); }).Then([](OpenDialog& message) {
        EXPECT_THAT(ToUtf8(message.Message()), HasSubstr("Nothing was saved"));
        message.Key("Enter");
    });
    const Told told = Edit({m_folder.File(L"empty.cdf")});
    EXPECT_EQ(ExitCode::IO_ERROR, told.code);
    EXPECT_EQ("", told.output);
    EXPECT_THAT(told.error, HasSubstr("chartutil: nothing was saved"));
    EXPECT_EQ(0u, m_folder.NumFiles());
}

TEST_F(EditCommandDialogTest, WithoutAFileAsksWhereToSave) {
    const std::wstring path = m_folder.File(L"chosen.cdf");
    m_driver
        .Then([](OpenDialog& editor) {
            EXPECT_EQ(0u, editor.Rows().size());
            AddOne(editor);
            editor.Click(L"OK");
        })
        .Then(TakeIt)
        .Then([](OpenDialog& question) { question.Click(L"Yes"); })
        .Then([&](OpenDialog& file) {
            file.EnterFile(path);
            file.Accept();
        });
    EXPECT_EQ(ExitCode::SUCCESS, Edit({}).code);
    EXPECT_EQ(1, NumContoursIn(path));
}
