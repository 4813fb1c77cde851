#include "UtilityDLL/contours/ContourEditor.h"

#include "VelmConfigure/DataSearch.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

using Row = std::vector<std::wstring>;

class ContourEditorTest : public ::testing::Test {
protected:
    // Levels of 5, 10 and 20.
    std::wstring FileOfThree(const std::wstring& name = L"chart.cdf") {
        ContourDefinitionList list;
        list.Add({0.5F, 0, 5, 0x0000FF, false});
        list.Add({1.0F, 1, 10, 0x00FF00, true});
        list.Add({0.0F, 2, 20, 0xFF0000, false});
        const std::wstring path = m_folder.File(name);
        EXPECT_TRUE(list.Save(path.c_str()));
        return path;
    }

    std::vector<double> LevelsIn(const std::wstring& path) {
        ContourDefinitionList list;
        list.Load(path.c_str());
        std::vector<double> levels;
        for (int i = 0; i < list.NumContours(); ++i) levels.push_back(list[i].level);
        return levels;
    }

    EventLoop m_loop;
    TemporaryFolder m_folder;
    DialogDriver m_driver;
};

std::vector<std::wstring> Levels(const OpenDialog& editor) {
    std::vector<std::wstring> levels;
    for (const Row& row : editor.Rows()) levels.push_back(row.front());
    return levels;
}

} // namespace

TEST_F(ContourEditorTest, ShowsTheFileWithItsColumnsAndSwatches) {
    const std::wstring path = FileOfThree();
    m_driver.Then([](OpenDialog& editor) {
        EXPECT_EQ(L"chart", editor.Title());
        EXPECT_THAT(editor.Columns(), ElementsAre(L"Color Level", L"Annotation", L"Width", L"Type"));
        EXPECT_THAT(editor.Rows(), ElementsAre(Row{L"5.00", L"No", L"0.5", L"Continous"},
                                               Row{L"10.00", L"Yes", L"1.0", L"Dashed"},
                                               Row{L"20.00", L"No", L"0.0", L"Dot"}));
        editor.Focus(L"Add"); // the list would mark its row
        EXPECT_EQ(0x0000FFU, editor.SwatchOfRow(0));
        EXPECT_EQ(0x00FF00U, editor.SwatchOfRow(1));
        EXPECT_EQ(0xFF0000U, editor.SwatchOfRow(2));
        EXPECT_FALSE(editor.IsEnabled(L"Remove"));
        EXPECT_FALSE(editor.IsEnabled(L"Edit"));
        editor.Key("Escape");
    });
    const std::string before = ReadBytes(path);
    EXPECT_FALSE(DLG::EditContourList(path));
    EXPECT_EQ(before, ReadBytes(path));
}

TEST_F(ContourEditorTest, AddsAContourAndSelectsIt) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"7.50", L"10.00", L"20.00"));
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(1));
            EXPECT_TRUE(editor.IsEnabled(L"Edit"));
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) {
            EXPECT_EQ(L"Contour Properties", contour.Title());
            EXPECT_EQ(L"0.00", contour.Text(L"Level"));
            EXPECT_EQ(L"CONTINUOUS", contour.Text(L"Line style"));
            contour.SetText(L"Level", L"7.5");
            contour.SetText(L"Line width", L"0.25");
            contour.Choose(L"Line style", 1);
            contour.Click(L"Show labels");
            EXPECT_EQ(L"DASHED", contour.Text(L"Line style"));
            EXPECT_TRUE(contour.IsChecked(L"Show labels"));
            contour.Click(L"OK");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    ContourDefinitionList saved;
    ASSERT_TRUE(saved.Load(path.c_str()));
    const ContourDefinitionList::ContourDefInfo expected = {0.25F, 1, 7.5, 0, true};
    EXPECT_EQ(expected, saved[1]);
}

TEST_F(ContourEditorTest, RefusesALevelThatIsThere) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"10.00", L"20.00"));
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            contour.SetText(L"Level", L"10");
            contour.Key("Enter");
        })
        .Then([](OpenDialog& message) {
            EXPECT_EQ(L"Error", message.Title());
            EXPECT_EQ(L"The contour definition is already in the list, it was not added.", message.Message());
            message.Key("Enter");
        });
    EXPECT_FALSE(DLG::EditContourList(path));
}

TEST_F(ContourEditorTest, EditsTheSelectedContour) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.DoubleClickRow(1);
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"20.00", L"30.00"));
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(2));
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) {
            EXPECT_EQ(L"10.00", contour.Text(L"Level"));
            EXPECT_EQ(L"DASHED", contour.Text(L"Line style"));
            EXPECT_EQ(L"1", contour.Text(L"Line width"));
            EXPECT_TRUE(contour.IsChecked(L"Show labels"));
            contour.SetText(L"Level", L"30");
            contour.Click(L"OK");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(5, 20, 30));
}

TEST_F(ContourEditorTest, FailedEditTakesTheContourAway) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.ClickRow(0);
            editor.Click(L"Edit");
            EXPECT_THAT(Levels(editor), ElementsAre(L"10.00", L"20.00"));
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) {
            contour.SetText(L"Level", L"20");
            contour.Click(L"OK");
        })
        .Then([](OpenDialog& message) {
            EXPECT_EQ(
                L"Failed to implement modifications.\nReason:\n\tThe depth was modfied to a value\n\tthat is "
                L"already in the list!",
                message.Message());
            message.Click(L"OK");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(10, 20));
}

TEST_F(ContourEditorTest, RemovesWhatIsSelected) {
    const std::wstring path = FileOfThree();
    m_driver.Then([](OpenDialog& editor) {
        editor.ClickRow(0);
        EXPECT_TRUE(editor.IsEnabled(L"Remove"));
        editor.ClickRow(1, "Ctrl");
        editor.Click(L"Remove");
        EXPECT_THAT(Levels(editor), ElementsAre(L"20.00"));
        EXPECT_THAT(editor.SelectedRows(), ElementsAre(0));
        editor.Click(L"Remove");
        EXPECT_THAT(editor.Rows(), IsEmpty());
        EXPECT_FALSE(editor.IsEnabled(L"Remove"));
        editor.Key("Escape");
    });
    EXPECT_FALSE(DLG::EditContourList(path));
}

TEST_F(ContourEditorTest, WrongNumbersAreSaidAtTheirField) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            for (const auto& [text, hint] :
                 {std::pair(L"", L"Enter a number."), std::pair(L"ten", L"This is no number"),
                  std::pair(L"2,5", L"behind a point"), std::pair(L"nan", L"This is no number"),
                  std::pair(L"1e999", L"smaller")}) {
                contour.SetText(L"Level", text);
                contour.Click(L"OK");
                EXPECT_THAT(contour.Hint(), HasSubstr(hint));
                EXPECT_TRUE(contour.HasFocus(L"Level"));
            }
            contour.SetText(L"Level", L"1");
            EXPECT_EQ(L"", contour.Hint());
            contour.SetText(L"Line width", L"-1");
            contour.Click(L"OK");
            EXPECT_THAT(contour.Hint(), HasSubstr(L"not below 0"));
            contour.Key("Escape");
        });
    EXPECT_FALSE(DLG::EditContourList({}));
}

TEST_F(ContourEditorTest, GeneratesFromARange) {
    const std::wstring path = m_folder.File(L"new.cdf");
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Range");
            EXPECT_THAT(Levels(editor), ElementsAre(L"0.00", L"2.50", L"5.00", L"7.50", L"10.00"));
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& range) {
            EXPECT_EQ(L"Generate Contours", range.Title());
            range.Type(L"0");
            range.Key("Tab");
            range.Type(L"10");
            range.Key("Tab");
            range.Type(L"2.5");
            range.Key("Enter");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(0, 2.5, 5, 7.5, 10));
}

TEST_F(ContourEditorTest, FailedRangeEmptiesTheList) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Range");
            EXPECT_THAT(editor.Rows(), IsEmpty());
            editor.Key("Escape");
        })
        .Then([](OpenDialog& range) {
            range.SetText(L"Lowest level", L"10");
            range.SetText(L"Highest level", L"10");
            range.SetText(L"Interval", L"1");
            range.Click(L"OK");
        })
        .Then([](OpenDialog& message) {
            EXPECT_EQ(L"Failed to generate contours.", message.Message());
            message.Click(L"OK");
        });
    EXPECT_FALSE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(5, 10, 20));
}

TEST_F(ContourEditorTest, WithoutAPathAsksWhetherAndWhereToSave) {
    const std::wstring path = m_folder.File(L"saved");
    m_driver
        .Then([](OpenDialog& editor) {
            EXPECT_EQ(L"Contours", editor.Title());
            editor.Click(L"Add");
            editor.Click(L"OK"); // answered with No, it stays
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) { contour.Click(L"OK"); })
        .Then([](OpenDialog& question) {
            EXPECT_EQ(L"Save changes?", question.Message());
            question.Click(L"No");
        })
        .Then([](OpenDialog& question) { question.Click(L"Yes"); })
        .Then([&](OpenDialog& file) {
            file.EnterFile(path);
            file.Accept();
        });
    EXPECT_TRUE(DLG::EditContourList({}));
    EXPECT_THAT(LevelsIn(path + L".cdf"), ElementsAre(0));
}

TEST_F(ContourEditorTest, SavesUnderTheExtensionOfContourFiles) {
    const std::wstring path = FileOfThree(L"levels.txt");
    m_driver.Then([](OpenDialog& editor) { editor.Click(L"OK"); });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(m_folder.File(L"levels.cdf")), ElementsAre(5, 10, 20));
}
