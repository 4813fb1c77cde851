// SPDX-License-Identifier: MIT
#include "UtilityDLL/contours/ContourEditor.h"

#include "Framework/windows/DpiCor.h"
#include "VelmConfigure/DataSearch.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"
#include "tests/support/Language.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

using Row = std::vector<std::wstring>;

class ContourEditorTest : public ::testing::Test {
protected:
    ContourEditorTest() {
        DataSearch::GetDataSearch().SetFolder(DataSearch::CHOICE_LISTS, WidePath(m_folder.Path()));
    }
    ~ContourEditorTest() override { DataSearch::GetDataSearch().SetFolder(DataSearch::CHOICE_LISTS, {}); }

    std::wstring FileOf(const std::wstring& name,
                        const std::vector<ContourDefinitionList::ContourDefInfo>& all) {
        ContourDefinitionList list;
        for (const auto& contour : all) list.Add(contour);
        std::wstring path = m_folder.File(name);
        EXPECT_TRUE(list.Save(path.c_str()));
        return path;
    }

    // Levels of 5, 10 and 20.
    std::wstring FileOfThree(const std::wstring& name = L"chart.cdf") {
        return FileOf(
            name,
            {{0.5F, 0, 5, 0x0000FF, false}, {1.0F, 1, 10, 0x00FF00, true}, {0.0F, 2, 20, 0xFF0000, false}});
    }

    std::wstring FileOfLevels(int count) {
        std::vector<ContourDefinitionList::ContourDefInfo> contours;
        contours.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            contours.push_back({.level = static_cast<double>(i), .trueColor = static_cast<std::uint32_t>(i)});
        return FileOf(L"many.cdf", contours);
    }

    static std::vector<double> LevelsIn(const std::wstring& path) {
        ContourDefinitionList list;
        list.Load(path.c_str());
        std::vector<double> levels;
        levels.reserve(static_cast<std::size_t>(list.NumContours()));
        for (int i = 0; i < list.NumContours(); ++i) levels.push_back(list[i].level);
        return levels;
    }

    static ContourDefinitionList::ContourDefInfo FirstIn(const std::wstring& path) {
        ContourDefinitionList list;
        EXPECT_TRUE(list.Load(path.c_str()));
        return list.NumContours() > 0 ? list[0] : ContourDefinitionList::ContourDefInfo();
    }

    // The next dialog is a message with this text, which the user reads.
    void ThenRead(const std::wstring& text, const std::wstring& caption = L"Error") {
        m_driver.Then([=](OpenDialog& message) {
            EXPECT_EQ(caption, message.Title());
            EXPECT_EQ(text, message.Message());
            EXPECT_FALSE(message.IsQuestion());
            message.Key("Enter");
        });
    }

    // The next dialog is a question with this text.
    void ThenAnswer(const std::wstring& text, const std::wstring& answer) {
        m_driver.Then([=](OpenDialog& question) {
            EXPECT_EQ(text, question.Message());
            EXPECT_TRUE(question.IsQuestion());
            question.Click(answer);
        });
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

constexpr wchar_t kReplace[] = L"What is in this file would be lost: it has more than is shown here, is "
                               L"another one than was opened, could "
                               L"not be read, or another program changed it meanwhile.\nReplace it?\n\t";
constexpr wchar_t kNotSaved[] =
    L"The contours were not saved.\nCheck that the folder may be written to and has room:\n\t";

// The library's texts in another language.
class ChosenLanguage {
public:
    explicit ChosenLanguage(const std::wstring& name) : m_setting(L"UTILITYDLL_LANGUAGE", name) {
        ChooseLanguageAnew();
    }
    ~ChosenLanguage() {
        SetEnvironment(L"UTILITYDLL_LANGUAGE", L"en");
        ChooseLanguageAnew();
    }
    ChosenLanguage(const ChosenLanguage&) = delete;
    ChosenLanguage& operator=(const ChosenLanguage&) = delete;

private:
    EnvironmentSetting m_setting;
};

} // namespace

// Opening and filling.

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
        EXPECT_EQ(std::pair(DpiCor(16), DpiCor(16)), editor.SwatchSizeOfRow(1));
        EXPECT_THAT(editor.Groups(), ElementsAre(L"Generate from"));
        editor.Key("Escape");
    });
    const std::string before = ReadBytes(path);
    EXPECT_FALSE(DLG::EditContourList(path));
    EXPECT_EQ(before, ReadBytes(path));
}

TEST_F(ContourEditorTest, BeginsWithNothingSelected) {
    m_driver.Then([](OpenDialog& editor) {
        EXPECT_THAT(editor.SelectedRows(), IsEmpty());
        EXPECT_FALSE(editor.IsEnabled(L"Remove"));
        EXPECT_FALSE(editor.IsEnabled(L"Edit"));
        for (const wchar_t* const button : {L"Add", L"Range", L"Color Table", L"OK", L"Cancel"})
            EXPECT_TRUE(editor.IsEnabled(button));
        editor.Key("Escape");
    });
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

TEST_F(ContourEditorTest, WithoutAPathIsEmptyAndHasItsOwnCaption) {
    m_driver.Then([](OpenDialog& editor) {
        EXPECT_EQ(L"Contours", editor.Title());
        EXPECT_THAT(editor.Rows(), IsEmpty());
        editor.Click(L"Cancel");
    });
    EXPECT_FALSE(DLG::EditContourList({}));
}

TEST_F(ContourEditorTest, IsCalledAfterTheTitleOfItsFile) {
    for (const auto& [name, title] :
         {std::pair(L"depths.2020.cdf", L"depths.2020"), std::pair(L"new", L"new"),
          std::pair(L"T\u00FCr \u6D77 & co.txt", L"T\u00FCr \u6D77 & co")}) {
        m_driver.Then([title = title](OpenDialog& editor) {
            EXPECT_EQ(title, editor.Title());
            editor.Key("Escape");
        });
        EXPECT_FALSE(DLG::EditContourList(m_folder.File(name)));
    }
}

TEST_F(ContourEditorTest, TabGoesThroughTheListAndTheButtons) {
    m_driver.Then([](OpenDialog& editor) {
        EXPECT_THAT(editor.Buttons(),
                    ElementsAre(L"Add", L"Remove", L"Edit", L"Range", L"Color Table", L"OK", L"Cancel"));
        EXPECT_TRUE(editor.HasFocus(L"Contours"));
        editor.ClickRow(0);
        for (const wchar_t* const next :
             {L"Add", L"Remove", L"Edit", L"Range", L"Color Table", L"OK", L"Cancel", L"Contours", L"Add"}) {
            editor.Key("Tab");
            EXPECT_TRUE(editor.HasFocus(next)) << ::testing::PrintToString(next);
        }
        editor.Key("Escape");
    });
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

TEST_F(ContourEditorTest, TheLevelsHaveSeventyUnitsOrWhatTheirHeadingNeeds) {
    m_driver.Then([](OpenDialog& editor) {
        EXPECT_GE(editor.ColumnWidth(0), DpiCor(70));
        EXPECT_LE(editor.ColumnWidth(0), 2 * DpiCor(70));
        editor.Key("Escape");
    });
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

TEST_F(ContourEditorTest, SaysThatAFileCannotBeRead) {
    const std::wstring path = m_folder.File(L"letter.cdf");
    WriteBytes(path, "Dear all,\n");
    ThenRead(L"This file is no contour definition file, or cannot be read:\n\t" + path);
    m_driver.Then([](OpenDialog& editor) {
        EXPECT_EQ(L"letter", editor.Title());
        EXPECT_THAT(editor.Rows(), IsEmpty());
        editor.Key("Escape");
    });
    EXPECT_FALSE(DLG::EditContourList(path));
    EXPECT_EQ("Dear all,\n", ReadBytes(path));
}

TEST_F(ContourEditorTest, ShowsLevelsAsTheFileHasThem) {
    const std::wstring path = m_folder.File(L"given.cdf");
    WriteBytes(path, "[Contour(0)]\nLevel = 9\n[Contour(1)]\nLevel = 3\n[Contour(2)]\nLevel = 9\n"
                     "[Contour(4)]\nLevel = 1\n");
    m_driver.Then([](OpenDialog& editor) {
        EXPECT_THAT(Levels(editor), ElementsAre(L"9.00", L"3.00", L"9.00"));
        editor.Key("Escape");
    });
    EXPECT_FALSE(DLG::EditContourList(path));
}

// "Add".

TEST_F(ContourEditorTest, AddsAContourAndSelectsIt) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"7.50", L"10.00", L"20.00"));
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(1));
            EXPECT_TRUE(editor.IsRowVisible(1));
            EXPECT_TRUE(editor.IsEnabled(L"Edit"));
            EXPECT_TRUE(editor.IsEnabled(L"Remove"));
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) {
            contour.SetText(L"Level", L"7.5");
            contour.SetText(L"Line width", L"0.25");
            contour.Choose(L"Line style", 1);
            contour.Click(L"Show labels");
            contour.Click(L"OK");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    ContourDefinitionList saved;
    ASSERT_TRUE(saved.Load(path.c_str()));
    const ContourDefinitionList::ContourDefInfo expected = {0.25F, 1, 7.5, 0, true};
    EXPECT_EQ(expected, saved[1]);
}

TEST_F(ContourEditorTest, ANewContourBeginsBlackContinuousAndWithoutALabel) {
    const std::wstring path = m_folder.File(L"new.cdf");
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) {
            EXPECT_EQ(L"Contour Properties", contour.Title());
            EXPECT_EQ(L"0.00", contour.Text(L"Level"));
            EXPECT_EQ(L"CONTINUOUS", contour.Text(L"Line style"));
            EXPECT_EQ(L"0", contour.Text(L"Line width"));
            EXPECT_FALSE(contour.IsChecked(L"Show labels"));
            contour.Click(L"OK");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_EQ(ContourDefinitionList::ContourDefInfo(), FirstIn(path));
}

TEST_F(ContourEditorTest, RefusesALevelThatIsThere) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.ClickRow(2);
            editor.Click(L"Add");
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"10.00", L"20.00"));
            EXPECT_EQ(L"Dashed", editor.Rows()[1][3]);
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(2)); // as it was
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            contour.SetText(L"Level", L"10");
            contour.Key("Enter");
        });
    ThenRead(L"The contour definition is already in the list, it was not added.");
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

TEST_F(ContourEditorTest, AddsNothingWhenThePropertiesAreCancelled) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Click(L"Add");
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"10.00", L"20.00"));
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            contour.SetText(L"Level", L"7");
            contour.Key("Escape");
        })
        .Then([](OpenDialog& contour) { contour.Click(L"Cancel"); });
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

TEST_F(ContourEditorTest, EnterOnAButtonPressesThatButton) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Focus(L"Add");
            editor.Key("Enter");
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"7.00", L"10.00", L"20.00"));
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            contour.SetText(L"Level", L"7");
            contour.Key("Enter");
        });
    EXPECT_FALSE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(5, 10, 20));
}

// "Edit" and the properties of a contour.

TEST_F(ContourEditorTest, ADoubleClickEditsTheContour) {
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

TEST_F(ContourEditorTest, TheButtonEditsTheFirstThatIsSelected) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.ClickRow(2);
            editor.ClickRow(1, "Ctrl");
            editor.Click(L"Edit");
            EXPECT_THAT(editor.Rows()[1], ElementsAre(L"10.00", L"No", L"1.0", L"Dashed"));
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(1));
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            EXPECT_EQ(L"10.00", contour.Text(L"Level"));
            contour.Click(L"Show labels");
            contour.Click(L"OK");
        });
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

TEST_F(ContourEditorTest, FailedEditTakesTheContourAway) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.ClickRow(0);
            editor.Click(L"Edit");
            EXPECT_THAT(Levels(editor), ElementsAre(L"10.00", L"20.00"));
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(1)); // the one that has the level
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) {
            contour.SetText(L"Level", L"20");
            contour.Click(L"OK");
        });
    ThenRead(
        L"Failed to implement modifications.\nReason:\n\tThe depth was modfied to a value\n\tthat is already "
        L"in the list!");
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(10, 20));
}

TEST_F(ContourEditorTest, ACancelledEditChangesNothing) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.ClickRow(0);
            editor.Click(L"Edit");
            EXPECT_THAT(editor.Rows()[0], ElementsAre(L"5.00", L"No", L"0.5", L"Continous"));
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) {
            contour.SetText(L"Level", L"6");
            contour.SetText(L"Line width", L"7");
            contour.Choose(L"Line style", 2);
            contour.Click(L"Show labels");
            contour.Key("Escape");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_EQ((ContourDefinitionList::ContourDefInfo{0.5F, 0, 5, 0x0000FF, false}), FirstIn(path));
}

TEST_F(ContourEditorTest, WhatIsNotTouchedKeepsItsDigits) {
    const ContourDefinitionList::ContourDefInfo contour = {1.2345F, 2, 7.123456, 0x123456, true};
    const std::wstring path = FileOf(L"exact.cdf", {contour});
    m_driver
        .Then([](OpenDialog& editor) {
            editor.DoubleClickRow(0);
            EXPECT_THAT(editor.Rows()[0], ElementsAre(L"7.12", L"Yes", L"1.2", L"Dot"));
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(0));
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& properties) {
            EXPECT_EQ(L"7.12", properties.Text(L"Level"));
            properties.Click(L"OK");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_EQ(contour, FirstIn(path));
}

TEST_F(ContourEditorTest, TabGoesThroughThePropertiesInTheirOrder) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            EXPECT_THAT(contour.Buttons(), ElementsAre(L"Click to Change", L"OK", L"Cancel"));
            EXPECT_TRUE(contour.HasFocus(L"Level"));
            for (const wchar_t* const next :
                 {L"Color", L"Line style", L"Line width", L"Show labels", L"OK", L"Cancel", L"Level"}) {
                contour.Key("Tab");
                EXPECT_TRUE(contour.HasFocus(next)) << ::testing::PrintToString(next);
            }
            contour.Key("Escape");
        });
    EXPECT_FALSE(DLG::EditContourList({}));
}

TEST_F(ContourEditorTest, OffersTheLineStylesByTheirNamesInTheFile) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            for (const auto& [position, name] :
                 {std::pair(0, L"CONTINUOUS"), std::pair(1, L"DASHED"), std::pair(2, L"DOTTED"),
                  std::pair(3, L"DOTTED")}) { // there are three
                contour.Choose(L"Line style", position);
                EXPECT_EQ(name, contour.Text(L"Line style"));
            }
            contour.Key("Escape");
        });
    EXPECT_FALSE(DLG::EditContourList({}));
}

TEST_F(ContourEditorTest, TheColorIsChosenInTheSystemsDialog) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.ClickRow(0);
            editor.Click(L"Edit");
            editor.Focus(L"Add");
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(0));
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) {
            contour.Click(L"Color");
            contour.Click(L"Color"); // and cancels this one
            contour.Click(L"OK");
        })
        .Then([](OpenDialog& color) {
            color.EnterColor(0x56AB12);
            color.Accept();
        })
        .Then([](OpenDialog& color) {
            color.EnterColor(0xFFFFFF);
            color.Key("Escape");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_EQ(0x56AB12U, FirstIn(path).trueColor);
}

TEST_F(ContourEditorTest, TheArrowsOfTheWidthGoByTenths) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            contour.Focus(L"Line width");
            for (const auto& [key, text] :
                 {std::pair("Down", L"0"), std::pair("Up", L"0.1"), std::pair("Up", L"0.2"),
                  std::pair("Up", L"0.3"), std::pair("Down", L"0.2"), std::pair("Down", L"0.1"),
                  std::pair("Down", L"0"), std::pair("Down", L"0")}) {
                contour.Key(key);
                EXPECT_EQ(text, contour.Text(L"Line width"));
            }
            contour.SetText(L"Line width", L"thin");
            contour.Key("Up");
            EXPECT_EQ(L"thin", contour.Text(L"Line width"));
            contour.Key("Escape");
        });
    EXPECT_FALSE(DLG::EditContourList({}));
}

TEST_F(ContourEditorTest, WrongNumbersAreSaidAtTheirField) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            EXPECT_THAT(editor.Rows(), IsEmpty());
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            for (const auto& [text, hint] :
                 {std::pair(L"", L"Enter a number."),
                  std::pair(L"ten", L"This is no number. Write one as in 12, -3.5 or 1e3."),
                  std::pair(L"2,5", L"Write the decimals behind a point, as in 2.5."),
                  std::pair(L"nan", L"This is no number. Write one as in 12, -3.5 or 1e3."),
                  std::pair(L"-1e999", L"Enter a larger number."),
                  std::pair(L"1e999", L"Enter a smaller number.")}) {
                contour.SetText(L"Level", text);
                contour.Click(L"OK");
                EXPECT_EQ(hint, contour.Hint());
                EXPECT_TRUE(contour.HasFocus(L"Level"));
                EXPECT_EQ(text, contour.Text(L"Level"));
            }
            contour.SetText(L"Level", L"1");
            EXPECT_EQ(L"", contour.Hint());
            contour.SetText(L"Line width", L"-1");
            contour.Key("Enter");
            EXPECT_EQ(L"Enter a number that is not below 0.", contour.Hint());
            EXPECT_TRUE(contour.HasFocus(L"Line width"));
            contour.SetText(L"Level", L"x"); // of two the first is said
            contour.Key("Enter");
            EXPECT_EQ(L"This is no number. Write one as in 12, -3.5 or 1e3.", contour.Hint());
            EXPECT_TRUE(contour.HasFocus(L"Level"));
            contour.Key("Escape");
        });
    EXPECT_FALSE(DLG::EditContourList({}));
}

// "Remove".

TEST_F(ContourEditorTest, RemovesWhatIsSelectedAndSelectsItsNeighbour) {
    struct Case {
        std::vector<int> selected;
        std::vector<std::wstring> left;
        std::vector<int> next;
    };
    const std::wstring path = FileOfLevels(5);
    for (const Case& test : {
             Case{{0}, {L"1.00", L"2.00", L"3.00", L"4.00"}, {0}},
             Case{{2}, {L"0.00", L"1.00", L"3.00", L"4.00"}, {2}},
             Case{{4}, {L"0.00", L"1.00", L"2.00", L"3.00"}, {3}},
             Case{{1, 2, 3}, {L"0.00", L"4.00"}, {1}},
             Case{{4, 0, 2}, {L"1.00", L"3.00"}, {0}},
             Case{{0, 1, 2, 3, 4}, {}, {}},
         }) {
        m_driver.Then([&](OpenDialog& editor) {
            for (const int row : test.selected)
                editor.ClickRow(row, row == test.selected.front() ? "" : "Ctrl");
            EXPECT_TRUE(editor.IsEnabled(L"Remove"));
            editor.Click(L"Remove");
            EXPECT_EQ(test.left, Levels(editor));
            EXPECT_EQ(test.next, editor.SelectedRows());
            for (const int row : test.next) EXPECT_TRUE(editor.IsRowVisible(row));
            EXPECT_EQ(!test.next.empty(), editor.IsEnabled(L"Remove"));
            EXPECT_EQ(!test.next.empty(), editor.IsEnabled(L"Edit"));
            editor.Key("Escape");
        });
        EXPECT_FALSE(DLG::EditContourList(path));
    }
}

TEST_F(ContourEditorTest, WhatWasRemovedIsNotSaved) {
    const std::wstring path = FileOfThree();
    m_driver.Then([](OpenDialog& editor) {
        editor.ClickRow(1);
        editor.Click(L"Remove");
        EXPECT_EQ((Row{L"20.00", L"No", L"0.0", L"Dot"}), editor.Rows()[1]);
        editor.Click(L"OK");
    });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(5, 20));
}

TEST_F(ContourEditorTest, ButtonsFollowTheSelection) {
    m_driver.Then([](OpenDialog& editor) {
        editor.ClickRow(1);
        EXPECT_TRUE(editor.IsEnabled(L"Remove"));
        EXPECT_TRUE(editor.IsEnabled(L"Edit"));
        editor.ClickRow(1, "Ctrl"); // no longer
        EXPECT_THAT(editor.SelectedRows(), IsEmpty());
        EXPECT_FALSE(editor.IsEnabled(L"Remove"));
        EXPECT_FALSE(editor.IsEnabled(L"Edit"));
        editor.ClickRow(0);
        editor.ClickRow(2, "Shift");
        EXPECT_THAT(editor.SelectedRows(), ElementsAre(0, 1, 2));
        EXPECT_TRUE(editor.IsEnabled(L"Remove"));
        editor.Key("Escape");
    });
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

// "Generate from".

TEST_F(ContourEditorTest, GeneratesFromARange) {
    const std::wstring path = m_folder.File(L"new.cdf");
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Range");
            EXPECT_THAT(Levels(editor), ElementsAre(L"0.00", L"2.50", L"5.00", L"7.50", L"10.00"));
            EXPECT_THAT(editor.SelectedRows(), IsEmpty());
            EXPECT_FALSE(editor.IsEnabled(L"Edit"));
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& range) {
            EXPECT_EQ(L"Generate Contours", range.Title());
            EXPECT_THAT(range.Groups(), ElementsAre(L"Range"));
            EXPECT_THAT(range.Buttons(), ElementsAre(L"OK", L"Cancel"));
            EXPECT_TRUE(range.HasFocus(L"Lowest level"));
            for (const wchar_t* const field : {L"Lowest level", L"Highest level", L"Interval"})
                EXPECT_EQ(L"", range.Text(field));
            range.Type(L"0");
            range.Key("Tab");
            EXPECT_TRUE(range.HasFocus(L"Highest level"));
            range.Type(L"10");
            range.Key("Tab");
            EXPECT_TRUE(range.HasFocus(L"Interval"));
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
        });
    ThenRead(L"Failed to generate contours.");
    EXPECT_FALSE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(5, 10, 20));
}

TEST_F(ContourEditorTest, ARangeNeedsItsThreeNumbers) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Range");
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"10.00", L"20.00"));
            editor.Key("Escape");
        })
        .Then([](OpenDialog& range) {
            for (const wchar_t* const field : {L"Lowest level", L"Highest level", L"Interval"}) {
                range.Key("Enter");
                EXPECT_EQ(L"Enter a number.", range.Hint());
                EXPECT_TRUE(range.HasFocus(field));
                range.SetText(field, L"1,5");
                range.Key("Enter");
                EXPECT_EQ(L"Write the decimals behind a point, as in 2.5.", range.Hint());
                EXPECT_TRUE(range.HasFocus(field));
                range.SetText(field, L"1.5");
            }
            range.SetText(L"Highest level", L"1e9");
            range.Key("Enter");
            EXPECT_EQ(L"These would be more than a million levels. Enter a larger interval.", range.Hint());
            EXPECT_TRUE(range.HasFocus(L"Interval"));
            range.Key("Escape");
        });
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

TEST_F(ContourEditorTest, GeneratesFromAColorTable) {
    const std::wstring table = m_folder.File(L"depths.col");
    WriteBytes(table, ReadBytes(std::filesystem::path(PROJECT_DATA_FOLDER) / "pensacola/depths.col"));
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Color Table");
            EXPECT_THAT(Levels(editor), ElementsAre(L"0.00", L"2.00", L"5.00", L"10.00"));
            EXPECT_THAT(editor.Rows()[1], ElementsAre(L"2.00", L"No", L"0.0", L"Continous"));
            editor.Focus(L"Add");
            EXPECT_EQ(0xEED6BAU, editor.SwatchOfRow(1));
            editor.Key("Escape");
        })
        .Then([&](OpenDialog& file) {
            EXPECT_THAT(file.Filters(), ElementsAre(L"Color Table Files (*.col)"));
            EXPECT_EQ(WidePath(m_folder.Path()), file.Folder());
            file.EnterFile(table);
            file.Accept();
        });
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

TEST_F(ContourEditorTest, ABrokenColorTableLeavesTheList) {
    const std::wstring table = m_folder.File(L"broken.col");
    WriteBytes(table, "[ColorTable]\nEntry(0) = 1,0,0,0\nEntry(1) = deep,0,0,0\n");
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Color Table");
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"10.00", L"20.00"));
            editor.Key("Escape");
        })
        .Then([&](OpenDialog& file) {
            file.EnterFile(table);
            file.Accept();
        });
    ThenRead(L"Failed to generate contours.");
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

TEST_F(ContourEditorTest, AColorTableWithoutEntriesEmptiesTheList) {
    const std::wstring table = m_folder.File(L"empty.col");
    WriteBytes(table, "[ColorTable]\nDefaultColor = 1,2,3\n");
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Color Table");
            EXPECT_THAT(editor.Rows(), IsEmpty());
            editor.Key("Escape");
        })
        .Then([&](OpenDialog& file) {
            file.EnterFile(table);
            file.Accept();
        });
    ThenRead(L"Failed to generate contours.");
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

TEST_F(ContourEditorTest, WithoutAColorTableNothingIsGenerated) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.ClickRow(1);
            editor.Click(L"Color Table");
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"10.00", L"20.00"));
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(1));
            editor.Key("Escape");
        })
        .Then([](OpenDialog& file) { file.Key("Escape"); });
    EXPECT_FALSE(DLG::EditContourList(FileOfThree()));
}

// OK without a path.

TEST_F(ContourEditorTest, WithoutAPathAsksWhetherAndWhereToSave) {
    const std::wstring path = m_folder.File(L"saved");
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) { contour.Click(L"OK"); })
        .Then([](OpenDialog& question) {
            EXPECT_EQ(L"Contours", question.Title());
            EXPECT_EQ(L"Save changes?", question.Message());
            EXPECT_TRUE(question.IsQuestion());
            EXPECT_EQ(2U, question.Buttons().size());
            question.Click(L"Yes");
        })
        .Then([&](OpenDialog& file) {
            EXPECT_THAT(file.Filters(), ElementsAre(L"Contour Definition Files (*.cdf)"));
            EXPECT_EQ(WidePath(m_folder.Path()), file.Folder());
            file.EnterFile(path);
            file.Accept();
        });
    EXPECT_TRUE(DLG::EditContourList({}));
    EXPECT_THAT(LevelsIn(path + L".cdf"), ElementsAre(0));
    EXPECT_EQ(1U, m_folder.NumFiles());
}

TEST_F(ContourEditorTest, ANameWithAnExtensionKeepsIt) {
    const std::wstring path = m_folder.File(L"saved.txt");
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) { contour.Click(L"OK"); });
    ThenAnswer(L"Save changes?", L"Yes");
    m_driver.Then([&](OpenDialog& file) {
        file.EnterFile(path);
        file.Accept();
    });
    EXPECT_TRUE(DLG::EditContourList({}));
    EXPECT_THAT(LevelsIn(path), ElementsAre(0));
}

TEST_F(ContourEditorTest, WhoDoesNotWantToSaveGoesOnEditing) {
    m_driver.Then([](OpenDialog& editor) {
        editor.Click(L"Add");
        editor.Click(L"OK");
        EXPECT_THAT(Levels(editor), ElementsAre(L"0.00")); // it is still there
        editor.Click(L"OK");
        EXPECT_THAT(Levels(editor), ElementsAre(L"0.00"));
        editor.Key("Escape");
    });
    m_driver.Then([](OpenDialog& contour) { contour.Click(L"OK"); });
    ThenAnswer(L"Save changes?", L"No");
    m_driver.Then([](OpenDialog& question) { question.Key("Escape"); });
    EXPECT_FALSE(DLG::EditContourList({}));
    EXPECT_EQ(0U, m_folder.NumFiles());
}

TEST_F(ContourEditorTest, SaysThatNothingIsSavedWhenNoFileIsChosen) {
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) { contour.Click(L"OK"); });
    ThenAnswer(L"Save changes?", L"Yes");
    m_driver.Then([](OpenDialog& file) { file.Key("Escape"); });
    ThenRead(L"The contours were not saved: no file was chosen.");
    EXPECT_TRUE(DLG::EditContourList({}));
    EXPECT_EQ(0U, m_folder.NumFiles());
}

TEST_F(ContourEditorTest, AsksBeforeAChosenFileIsReplaced) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) { contour.Click(L"OK"); });
    ThenAnswer(L"Save changes?", L"Yes");
    m_driver
        .Then([&](OpenDialog& file) {
            file.EnterFile(m_folder.File(L"chart")); // the extension is added before it is looked for
            file.Accept();
            EXPECT_THAT(LevelsIn(path), ElementsAre(5, 10, 20));
            file.Accept();
        })
        .Then([](OpenDialog& question) {
            EXPECT_THAT(question.Message(), HasSubstr(L"already exists")); // the system's words
            question.Click(L"No");
        })
        .Then([](OpenDialog& question) { question.Click(L"Yes"); });
    EXPECT_TRUE(DLG::EditContourList({}));
    EXPECT_THAT(LevelsIn(path), ElementsAre(0));
}

TEST_F(ContourEditorTest, AnEmptyListIsNotSavedAndThatIsSaid) {
    m_driver.Then([](OpenDialog& editor) { editor.Click(L"OK"); });
    ThenAnswer(L"Save changes?", L"Yes");
    m_driver.Then([&](OpenDialog& file) {
        file.EnterFile(m_folder.File(L"empty.cdf"));
        file.Accept();
    });
    ThenRead(
        L"Nothing was saved, and a file that is there stays as it was:\nthere is no contour in the list.");
    EXPECT_TRUE(DLG::EditContourList({}));
    EXPECT_EQ(0U, m_folder.NumFiles());
}

// OK with a path.

TEST_F(ContourEditorTest, SavesToTheFileThatWasOpened) {
    const std::wstring path = FileOfThree();
    const std::string before = ReadBytes(path);
    m_driver.Then([](OpenDialog& editor) { editor.Key("Enter"); });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_EQ(before, ReadBytes(path));
    EXPECT_EQ(1U, m_folder.NumFiles());
}

TEST_F(ContourEditorTest, SavesUnderTheExtensionOfContourFiles) {
    for (const wchar_t* const name : {L"levels.txt", L"levels.cdf.bak", L"levels"}) {
        const TemporaryFolder folder;
        const std::wstring path = folder.File(name);
        WriteBytes(path, ReadBytes(FileOfThree()));
        const std::string before = ReadBytes(path);
        m_driver.Then([](OpenDialog& editor) { editor.Click(L"OK"); });
        EXPECT_TRUE(DLG::EditContourList(path));
        EXPECT_EQ(before, ReadBytes(path));
        const bool hasTwo = std::wstring_view(name) == L"levels.cdf.bak";
        EXPECT_THAT(LevelsIn(folder.File(hasTwo ? L"levels.cdf.cdf" : L"levels.cdf")),
                    ElementsAre(5, 10, 20));
        EXPECT_EQ(2U, folder.NumFiles());
    }
}

TEST_F(ContourEditorTest, AsksBeforeAnotherFileIsReplaced) {
    const std::wstring path = FileOfThree(L"levels.txt");
    const std::wstring other = FileOfLevels(2);
    std::filesystem::rename(NativePath(other), NativePath(m_folder.File(L"levels.cdf")));
    const std::wstring target = m_folder.File(L"levels.cdf");
    m_driver.Then([&](OpenDialog& editor) {
        editor.Click(L"OK");
        EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"10.00", L"20.00")); // it stays
        EXPECT_THAT(LevelsIn(target), ElementsAre(0, 1));
        editor.Click(L"OK");
    });
    ThenAnswer(kReplace + target, L"No");
    ThenAnswer(kReplace + target, L"Yes");
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(target), ElementsAre(5, 10, 20));
}

TEST_F(ContourEditorTest, AsksBeforeAFileThatCouldNotBeReadIsReplaced) {
    const std::wstring path = m_folder.File(L"letter.cdf");
    WriteBytes(path, "Dear all,\n");
    ThenRead(L"This file is no contour definition file, or cannot be read:\n\t" + path);
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Click(L"Add");
            editor.Click(L"OK");
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) { contour.Click(L"OK"); });
    ThenAnswer(kReplace + path, L"No");
    EXPECT_FALSE(DLG::EditContourList(path));
    EXPECT_EQ("Dear all,\n", ReadBytes(path));
}

TEST_F(ContourEditorTest, TwoEditorsDoNotReplaceEachOthersWorkUnasked) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([&](OpenDialog& first) {
            EXPECT_TRUE(DLG::EditContourList(path));
            EXPECT_THAT(LevelsIn(path), ElementsAre(10, 20));
            first.Click(L"OK");
            first.Key("Escape");
        })
        .Then([](OpenDialog& second) {
            second.ClickRow(0);
            second.Click(L"Remove");
            second.Click(L"OK");
        });
    ThenAnswer(kReplace + path, L"No");
    EXPECT_FALSE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(10, 20));
}

TEST_F(ContourEditorTest, ClosesWhenItCannotSaveAndSaysThat) {
    for (const std::wstring& name : {std::wstring(L"none/chart.cdf"), std::wstring(5000, L'x') + L".cdf"}) {
        const std::wstring path = m_folder.File(name);
        m_driver
            .Then([](OpenDialog& editor) {
                editor.Click(L"Add");
                editor.Click(L"OK");
            })
            .Then([](OpenDialog& contour) { contour.Click(L"OK"); });
        ThenRead(kNotSaved + path);
        EXPECT_TRUE(DLG::EditContourList(path));
    }
}

TEST_F(ContourEditorTest, TheFileStaysWhenEverythingWasRemoved) {
    const std::wstring path = FileOfThree();
    m_driver.Then([](OpenDialog& editor) {
        editor.Focus(L"Contours");
        editor.Key("Ctrl+A");
        editor.Click(L"Remove");
        editor.Click(L"OK");
    });
    ThenRead(
        L"Nothing was saved, and a file that is there stays as it was:\nthere is no contour in the list.");
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(5, 10, 20));
}

// As hosts and users have it.

TEST_F(ContourEditorTest, AHostHasTheListAndCanShowTheEditorAgain) {
    const std::wstring path = FileOfThree();
    CContourEditor editor(path);
    EXPECT_EQ(3, editor.List().NumContours());
    m_driver.Then([](OpenDialog& dialog) {
        dialog.ClickRow(0);
        dialog.Click(L"Remove");
        dialog.Click(L"OK");
    });
    EXPECT_EQ(IDOK, editor.DoModal());
    EXPECT_EQ(2, editor.List().NumContours());
    m_driver.Then([](OpenDialog& dialog) {
        EXPECT_THAT(Levels(dialog), ElementsAre(L"10.00", L"20.00"));
        EXPECT_THAT(dialog.Columns(), ElementsAre(L"Color Level", L"Annotation", L"Width", L"Type"));
        EXPECT_FALSE(dialog.IsEnabled(L"Edit"));
        dialog.Click(L"OK"); // without a question about what it wrote itself
    });
    EXPECT_EQ(IDOK, editor.DoModal());
    EXPECT_THAT(LevelsIn(path), ElementsAre(10, 20));
}

TEST_F(ContourEditorTest, AHostCanAskWhetherAFileWasWritten) {
    CContourEditor editor(FileOfThree());
    EXPECT_FALSE(editor.HasSaved());
    m_driver.Then([](OpenDialog& dialog) { dialog.Key("Enter"); });
    EXPECT_EQ(IDOK, editor.DoModal());
    EXPECT_TRUE(editor.HasSaved());
    m_driver.Then([](OpenDialog& dialog) { dialog.Key("Escape"); });
    EXPECT_EQ(IDCANCEL, editor.DoModal());
    EXPECT_FALSE(editor.HasSaved());

    CContourEditor lost(m_folder.File(L"none/chart.cdf"));
    m_driver.Then([](OpenDialog& dialog) { dialog.Key("Enter"); });
    m_driver.Then([](OpenDialog& message) { message.Key("Enter"); });
    EXPECT_EQ(IDOK, lost.DoModal());
    EXPECT_FALSE(lost.HasSaved());
}

// As one whose own window goes.
TEST_F(ContourEditorTest, AHostMayDeleteTheEditorWhileADialogOrAMessageIsOpenOverIt) {
    struct Case {
        const wchar_t* button;
        DialogDriver::Script use; // of the dialog before the one in which it is deleted
        std::wstring path;
    };
    const auto takeLevel = [](OpenDialog& contour) {
        contour.SetText(L"Level", L"20");
        contour.Click(L"OK");
    };
    const auto takeRange = [](OpenDialog& range) {
        for (const wchar_t* const field : {L"Lowest level", L"Highest level", L"Interval"})
            range.SetText(field, L"1");
        range.Click(L"OK");
    };
    const auto yes = [](OpenDialog& question) { question.Click(L"Yes"); };
    const std::wstring three = FileOfThree();
    for (const Case& test :
         {Case{L"Add", {}, three}, Case{L"Edit", {}, three}, Case{L"Range", {}, three},
          Case{L"Color Table", {}, three}, Case{L"OK", {}, {}}, Case{L"OK", yes, {}},
          Case{L"Add", takeLevel, three}, Case{L"Edit", takeLevel, three}, Case{L"Range", takeRange, three},
          Case{L"OK", {}, m_folder.File(L"none/chart.cdf")}}) {
        SCOPED_TRACE(::testing::PrintToString(test.button));
        auto editor = std::make_unique<CContourEditor>(test.path);
        m_driver.Then([&](OpenDialog& dialog) {
            if (test.path == three) dialog.ClickRow(0);
            dialog.Click(test.button);
        });
        if (test.use) m_driver.Then(test.use);
        m_driver.Then([&](OpenDialog& dialog) {
            editor.reset();
            dialog.Key("Escape");
        });
        EXPECT_EQ(IDCANCEL, editor->DoModal());
        EXPECT_EQ(nullptr, editor);
    }
    EXPECT_THAT(LevelsIn(three), ElementsAre(5, 10, 20));
}

TEST_F(ContourEditorTest, ThePropertiesAndTheRangeStandForThemselves) {
    CEditContourDlg contour({0.5F, 7, 3, 0x123456, true});
    m_driver.Then([](OpenDialog& dialog) {
        EXPECT_EQ(L"", dialog.Text(L"Line style")); // one that the list does not have
        dialog.SetText(L"Level", L"4");
        dialog.Click(L"OK");
    });
    EXPECT_EQ(IDOK, contour.DoModal());
    EXPECT_EQ((CEditContourDlg::Contour{0.5F, 7, 4, 0x123456, true}), contour.Get());

    CContourGenerationDlg range;
    m_driver.Then([](OpenDialog& dialog) {
        dialog.SetText(L"Lowest level", L"-1.5");
        dialog.SetText(L"Highest level", L"2e3");
        dialog.SetText(L"Interval", L" 0.25 ");
        dialog.Click(L"OK");
    });
    EXPECT_EQ(IDOK, range.DoModal());
    EXPECT_EQ(-1.5, range.Lowest());
    EXPECT_EQ(2000, range.Highest());
    EXPECT_EQ(0.25, range.Interval());
}

TEST_F(ContourEditorTest, ASessionNeedsNoMouse) {
    const std::wstring path = m_folder.File(L"keyboard.cdf");
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Key("Alt+N");
            EXPECT_THAT(Levels(editor), ElementsAre(L"0.00", L"5.00", L"10.00"));
            editor.Key("Alt+A");
            EXPECT_THAT(Levels(editor), ElementsAre(L"0.00", L"2.50", L"5.00", L"10.00"));
            editor.Key("Alt+E");
            EXPECT_THAT(editor.Rows()[1], ElementsAre(L"2.75", L"Yes", L"0.2", L"Dashed"));
            editor.Focus(L"Cancel");
            editor.Key("Tab"); // the list, where the row is that was edited
            editor.Key("Down");
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(2));
            editor.Key("Shift+Down");
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(2, 3));
            editor.Key("Alt+R");
            EXPECT_THAT(Levels(editor), ElementsAre(L"0.00", L"2.75"));
            editor.Key("Alt+C"); // and cancels it
            editor.Key("Tab");
            editor.Focus(L"Contours");
            editor.Key("Enter");
        })
        .Then([](OpenDialog& range) {
            range.Key("Alt+L");
            range.Type(L"0");
            range.Key("Alt+H");
            range.Type(L"10");
            range.Key("Alt+I");
            range.Type(L"5");
            range.Key("Enter");
        })
        .Then([](OpenDialog& contour) {
            contour.Key("Alt+L");
            contour.Key("Ctrl+A");
            contour.Type(L"2.5");
            contour.Key("Enter");
        })
        .Then([](OpenDialog& contour) {
            contour.Key("Alt+L");
            contour.Key("Ctrl+A");
            contour.Type(L"2.75");
            contour.Key("Alt+S");
            EXPECT_TRUE(contour.HasFocus(L"Line style"));
            contour.Key("Down");
            contour.Key("Alt+W");
            EXPECT_TRUE(contour.HasFocus(L"Line width"));
            contour.Key("Up");
            contour.Key("Up");
            contour.Key("Alt+B");
            EXPECT_TRUE(contour.IsChecked(L"Show labels"));
            contour.Key("Enter");
        })
        .Then([](OpenDialog& table) { table.Key("Escape"); })
        .Then([](OpenDialog& question) {
            EXPECT_EQ(L"Save changes?", question.Message());
            question.Key("Alt+Y");
        })
        .Then([&](OpenDialog& file) {
            file.Type(L"keyboard"); // in the folder that it shows
            file.Key("Enter");
        });
    EXPECT_TRUE(DLG::EditContourList({}));
    EXPECT_THAT(LevelsIn(path), ElementsAre(0, 2.75));
}

TEST_F(ContourEditorTest, AColorIsReachedByItsLetter) {
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            editor.Key("Space"); // the row that has the mark at first
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(0));
            editor.Key("Alt+E");
            editor.Focus(L"Contours");
            editor.Key("Enter");
        })
        .Then([](OpenDialog& contour) {
            contour.Key("Alt+C");
            contour.Key("Alt+L");
            contour.Key("Enter");
        })
        .Then([](OpenDialog& color) {
            color.EnterColor(0x00FFFF);
            color.Key("Enter");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_EQ(0x00FFFFU, FirstIn(path).trueColor);
}

TEST_F(ContourEditorTest, TenThousandContoursAreAsFew) {
    constexpr int kCount = 10000;
    const std::wstring path = FileOfLevels(kCount);
    m_driver
        .Then([](OpenDialog& editor) {
            EXPECT_EQ(static_cast<std::size_t>(kCount), editor.Rows().size());
            editor.Click(L"Add");
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(5001));
            EXPECT_TRUE(editor.IsRowVisible(5001));
            editor.Click(L"Remove");
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(5001));
            EXPECT_TRUE(editor.IsRowVisible(5001));
            EXPECT_EQ(L"5001.00", editor.Rows()[5001][0]);
            editor.ClickRow(9000);
            editor.ClickRow(1000, "Shift");
            editor.Click(L"Remove");
            EXPECT_EQ(1999U, editor.Rows().size());
            EXPECT_THAT(editor.SelectedRows(), ElementsAre(1000));
            EXPECT_TRUE(editor.IsRowVisible(1000));
            editor.Focus(L"Contours");
            editor.Key("Ctrl+A");
            editor.ClickRow(0, "Ctrl");
            editor.Click(L"Remove");
            EXPECT_EQ(1U, editor.Rows().size());
            editor.Click(L"OK");
        })
        .Then([](OpenDialog& contour) {
            contour.SetText(L"Level", L"5000.5");
            contour.Click(L"OK");
        });
    EXPECT_TRUE(DLG::EditContourList(path));
    EXPECT_THAT(LevelsIn(path), ElementsAre(0));
}

TEST_F(ContourEditorTest, SpeaksGerman) {
    const ChosenLanguage german(L"de");
    const std::wstring path = FileOfThree();
    m_driver
        .Then([](OpenDialog& editor) {
            EXPECT_THAT(editor.Columns(),
                        ElementsAre(L"Farbe, Tiefe", L"Beschriftung", L"Breite", L"Linienart"));
            EXPECT_THAT(editor.Rows()[1], ElementsAre(L"10.00", L"Ja", L"1.0", L"Gestrichelt"));
            EXPECT_THAT(editor.Buttons(), ElementsAre(L"Hinzuf\u00FCgen", L"Entfernen", L"Bearbeiten",
                                                      L"Bereich", L"Farbtabelle", L"OK", L"Abbrechen"));
            editor.Key("Alt+H");
            EXPECT_THAT(Levels(editor), ElementsAre(L"2.50", L"5.00", L"10.00", L"20.00"));
            editor.Key("Alt+R");
            editor.Key("Alt+F");
            editor.Key("Alt+E");
            EXPECT_THAT(Levels(editor), ElementsAre(L"5.00", L"10.00", L"20.00"));
            editor.Key("Escape");
        })
        .Then([](OpenDialog& contour) {
            EXPECT_EQ(L"Eigenschaften der Tiefenlinie", contour.Title());
            EXPECT_THAT(contour.Buttons(), ElementsAre(L"Zum \u00C4ndern klicken", L"OK", L"Abbrechen"));
            EXPECT_EQ(L"DURCHGEZOGEN", contour.Text(L"Linienart"));
            EXPECT_EQ(L"0.00", contour.Text(L"Tiefe")); // with a point here as well
            EXPECT_FALSE(contour.IsChecked(L"Beschriften"));
            contour.SetText(L"Tiefe", L"2,5");
            contour.Click(L"OK");
            EXPECT_EQ(L"Schreiben Sie die Dezimalstellen hinter einen Punkt, wie in 2.5.", contour.Hint());
            contour.SetText(L"Tiefe", L"2.5");
            contour.SetText(L"Linienbreite", L"0.5");
            contour.Click(L"OK");
        })
        .Then([](OpenDialog& range) {
            EXPECT_EQ(L"Tiefenlinien erzeugen", range.Title());
            for (const auto& [key, field] :
                 {std::pair("Alt+G", L"Gr\u00F6\u00DFte Tiefe"), std::pair("Alt+A", L"Abstand"),
                  std::pair("Alt+K", L"Kleinste Tiefe")}) {
                range.Key(key);
                EXPECT_TRUE(range.HasFocus(field));
            }
            range.Key("Escape");
        })
        .Then([](OpenDialog& file) {
            EXPECT_THAT(file.Filters(), ElementsAre(L"Farbtabellen (*.col)"));
            file.Key("Escape");
        });
    EXPECT_FALSE(DLG::EditContourList(path));
}

TEST_F(ContourEditorTest, AsksAndWarnsInGerman) {
    const ChosenLanguage german(L"de");
    m_driver.Then([](OpenDialog& editor) {
        EXPECT_EQ(L"Tiefenlinien", editor.Title());
        editor.Click(L"OK");
    });
    m_driver.Then([](OpenDialog& question) {
        EXPECT_EQ(L"\u00C4nderungen speichern?", question.Message());
        question.Key("Enter"); // yes
    });
    m_driver.Then([](OpenDialog& file) {
        EXPECT_THAT(file.Filters(), ElementsAre(L"Tiefenliniendateien (*.cdf)"));
        file.Key("Escape");
    });
    ThenRead(L"Die Tiefenlinien wurden nicht gespeichert: Es wurde keine Datei gew\u00E4hlt.", L"Fehler");
    EXPECT_TRUE(DLG::EditContourList({}));
}
