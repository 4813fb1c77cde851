// SPDX-License-Identifier: MIT
#include "UtilityDLL/contours/private/ContourEditing.h"

#include "tests/support/TestFiles.h"

#include <cmath>
#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

using Row = std::vector<std::wstring>;

std::vector<double> LevelsOf(const ContourDefinitionList& list) {
    std::vector<double> levels;
    levels.reserve(static_cast<std::size_t>(list.NumContours()));
    for (int i = 0; i < list.NumContours(); ++i) levels.push_back(list[i].level);
    return levels;
}

std::vector<double> LevelsIn(const std::wstring& path) {
    ContourDefinitionList list;
    list.Load(path.c_str());
    return LevelsOf(list);
}

class ContourEditingTest : public ::testing::Test {
protected:
    std::wstring File(const std::wstring& name, const std::vector<double>& levels = {5, 10, 20}) {
        ContourDefinitionList list;
        for (const double level : levels) list.Add({.level = level});
        std::wstring path = m_folder.File(name);
        EXPECT_TRUE(list.Save(path.c_str()));
        return path;
    }

    // As Load() takes them: neither sorted nor each for itself.
    std::wstring FileInOrderOf(const std::vector<double>& levels) {
        std::string bytes;
        for (std::size_t i = 0; i < levels.size(); ++i)
            bytes += "[Contour(" + std::to_string(i) + ")]\nLevel = " + std::to_string(levels[i]) + "\n";
        std::wstring path = m_folder.File(L"given.cdf");
        WriteBytes(path, bytes);
        return path;
    }

    // One line with a value of its own, by another program.
    static void Change(const std::wstring& path) {
        WriteBytes(path, "[Contour(0)]\r\nLevel = 77\r\nLineWidth = 1.5\r\n");
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(ContourEditingTest, BeginsEmptyWithoutAPathOrAFile) {
    for (const std::wstring& path : {std::wstring(), m_folder.File(L"new.cdf")}) {
        const ContourEditing editing(path);
        EXPECT_EQ(path, editing.Path());
        EXPECT_EQ(0, editing.List().NumContours());
        EXPECT_EQ(L"", editing.OpeningFault());
    }
}

TEST_F(ContourEditingTest, SaysThatAFileHasNoContoursThatCanBeRead) {
    std::filesystem::create_directory(m_folder.Path() / "folder.cdf");
    WriteBytes(m_folder.Path() / "empty.cdf", "");
    constexpr char kPicture[] = "\x89PNG\r\n\x1A\n\0\0\0\rIHDR\xFF\xFE[[";
    WriteBytes(m_folder.Path() / "binary.cdf", std::string_view(kPicture, sizeof kPicture));
    WriteBytes(m_folder.Path() / "letter.cdf", "Dear all,\nplease find enclosed\n");
    WriteBytes(m_folder.Path() / "settings.cdf", "[Window]\nWidth = 10\n");
    WriteBytes(m_folder.Path() / "twice.cdf", "[Contour(0)]\nLevel = 1\n[Contour(0)]\nLevel = 2\n");
    for (const wchar_t* const name :
         {L"folder.cdf", L"empty.cdf", L"binary.cdf", L"letter.cdf", L"settings.cdf", L"twice.cdf"}) {
        const ContourEditing editing(m_folder.File(name));
        EXPECT_EQ(L"This file is no contour definition file, or cannot be read:\n\t" + m_folder.File(name),
                  editing.OpeningFault());
        EXPECT_EQ(0, editing.List().NumContours());
        EXPECT_THAT(editing.Question(), HasSubstr(L"Replace it?\n\t" + m_folder.File(name)));
    }
}

TEST_F(ContourEditingTest, ARowHasLevelAnnotationWidthAndType) {
    struct Case {
        ContourEditing::Contour contour;
        Row row;
    };
    for (const Case& test : {
             Case{{0.5F, 0, 5, 0, false}, {L"5.00", L"No", L"0.5", L"Continous"}},
             Case{{1.0F, 1, -12.5, 0, true}, {L"-12.50", L"Yes", L"1.0", L"Dashed"}},
             Case{{0.04F, 2, 1234567.891, 0, false}, {L"1234567.89", L"No", L"0.0", L"Dot"}},
             Case{{0.26F, 3, 0.006, 0, false}, {L"0.01", L"No", L"0.3", L"Dash Dot"}},
             Case{{0.25F, 4, 0.125, 0, false}, {L"0.12", L"No", L"0.2", L""}}, // halves go to the even digit
             Case{{-1.0F, -1, -0.001, 0, false}, {L"-0.00", L"No", L"-1.0", L""}},
             Case{{1e10F, 0, 1e22, 0, false},
                  {L"10000000000000000000000.00", L"No", L"10000000000.0", L"Continous"}},
             Case{{HUGE_VALF, 0, std::nan(""), 0, false}, {L"nan", L"No", L"inf", L"Continous"}},
         })
        EXPECT_EQ(test.row, ContourEditing::Row(test.contour));
}

TEST_F(ContourEditingTest, AddsALevelThatIsNotThere) {
    ContourEditing editing(File(L"chart.cdf"));
    EXPECT_EQ(std::nullopt, editing.Add({.level = 7.5}));
    EXPECT_THAT(LevelsOf(editing.List()), ElementsAre(5, 7.5, 10, 20));
    EXPECT_EQ(1, editing.PositionOf(7.5));
    EXPECT_EQ(TextId::CONTOUR_DUPLICATE_LEVEL, editing.Add({.lineWidth = 1, .level = 7.5}));
    EXPECT_THAT(LevelsOf(editing.List()), ElementsAre(5, 7.5, 10, 20));
    EXPECT_EQ(0.0F, editing.List()[1].lineWidth);
    EXPECT_EQ(TextId::CONTOUR_DUPLICATE_LEVEL, editing.Add({.level = std::nan("")}));
    EXPECT_EQ(-1, editing.PositionOf(6));
    EXPECT_EQ(-1, editing.PositionOf(std::nan("")));
}

TEST_F(ContourEditingTest, EditsAContourInItsPlaceOrMovesIt) {
    ContourEditing editing(File(L"chart.cdf"));
    EXPECT_EQ(std::nullopt, editing.Edit(1, {.lineWidth = 2, .level = 10}));
    EXPECT_EQ(2.0F, editing.List()[1].lineWidth);
    EXPECT_EQ(std::nullopt, editing.Edit(1, {.level = 30}));
    EXPECT_THAT(LevelsOf(editing.List()), ElementsAre(5, 20, 30));
}

TEST_F(ContourEditingTest, AFailedEditTakesTheContourAway) {
    ContourEditing editing(File(L"chart.cdf"));
    EXPECT_EQ(TextId::CONTOUR_NOT_MODIFIED, editing.Edit(1, {.level = 20}));
    EXPECT_THAT(LevelsOf(editing.List()), ElementsAre(5, 20));
}

TEST_F(ContourEditingTest, TakesAContourOfTheListItself) {
    ContourEditing editing(File(L"chart.cdf"));
    EXPECT_EQ(TextId::CONTOUR_DUPLICATE_LEVEL, editing.Add(editing.List()[0]));
    EXPECT_EQ(std::nullopt, editing.Edit(0, editing.List()[0]));
    EXPECT_EQ(TextId::CONTOUR_NOT_MODIFIED, editing.Edit(0, editing.List()[2]));
    EXPECT_THAT(LevelsOf(editing.List()), ElementsAre(10, 20));
}

// What cannot be found by halves is added and edited all the same, and never said not to be.
TEST_F(ContourEditingTest, AListThatIsNotSortedIsTakenAsItIs) {
    const std::vector<std::vector<double>> lists = {
        {5, 4, 3, 2, 1}, {1, 9, 2, 8, 3}, {3, 3, 3}, {9, 1, 1, 1, 0.5}, {2, 1}, {7, 1, 9, 2, 6, 4, 3}};
    for (const std::vector<double>& levels : lists)
        for (const double level : {0.0, 1.5, 2.5, 4.5, 8.5, 10.0}) {
            const std::wstring path = FileInOrderOf(levels);
            ContourEditing added(path);
            EXPECT_EQ(levels, LevelsOf(added.List()));
            EXPECT_EQ(std::nullopt, added.Add({.level = level})) << level;
            EXPECT_EQ(levels.size() + 1, LevelsOf(added.List()).size());
            ASSERT_NE(-1, added.PositionOf(level)) << level;
            EXPECT_EQ(level, added.List()[added.PositionOf(level)].level);
            ContourEditing edited(path);
            EXPECT_EQ(std::nullopt, edited.Edit(1, {.level = level})) << level;
            EXPECT_EQ(levels.size(), LevelsOf(edited.List()).size());
            EXPECT_NE(-1, edited.PositionOf(level)) << level;
        }
}

TEST_F(ContourEditingTest, OfEqualLevelsTheEditedOneIsSelected) {
    ContourEditing editing(FileInOrderOf({5, 5, 5, 1, 9}));
    for (const int position : {2, 1, 0}) {
        EXPECT_EQ(std::nullopt, editing.Edit(position, {.level = 5, .annotate = true}));
        EXPECT_EQ(position, editing.PositionOf(5));
        EXPECT_TRUE(editing.List()[position].annotate);
    }
    EXPECT_EQ(std::nullopt, editing.Edit(4, {.level = 7}));
    EXPECT_EQ(7, editing.List()[editing.PositionOf(7)].level);
    editing.Remove({0, 1, 2, 3, 4});
    EXPECT_EQ(-1, editing.PositionOf(7));
}

TEST_F(ContourEditingTest, RemovesWhatIsSelectedAndSelectsWhatFollows) {
    struct Case {
        std::vector<int> selected;
        std::vector<double> left;
        int next;
    };
    for (const Case& test : {
             Case{{0}, {2, 3, 4, 5}, 0},    // the first
             Case{{2}, {1, 2, 4, 5}, 2},    // one in the middle
             Case{{4}, {1, 2, 3, 4}, 3},    // the last
             Case{{1, 2, 3}, {1, 5}, 1},    // side by side
             Case{{0, 2, 4}, {2, 4}, 0},    // scattered
             Case{{1, 4}, {1, 3, 4}, 1},    // scattered up to the end
             Case{{3, 4}, {1, 2, 3}, 2},    // the last ones
             Case{{0, 1, 2, 3, 4}, {}, -1}, // all
             Case{{}, {1, 2, 3, 4, 5}, -1}, // none
         }) {
        ContourEditing editing(File(L"five.cdf", {1, 2, 3, 4, 5}));
        EXPECT_EQ(test.next, editing.Remove(test.selected)) << ::testing::PrintToString(test.selected);
        EXPECT_EQ(test.left, LevelsOf(editing.List())) << ::testing::PrintToString(test.selected);
    }
}

TEST_F(ContourEditingTest, WhatIsSelectedSideBySideGoesAtOnce) {
    using Run = ContourEditing::Run;
    EXPECT_THAT(ContourEditing::RunsFromTheLast({}), ElementsAre());
    EXPECT_THAT(ContourEditing::RunsFromTheLast({0}), ElementsAre(Run{0, 1}));
    EXPECT_THAT(ContourEditing::RunsFromTheLast({3, 4, 5}), ElementsAre(Run{3, 3}));
    EXPECT_THAT(ContourEditing::RunsFromTheLast({0, 1, 3, 5, 6}),
                ElementsAre(Run{5, 2}, Run{3, 1}, Run{0, 2}));
}

TEST_F(ContourEditingTest, OnlyWhatIsSelectedCanBeRemovedOrEdited) {
    EXPECT_FALSE(ContourEditing::CanChange({}));
    EXPECT_TRUE(ContourEditing::CanChange({0}));
    EXPECT_TRUE(ContourEditing::CanChange({1, 2}));
    EXPECT_EQ(-1, ContourEditing::RowToEdit({}));
    EXPECT_EQ(3, ContourEditing::RowToEdit({3, 5}));
}

TEST_F(ContourEditingTest, GeneratesFromARange) {
    ContourEditing editing(File(L"chart.cdf"));
    EXPECT_EQ(std::nullopt, editing.GenerateFromRange(-7, 3, 5));
    EXPECT_THAT(LevelsOf(editing.List()), ElementsAre(-5, 0));
    EXPECT_EQ(std::nullopt, editing.GenerateFromRange(1, 1.5, 5)); // no multiple in between
    EXPECT_THAT(LevelsOf(editing.List()), IsEmpty());
}

TEST_F(ContourEditingTest, AFailedRangeEmptiesTheList) {
    struct Case {
        double lowest, highest, interval;
    };
    for (const Case& test :
         {Case{10, 10, 1}, Case{10, 0, 1}, Case{0, 10, 0}, Case{0, 10, -1}, Case{0, 1e9, 1e-9}}) {
        ContourEditing editing(File(L"chart.cdf"));
        EXPECT_EQ(TextId::CONTOUR_NOT_GENERATED,
                  editing.GenerateFromRange(test.lowest, test.highest, test.interval));
        EXPECT_THAT(LevelsOf(editing.List()), IsEmpty());
    }
}

TEST_F(ContourEditingTest, GeneratesFromAColorTable) {
    WriteBytes(m_folder.Path() / "good.col",
               "[ColorTable]\nDefaultColor = 1,2,3\nEntry(0) = 2.5,255,0,0\nEntry(1) = 10,0,255,1\n");
    ContourEditing editing(File(L"chart.cdf"));
    EXPECT_EQ(std::nullopt, editing.GenerateFromColorTable(m_folder.File(L"good.col")));
    ASSERT_EQ(2, editing.List().NumContours());
    EXPECT_EQ((ContourEditing::Contour{0, 0, 2.5, 0x0000FF, false}), editing.List()[0]);
    EXPECT_EQ((ContourEditing::Contour{0, 0, 10, 0x01FF00, false}), editing.List()[1]);
}

TEST_F(ContourEditingTest, LevelsThatAreNoFiniteNumberCanBeRemovedAndReplaced) {
    const std::wstring table = m_folder.File(L"odd.col");
    WriteBytes(table, "[ColorTable]\nEntry(0) = -inf,0,0,0\nEntry(1) = 3,0,0,0\nEntry(2) = 3,9,9,9\n"
                      "Entry(3) = inf,0,0,0\nEntry(4) = nan,0,0,0\n");
    ContourEditing editing{std::wstring()};
    EXPECT_EQ(std::nullopt, editing.GenerateFromColorTable(table));
    std::vector<std::wstring> shown;
    shown.reserve(5);
    for (int i = 0; i < editing.List().NumContours(); ++i)
        shown.push_back(ContourEditing::Row(editing.List()[i]).front());
    EXPECT_THAT(shown, ElementsAre(L"-inf", L"3.00", L"3.00", L"inf", L"nan"));
    EXPECT_EQ(std::nullopt, editing.Edit(4, {.level = 7}));
    EXPECT_EQ(std::nullopt, editing.Edit(editing.PositionOf(HUGE_VAL), {.level = 8}));
    EXPECT_EQ(0, editing.Remove({0}));
    EXPECT_EQ(TextId::CONTOUR_DUPLICATE_LEVEL, editing.Add({.level = 3}));
    EXPECT_EQ(1, editing.Remove({1})); // the second of two equal ones
    EXPECT_THAT(LevelsOf(editing.List()), ElementsAre(3, 7, 8));
}

TEST_F(ContourEditingTest, AColorTableThatCannotBeReadLeavesTheListAsItIs) {
    WriteBytes(m_folder.Path() / "broken.col", "[ColorTable]\nEntry(0) = 1,0,0,0\nEntry(1) = two,0,0,0\n");
    WriteBytes(m_folder.Path() / "other.col", "[Window]\nWidth = 10\n");
    for (const wchar_t* const name : {L"broken.col", L"other.col", L"none.col", L""}) {
        ContourEditing editing(File(L"chart.cdf"));
        EXPECT_EQ(TextId::CONTOUR_NOT_GENERATED, editing.GenerateFromColorTable(m_folder.File(name)));
        EXPECT_THAT(LevelsOf(editing.List()), ElementsAre(5, 10, 20));
    }
}

TEST_F(ContourEditingTest, AColorTableWithoutEntriesEmptiesTheList) {
    WriteBytes(m_folder.Path() / "empty.col", "[ColorTable]\nDefaultColor = 1,2,3\n");
    ContourEditing editing(File(L"chart.cdf"));
    EXPECT_EQ(TextId::CONTOUR_NOT_GENERATED, editing.GenerateFromColorTable(m_folder.File(L"empty.col")));
    EXPECT_THAT(LevelsOf(editing.List()), IsEmpty());
}

TEST_F(ContourEditingTest, TheTargetHasTheExtensionOfContourFiles) {
    for (const auto& [path, target] :
         {std::pair(L"", L""), std::pair(L"a.cdf", L"a.cdf"), std::pair(L"a.txt", L"a.cdf"),
          std::pair(L"a", L"a.cdf"), std::pair(L"a.b.txt", L"a.b.cdf"), std::pair(L"a.CDF", L"a.cdf"),
          std::pair(L"/charts.2020/a", L"/charts.2020/a.cdf"),
          std::pair(L"/charts/T\u00FCr \u6D77 & co.txt", L"/charts/T\u00FCr \u6D77 & co.cdf")})
        EXPECT_EQ(target, ContourEditing(path).Target());
}

TEST_F(ContourEditingTest, AsksWhetherToSaveWithoutAPath) {
    ContourEditing editing{std::wstring()};
    EXPECT_EQ(L"Save changes?", editing.Question());
    editing.Add({.level = 1});
    EXPECT_EQ(L"Save changes?", editing.Question());
}

TEST_F(ContourEditingTest, SavesOverTheFileThatWasOpenedWithoutAQuestion) {
    const std::wstring path = File(L"chart.cdf");
    ContourEditing editing(path);
    editing.Add({.level = 7.5});
    EXPECT_EQ(L"", editing.Question());
    EXPECT_EQ(L"", editing.Save(editing.Target()));
    EXPECT_THAT(LevelsIn(path), ElementsAre(5, 7.5, 10, 20));
    EXPECT_EQ(L"", editing.Question()); // what it saved itself is known to it
    Change(path);
    EXPECT_NE(L"", editing.Question());
}

TEST_F(ContourEditingTest, ANewFileNeedsNoQuestion) {
    const ContourEditing nothing(m_folder.File(L"new.cdf"));
    EXPECT_EQ(L"", nothing.Question());
    const ContourEditing other(File(L"levels.txt"));
    EXPECT_EQ(L"", other.Question());
}

TEST_F(ContourEditingTest, AsksBeforeItReplacesWhatItDidNotRead) {
    const std::wstring text = L"What is in this file would be lost: it has more than is shown here, is "
                              L"another one than was opened, could "
                              L"not be read, or another program changed it meanwhile.\nReplace it?\n\t";

    const std::wstring changed = File(L"changed.cdf");
    const ContourEditing first(changed);
    Change(changed);
    EXPECT_EQ(text + changed, first.Question());

    const std::wstring made = m_folder.File(L"made.cdf");
    const ContourEditing second(made);
    Change(made);
    EXPECT_EQ(text + made, second.Question());

    const std::wstring other = File(L"other.cdf");
    const ContourEditing third(File(L"other.txt"));
    EXPECT_EQ(text + other, third.Question());

    const std::wstring madeOther = m_folder.File(L"madeOther.cdf");
    const ContourEditing fourth(File(L"madeOther.txt"));
    Change(madeOther);
    EXPECT_EQ(text + madeOther, fourth.Question());
}

TEST_F(ContourEditingTest, AsksBeforeItDropsWhatItDoesNotShow) {
    const std::string shown = "[Contour(0)]\r\nLevel = 5\r\nLineWidth = 1\r\n";
    for (const char* const more : {"[Contour(2)]\r\nLevel = 9\r\n", "[Notes]\r\nBy = J\r\n", "Note = 1\r\n",
                                   "Annotate = 1 ;the drying line\r\n"}) {
        const std::wstring path = m_folder.File(L"more.cdf");
        WriteBytes(path, shown + more);
        ContourEditing editing(path);
        EXPECT_THAT(editing.Question(), HasSubstr(L"it has more than is shown here")) << more;
        EXPECT_EQ(L"", editing.Save(path));
        EXPECT_EQ(L"", editing.Question());
    }
    const std::wstring path = m_folder.File(L"plain.cdf");
    WriteBytes(path, shown);
    EXPECT_EQ(L"", ContourEditing(path).Question());
}

TEST_F(ContourEditingTest, AFileThatIsGoneIsMadeAnew) {
    const std::wstring path = File(L"gone.cdf");
    ContourEditing editing(path);
    std::filesystem::remove(NativePath(path));
    EXPECT_EQ(L"", editing.Question());
    EXPECT_EQ(L"", editing.Save(editing.Target()));
    EXPECT_THAT(LevelsIn(path), ElementsAre(5, 10, 20));
}

TEST_F(ContourEditingTest, AFileThatBecameAFolderIsAskedForAndNotReplaced) {
    const std::wstring path = File(L"chart.cdf");
    ContourEditing editing(path);
    std::filesystem::remove(NativePath(path));
    std::filesystem::create_directory(NativePath(path));
    EXPECT_THAT(editing.Question(), HasSubstr(path));
    EXPECT_THAT(editing.Save(path), HasSubstr(L"were not saved"));
    EXPECT_TRUE(std::filesystem::is_directory(NativePath(path)));
}

TEST_F(ContourEditingTest, TwoOnOneFileDoNotReplaceEachOthersWorkUnasked) {
    const std::wstring path = File(L"chart.cdf");
    ContourEditing first(path);
    ContourEditing second(path);
    first.Add({.level = 1});
    second.Add({.level = 2});
    EXPECT_EQ(L"", first.Question());
    EXPECT_EQ(L"", first.Save(first.Target()));
    EXPECT_NE(L"", second.Question());
    EXPECT_EQ(L"", second.Save(second.Target()));
    EXPECT_NE(L"", first.Question());
    EXPECT_THAT(LevelsIn(path), ElementsAre(2, 5, 10, 20));
}

TEST_F(ContourEditingTest, SaysWhyNothingWasSaved) {
    ContourEditing editing(File(L"chart.cdf"));
    EXPECT_EQ(L"The contours were not saved: no file was chosen.", editing.Save({}));
    const std::wstring lost = m_folder.File(L"none/chart.cdf");
    EXPECT_EQ(L"The contours were not saved.\nCheck that the folder may be written to and has room:\n\t" +
                  lost,
              editing.Save(lost));
    const std::wstring tooLong = m_folder.File(std::wstring(5000, L'x') + L".cdf");
    EXPECT_THAT(editing.Save(tooLong), HasSubstr(tooLong));
    EXPECT_EQ(1U, m_folder.NumFiles());
}

TEST_F(ContourEditingTest, AnEmptyListLeavesItsFileAsItWas) {
    const std::wstring path = File(L"chart.cdf");
    const std::string before = ReadBytes(path);
    ContourEditing editing(path);
    editing.Remove({0, 1, 2});
    EXPECT_EQ(L"", editing.Question());
    EXPECT_EQ(
        L"Nothing was saved, and a file that is there stays as it was:\nthere is no contour in the list.",
        editing.Save(editing.Target()));
    EXPECT_EQ(before, ReadBytes(path));
}

TEST_F(ContourEditingTest, TakesPathsAsTheyAre) {
    for (const wchar_t* const name :
         {L"a & b.cdf", L"\u6D77\u56FE.cdf", L"50%.cdf", L" blanks .cdf", L"a;b=c.cdf"}) {
        const std::wstring path = File(name);
        ContourEditing editing(path);
        EXPECT_EQ(3, editing.List().NumContours());
        editing.Add({.level = 1});
        EXPECT_EQ(L"", editing.Question());
        EXPECT_EQ(L"", editing.Save(editing.Target()));
        EXPECT_EQ(4U, LevelsIn(path).size());
    }
}

TEST_F(ContourEditingTest, APathOfItsOwnCanBeHandedBack) {
    const std::wstring path = File(L"chart.cdf");
    ContourEditing editing(path);
    const ContourEditing again(editing.Path());
    EXPECT_EQ(path, again.Path());
    EXPECT_EQ(L"", editing.Save(editing.Path()));
}
