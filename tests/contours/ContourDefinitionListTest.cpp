// SPDX-License-Identifier: MIT
#include "UtilityDLL/contours/ContourDefinitionList.h"

#include "UtilityDLL/colors/DXFColor.h"
#include "UtilityDLL/settings/IniFile.h"
#include "tests/support/ContourRecords.h"
#include "tests/support/Random.h"
#include "tests/support/RecordPrinters.h"
#include "tests/support/TestFiles.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using Info = ContourDefinitionList::ContourDefInfo;

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargest = std::numeric_limits<double>::max();

Info At(double level) { return {.level = level}; }

ContourDefinitionList ListOf(const std::vector<double>& levels) {
    ContourDefinitionList list;
    for (const double level : levels) list.Add(At(level));
    return list;
}

std::vector<Info> RecordsOf(const ContourDefinitionList& list) {
    std::vector<Info> records;
    for (int i = 0; i < list.NumContours(); ++i) records.push_back(list[i]);
    return records;
}

std::vector<double> LevelsOf(const ContourDefinitionList& list) {
    std::vector<double> levels;
    for (int i = 0; i < list.NumContours(); ++i) levels.push_back(list[i].level);
    return levels;
}

using Levels = std::vector<double>;

TEST(ContourDefInfo, Defaults) {
    const Info info;
    EXPECT_EQ(0.0f, info.lineWidth);
    EXPECT_EQ(0, info.lineType);
    EXPECT_EQ(0u, info.trueColor);
    EXPECT_FALSE(info.annotate);
}

TEST(ContourDefinitionList, AddKeepsLevelsAscendingAndUnique) {
    ContourDefinitionList list;
    EXPECT_EQ(0, list.Add(At(10)));
    EXPECT_EQ(0, list.Add(At(5)));
    EXPECT_EQ(2, list.Add(At(20)));
    EXPECT_EQ((Levels{5, 10, 20}), LevelsOf(list));
    EXPECT_EQ(-1, list.Add({.lineType = 1, .level = 10}));
    EXPECT_EQ((Levels{5, 10, 20}), LevelsOf(list));
    EXPECT_EQ(0, list[1].lineType);
    EXPECT_EQ(2, list.Add(At(std::nextafter(10.0, 11.0)))); // compared exactly
    EXPECT_EQ(0, list.Add(At(-kInfinity)));
    EXPECT_EQ(5, list.Add(At(kInfinity)));
}

TEST(ContourDefinitionList, NanIsNoLevelToAddOrToFind) {
    ContourDefinitionList list = ListOf({5, 10});
    EXPECT_EQ(-1, list.Add(At(kNan)));
    EXPECT_EQ((Levels{5, 10}), LevelsOf(list));
    EXPECT_EQ(-1, list.Find(kNan));
    EXPECT_EQ(-1, list.Set(0, At(kNan))); // lost, as with any level that cannot be added
    EXPECT_EQ(Levels{10}, LevelsOf(list));
}

TEST(ContourDefinitionList, FindComparesLevelsExactlyAndNothingElse) {
    const ContourDefinitionList list = ListOf({5, 10, 20});
    struct Row {
        double level;
        int position;
    };
    for (const Row& row : {Row{5, 0}, Row{10, 1}, Row{20, 2}, Row{7.5, -1}, Row{4, -1}, Row{21, -1},
                           Row{10.000000000000002, -1}}) {
        EXPECT_EQ(row.position, list.Find(row.level)) << row.level;
        EXPECT_EQ(row.position,
                  list.Find({.lineWidth = 9, .lineType = 2, .level = row.level, .annotate = true}));
    }
    EXPECT_EQ(-1, ContourDefinitionList().Find(0));
}

TEST(ContourDefinitionList, SetOverwritesARecordOfTheSameLevel) {
    ContourDefinitionList list = ListOf({5, 10, 20});
    const Info info{.lineWidth = 0.5f, .lineType = 2, .level = 10, .trueColor = 0xFF0000, .annotate = true};
    EXPECT_EQ(1, list.Set(1, info));
    EXPECT_EQ((std::vector<Info>{At(5), info, At(20)}), RecordsOf(list));
}

TEST(ContourDefinitionList, SetMovesARecordOfANewLevel) {
    ContourDefinitionList list = ListOf({5, 10, 20});
    EXPECT_EQ(2, list.Set(0, At(30)));
    EXPECT_EQ((Levels{10, 20, 30}), LevelsOf(list));
    EXPECT_EQ(0, list.Set(2, At(1)));
    EXPECT_EQ((Levels{1, 10, 20}), LevelsOf(list));
}

TEST(ContourDefinitionList, SetToATakenLevelLosesTheRecord) {
    ContourDefinitionList list = ListOf({5, 10, 20});
    EXPECT_EQ(-1, list.Set(1, At(20)));
    EXPECT_EQ((Levels{5, 20}), LevelsOf(list));
    EXPECT_EQ(-1, list.Set(0, list[1])); // a record of the list itself
    EXPECT_EQ(Levels{20}, LevelsOf(list));
}

TEST(ContourDefinitionList, RemovesRecordsSideBySide) {
    ContourDefinitionList list = ListOf({5, 10, 20, 30});
    constexpr int kMost = std::numeric_limits<int>::max();
    for (const auto& [first, count] : {std::pair{0, 5},
                                       {3, 2},
                                       {4, 1},
                                       {-1, 2},
                                       {0, 0},
                                       {1, -1},
                                       {1, kMost},
                                       {kMost, kMost},
                                       {kMost, 1}}) {
        EXPECT_FALSE(list.Remove(first, count)) << first << " " << count;
        EXPECT_EQ(4, list.NumContours());
    }
    EXPECT_TRUE(list.Remove(1, 2));
    EXPECT_EQ((Levels{5, 30}), LevelsOf(list));
    EXPECT_TRUE(list.Remove(0, 2));
    EXPECT_EQ(0, list.NumContours());
}

TEST(ContourDefinitionList, PositionsOutsideTheListChangeNothing) {
    ContourDefinitionList list = ListOf({5, 10});
    for (const int position : {-1, 2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(-1, list.Set(position, At(7)));
        EXPECT_FALSE(list.Remove(position));
    }
    EXPECT_EQ((Levels{5, 10}), LevelsOf(list));
    EXPECT_TRUE(list.Remove(0));
    EXPECT_EQ(Levels{10}, LevelsOf(list));
    EXPECT_TRUE(list.Remove(0));
    EXPECT_FALSE(list.Remove(0));
    EXPECT_EQ(0, list.NumContours());
}

TEST(ContourDefinitionList, AnAddedRecordMayBeOneOfTheList) {
    ContourDefinitionList list = ListOf({1, 2, 3, 4}); // full, so that inserting moves the records
    for (int i = 0; i < 100; ++i) ASSERT_EQ(-1, list.Add(list[i % 4]));
}

TEST(ContourDefinitionList, CopiesAndMovesCarryTheRecords) {
    ContourDefinitionList list = ListOf({5, 10});
    ContourDefinitionList copy(list);
    copy.Add(At(7));
    EXPECT_EQ((Levels{5, 10}), LevelsOf(list));
    list = copy;
    EXPECT_EQ((Levels{5, 7, 10}), LevelsOf(list));
    const ContourDefinitionList moved(std::move(list));
    EXPECT_EQ((Levels{5, 7, 10}), LevelsOf(moved));
}

TEST(ContourDefinitionList, EqualityComparesEveryFieldOfEveryLevel) {
    const Info info{.lineWidth = 0.5f, .lineType = 2, .level = 10, .trueColor = 0xFF0000, .annotate = true};
    const auto with = [&](auto change) {
        Info changed = info;
        change(changed);
        ContourDefinitionList list = ListOf({5});
        list.Add(changed);
        return list;
    };
    const ContourDefinitionList list = with([](Info&) {});
    EXPECT_EQ(list, with([](Info&) {}));
    EXPECT_EQ(ContourDefinitionList(), ContourDefinitionList());
    EXPECT_NE(list, ContourDefinitionList());
    EXPECT_NE(list, ListOf({5}));
    EXPECT_NE(list, with([](Info& i) { i.level = std::nextafter(i.level, 11.0); }));
    EXPECT_NE(list, with([](Info& i) { i.lineWidth = 0.25f; }));
    EXPECT_NE(list, with([](Info& i) { i.lineType = 1; }));
    EXPECT_NE(list, with([](Info& i) { i.trueColor |= 0x01000000; })); // the upper bits too
    EXPECT_NE(list, with([](Info& i) { i.annotate = false; }));
}

TEST(ContourDefinitionList, RandomEditsAgreeWithASortedMap) {
    Random random(61);
    for (int round = 0; round < 400; ++round) {
        ContourDefinitionList list;
        std::map<double, Info> expected;
        for (int step = 0; step < 300; ++step) {
            const Info info{.lineType = step, .level = static_cast<double>(random() % 40) / 4 - 3};
            const bool isTaken = expected.count(info.level) > 0;
            const auto rank = [&](double level) {
                return static_cast<int>(std::distance(expected.begin(), expected.find(level)));
            };
            const int position = static_cast<int>(random() % 30) - 1;
            const bool isThere = position >= 0 && position < list.NumContours();
            auto at = expected.begin();
            if (isThere) std::advance(at, position);
            switch (random() % 4) {
            case 0: {
                expected.emplace(info.level, info);
                ASSERT_EQ(isTaken ? -1 : rank(info.level), list.Add(info));
                break;
            }
            case 1:
                ASSERT_EQ(isTaken ? rank(info.level) : -1, list.Find(info));
                break;
            case 2:
                ASSERT_EQ(isThere, list.Remove(position));
                if (isThere) expected.erase(at);
                break;
            default: {
                const int result = list.Set(position, info);
                if (!isThere) {
                    ASSERT_EQ(-1, result);
                } else if (at->first == info.level) {
                    at->second = info;
                    ASSERT_EQ(position, result);
                } else {
                    expected.erase(at);
                    expected.emplace(info.level, info);
                    ASSERT_EQ(isTaken ? -1 : rank(info.level), result);
                }
            }
            }
            std::vector<Info> records;
            for (const auto& [level, record] : expected) records.push_back(record);
            ASSERT_EQ(records, RecordsOf(list)) << "round " << round << " step " << step;
        }
    }
}

TEST(ContourDefinitionList, GenerateGivesTheMultiplesOfTheStep) {
    struct Row {
        double minimum, maximum, step;
        bool result;
        Levels levels;
    };
    const Row rows[] = {
        {0, 10, 2.5, true, {0, 2.5, 5, 7.5, 10}},
        {-7, 3, 5, true, {-5, 0}},
        {7, 21, 5, true, {10, 15, 20}},
        {10, 21, 5, true, {10, 15, 20}},
        {-10, -1, 5, true, {-10, -5}},
        {10, 10, 1, false, {}},
        {11, 10, 1, false, {}},
        {0, 10, 0, false, {}},
        {0, 10, -1, false, {}},
        {1, 1.5, 5, true, {}},
        {0, 3, 100, true, {0}},
        {0, 0.3, 0.1, true, {0, 0.1, 0.2}}, // 0.1 + 0.1 + 0.1 lies above 0.3
        {0, 1, 0.1, true, {0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 1}}, // nearly
        {-1e308, 1e308, 5e307, true, {-1e308, -5e307, 0, 5e307, 1e308}}, // the range itself is infinite
        {-kLargest, kLargest, kLargest, true, {-kLargest, 0, kLargest}},
        {kNan, 10, 1, false, {}},
        {0, kNan, 1, false, {}},
        {0, 10, kNan, false, {}},
        {0, kInfinity, 1, false, {}}, // without end
        {-kInfinity, 10, 1, false, {}},
        {-kInfinity, kInfinity, 1, false, {}},
        {1, 10, kInfinity, true, {}}, // the next multiple is infinite
        {-1, 10, kInfinity, true, {0}},
        {0, 1, 1e-320, false, {}}, // more levels than any memory holds
        {0, 1, std::numeric_limits<double>::denorm_min(), false, {}},
        {1e16, 1e16 + 4, 0.9, false, {}},                       // adding 0.9 does not change 1e16
        {9007199254740990.0, 9007199254741000.0, 1, false, {}}, // grows up to 2^53 and then stands still
        {0, 1e10, 1, false, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.minimum << " to " << row.maximum << " by " << row.step);
        ContourDefinitionList list = ListOf({1, 2, 3});
        EXPECT_EQ(row.result, list.Generate(row.minimum, row.maximum, row.step));
        ASSERT_EQ(row.levels.size(), LevelsOf(list).size());
        for (int i = 0; i < list.NumContours(); ++i) {
            EXPECT_DOUBLE_EQ(row.levels[static_cast<std::size_t>(i)], list[i].level);
            EXPECT_EQ(At(list[i].level), list[i]); // everything else at its default
        }
    }
}

TEST(ContourDefinitionList, GenerateAddsTheStepAgainAndAgain) {
    ContourDefinitionList list;
    ASSERT_TRUE(list.Generate(0, 1000, 0.1));
    double level = 0;
    for (int i = 0; i < list.NumContours(); ++i, level += 0.1) ASSERT_EQ(level, list[i].level) << i;
    EXPECT_NE(100 * 0.1, list[100].level); // not a multiplication
}

TEST(ContourDefinitionList, GenerateAgreesWithWholeNumbersOnRandomRanges) {
    Random random(62);
    const auto between = [&](int low, int high) {
        return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
    };
    for (int i = 0; i < 100000; ++i) {
        // Eighths are exact in binary, so that whole numbers can tell what is right.
        const int minimum = between(-500, 500);
        const int maximum = between(-500, 500);
        const int step = between(-2, 100);
        Levels expected;
        for (int level = -1000; level <= 1000; ++level)
            if (step > 0 && minimum < maximum && level % step == 0 && level >= minimum && level <= maximum)
                expected.push_back(level / 8.0);
        ContourDefinitionList list;
        ASSERT_EQ(minimum < maximum && step > 0, list.Generate(minimum / 8.0, maximum / 8.0, step / 8.0));
        ASSERT_EQ(expected, LevelsOf(list)) << minimum << ' ' << maximum << ' ' << step;
    }
}

TEST(ContourDefinitionList, GenerateStopsAtTenMillionLevels) {
    ContourDefinitionList list = ListOf({1});
    const int limit = ContourDefinitionList::MAX_GENERATED;
    EXPECT_EQ(10000000, limit);
    EXPECT_FALSE(list.Generate(0, limit, 1));
    EXPECT_EQ(0, list.NumContours());
    EXPECT_TRUE(list.Generate(0, limit - 1, 1));
    EXPECT_EQ(limit, list.NumContours());
    EXPECT_EQ(limit - 1, list[limit - 1].level);
}

TEST(ContourDefinitionList, GenerateFromAColourTableTakesEveryEntry) {
    ColorTable table;
    ContourDefinitionList list = ListOf({1, 2});
    EXPECT_FALSE(list.Generate(table, false));
    EXPECT_EQ(0, list.NumContours());

    table.AddEntry(20, 0x0000FF);
    table.AddEntry(-5.25, 0x123456);
    table.AddEntry(20, 0xFF0000); // equal values are all taken
    EXPECT_TRUE(list.Generate(table, false));
    EXPECT_EQ((std::vector<Info>{{.level = -5.25, .trueColor = 0x123456},
                                 {.level = 20, .trueColor = 0x0000FF},
                                 {.level = 20, .trueColor = 0xFF0000}}),
              RecordsOf(list));
}

TEST(ContourDefinitionList, InvertedColoursWrapAroundAsUnsignedNumbers) {
    struct Row {
        std::uint32_t color, inverted;
    };
    for (const Row& row : {Row{0x000000, 0x0000FF}, Row{0x0000FF, 0x000000}, Row{0x00000A, 0x0000F5},
                           Row{0x000100, 0xFFFFFFFF}, Row{0xFFFFFF, 0xFF000100}, Row{0xFF0000, 0xFF0100FF}}) {
        ColorTable table;
        table.AddEntry(0, row.color);
        ContourDefinitionList list;
        EXPECT_TRUE(list.Generate(table, true));
        EXPECT_EQ(row.inverted, list[0].trueColor) << std::hex << row.color;
    }
}

// Loaded, since loading neither sorts nor checks.
ContourDefinitionList UnsortedList(const Levels& levels) {
    std::string text;
    for (std::size_t i = 0; i < levels.size(); ++i)
        text += "[Contour(" + std::to_string(i) + ")]\nLevel=" + std::to_string(levels[i]) + "\n";
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "unsorted.cdf", text);
    ContourDefinitionList list;
    EXPECT_TRUE(list.Load(folder.File(L"unsorted.cdf").c_str()));
    return list;
}

TEST(ContourDefinitionList, EditsOfAnUnsortedListStayWithinIt) {
    Random random(63);
    for (int round = 0; round < 200; ++round) {
        Levels levels;
        for (unsigned i = 0; i < 1 + random() % 20; ++i) levels.push_back(static_cast<double>(random() % 10));
        ContourDefinitionList list = UnsortedList(levels);
        EXPECT_EQ(levels, LevelsOf(list));
        for (int step = 0; step < 50; ++step) {
            const int found = list.Find(static_cast<double>(random() % 10));
            ASSERT_LT(found, list.NumContours());
            const int added = list.Add(At(static_cast<double>(random() % 10)));
            ASSERT_LT(added, list.NumContours());
            const int set = list.Set(static_cast<int>(random() % 20), At(static_cast<double>(random() % 10)));
            ASSERT_LT(set, list.NumContours());
        }
    }
}

constexpr char kThreeContours[] = "[Contour(0)]\r\n"
                                  "Level     = -2.500000\r\n"
                                  "Color     = 10\r\n"
                                  "TrueColor = 255\r\n"
                                  "LineType  = DOTTED\r\n"
                                  "LineWidth = 0.250000\r\n"
                                  "Annotate  = 1\r\n"
                                  "\r\n"
                                  "[Contour(1)]\r\n"
                                  "Level     = 0.000000\r\n"
                                  "Color     = 0\r\n"
                                  "TrueColor = 0\r\n"
                                  "LineType  = CONTINUOUS\r\n"
                                  "LineWidth = 0.000000\r\n"
                                  "Annotate  = 0\r\n"
                                  "\r\n"
                                  "[Contour(2)]\r\n"
                                  "Level     = 1000000.125000\r\n"
                                  "Color     = 7\r\n"
                                  "TrueColor = 4294967295\r\n"
                                  "LineType  = DASHED\r\n"
                                  "LineWidth = 1.000000\r\n"
                                  "Annotate  = 0\r\n"
                                  "\r\n";

std::vector<Info> ThreeContours() {
    return {{.lineWidth = 0.25f, .lineType = 2, .level = -2.5, .trueColor = 255, .annotate = true},
            {},
            {.lineWidth = 1, .lineType = 1, .level = 1000000.125, .trueColor = 0xFFFFFFFF}};
}

TEST(ContourDefinitionList_Save, WritesASectionForEachLevelWithItsKeysInOrder) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"three.cdf");
    ContourDefinitionList list;
    for (const Info& info : ThreeContours()) list.Add(info);
    EXPECT_TRUE(list.Save(path.c_str()));
    EXPECT_EQ(kThreeContours, ReadBytes(NativePath(path)));

    ContourDefinitionList read;
    EXPECT_TRUE(read.Load(path.c_str()));
    EXPECT_EQ(ThreeContours(), RecordsOf(read));
}

TEST(ContourDefinitionList_Save, WritesThePaletteIndexAndAKnownLineTypeWhateverTheRecordHolds) {
    struct Row {
        Info info;
        const char *color, *lineType;
    };
    for (const Row& row :
         {Row{{.trueColor = 0x281E1F}, "Color     = 179\r\n", "CONTINUOUS"},
          Row{{.lineType = 3, .trueColor = 0x1F1E28}, "Color     = 0\r\n", "CONTINUOUS"}, // 259
          Row{{.lineType = -1, .trueColor = 0xFF0000}, "Color     = 170\r\n", "CONTINUOUS"},
          Row{{.lineType = std::numeric_limits<int>::min()}, "Color     = 0\r\n", "CONTINUOUS"},
          Row{{.lineType = 1, .trueColor = 0xFF0000FF}, "Color     = 10\r\n", "DASHED"}}) {
        SCOPED_TRACE(::testing::PrintToString(row.info));
        const TemporaryFolder folder;
        ContourDefinitionList list;
        list.Add(row.info);
        ASSERT_TRUE(list.Save(folder.File(L"a.cdf").c_str()));
        const std::string bytes = ReadBytes(folder.Path() / "a.cdf");
        EXPECT_THAT(bytes, ::testing::HasSubstr(row.color));
        EXPECT_THAT(bytes, ::testing::HasSubstr(row.lineType));
    }
}

TEST(ContourDefinitionList_Save, FailsForAnEmptyListOrPathAndKeepsTheFile) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "old.cdf", "old");
    EXPECT_FALSE(ContourDefinitionList().Save(folder.File(L"old.cdf").c_str()));
    EXPECT_EQ("old", ReadBytes(folder.Path() / "old.cdf"));
    EXPECT_FALSE(ListOf({1}).Save(nullptr));
    EXPECT_FALSE(ListOf({1}).Save(L""));
    EXPECT_FALSE(ListOf({1}).Save(folder.File(L"none/a.cdf").c_str()));
    EXPECT_FALSE(ListOf({1}).Save(folder.File(L".").c_str()));
    EXPECT_EQ(1u, folder.NumFiles());
}

// The file by way of sections and keys, as the header describes it.
std::string BytesByIniFile(const ContourDefinitionList& list) {
    const TemporaryFolder folder;
    IniFile file;
    for (int i = 0; i < list.NumContours(); ++i) {
        Section& section = file[L"Contour(" + std::to_wstring(i) + L")"];
        section[L"Level"] << list[i].level;
        section[L"Color"] << DXFColor(RGBColor(list[i].trueColor)).Index();
        section[L"TrueColor"] << static_cast<unsigned long>(list[i].trueColor);
        const wchar_t* const names[] = {L"CONTINUOUS", L"DASHED", L"DOTTED"};
        section[L"LineType"] << names[list[i].lineType];
        section[L"LineWidth"] << list[i].lineWidth;
        section[L"Annotate"] << list[i].annotate;
    }
    EXPECT_TRUE(file.Save(folder.File(L"twin.cdf")));
    return ReadBytes(folder.Path() / "twin.cdf");
}

TEST(ContourDefinitionList_Save, GivesTheBytesThatTheSettingsStoreGives) {
    Random random(64);
    ContourDefinitionList list;
    while (list.NumContours() < 2000) {
        const auto bits = random.Bits();
        list.Add({.lineWidth = static_cast<float>(bits % 1000) / 7,
                  .lineType = static_cast<int>(bits % 3),
                  .level = static_cast<double>(static_cast<std::int64_t>(random.Bits())) *
                           std::pow(10, -static_cast<int>(bits % 30)),
                  .trueColor = static_cast<std::uint32_t>(random.Bits()),
                  .annotate = bits % 2 == 0});
    }
    const TemporaryFolder folder;
    ASSERT_TRUE(list.Save(folder.File(L"a.cdf").c_str()));
    EXPECT_EQ(BytesByIniFile(list), ReadBytes(folder.Path() / "a.cdf"));
}

// What is left of a list after a file with this content was loaded into it.
std::vector<Info> LoadedFrom(const std::string& content, bool expectedResult = true) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.cdf", content);
    ContourDefinitionList list;
    EXPECT_EQ(expectedResult, list.Load(folder.File(L"a.cdf").c_str()));
    return RecordsOf(list);
}

TEST(ContourDefinitionList_Load, ReadsUpToTheFirstGap) {
    struct Row {
        const char* content;
        Levels levels;
    };
    const Row rows[] = {
        {"[Contour(0)]\nLevel=1\n[Contour(1)]\nLevel=2\n[Contour(3)]\nLevel=3\n", {1, 2}},
        {"[Contour(1)]\nLevel=2\n[Contour(0)]\nLevel=1\n", {1, 2}}, // by number
        {"[Contour(0)]\nLevel=9\n[Contour(1)]\nLevel=2\n[Contour(2)]\nLevel=9\n",
         {9, 2, 9}}, // neither sorted nor unique
        {"[CONTOUR(0)]\nlevel=1\n[contour(1)]\nLEVEL=2\n", {1, 2}},
        {"[Contour(0)]\nLevel=1\n[Contour(1)]\n[Contour(2)]\nLevel=3\n", {1}}, // no keys: a gap
        {"[Contour(0)]\n;a comment is a key\n[Contour(1)]\nother=1\n", {0, 0}},
        {"[Contour(0)]\nLevel=1\n[ Contour(1)]\nLevel=2\n[Contour(01)]\nLevel=3\n[Contour(1) ]\nLevel=4\n",
         {1}},
        {"[Contour(0)]\nLevel=1\nLevel=2\n", {1}}, // the first key of a name counts
        {"[Contour(0)]\nLevel=1\n[Other]\nLevel=7\n[Contour(1)]\nLevel=2\n", {1, 2}},
        {"[Contour(0)]\nLevel=1\n[Contour(4294967295)]\nLevel=7\n[Contour(4294967296)]\nLevel=7\n[Contour(-1)"
         "]\nx\n",
         {1}},
        {"[Contour(0)]\nLevel = 1\n[Contour(1)]\nLevel = 2\nCol", {1, 2}}, // breaks off
        {"[Contour(0)]\nLevel = 1\n[Contour(1", {1}},
        {"[Contour(0)]x=1\nLevel=1", {1}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.content);
        Levels levels;
        for (const Info& info : LoadedFrom(row.content)) levels.push_back(info.level);
        EXPECT_EQ(row.levels, levels);
    }
}

TEST(ContourDefinitionList_Load, FailsWithoutAContourOrWithABrokenFile) {
    for (const char* content :
         {"", "Level=1\n", "[Other]\nLevel=1\n", "[Contour(1)]\nLevel=1\n", "[Contour(0)]\n", "[]\n",
          "[Contour(0)]\nLevel=1\n[]\n", "[Contour(0)]\nLevel=1\n[Contour(0)]\nLevel=2\n",
          "[Contour(0)]\nLevel=1\n[CONTOUR(0)]\nLevel=2\n", "[Contour(0)]\nLevel=1\n[Other]\n[OTHER]\n",
          "[Contour(0)]\nLevel=1\n[Contour(7)]\n[Contour(7)]\n", "[Contour(0)]\nLevel=1\n[\xFC]\n[\xDC]\n"}) {
        SCOPED_TRACE(content);
        EXPECT_EQ(std::vector<Info>{}, LoadedFrom(content, false));
        const TemporaryFolder folder;
        WriteBytes(folder.Path() / "a.cdf", content);
        EXPECT_EQ(RecordsByIniFile(folder.File(L"a.cdf")).value_or(std::vector<Info>{}), std::vector<Info>{});
    }
}

TEST(ContourDefinitionList_Load, FailsWithoutAFileAndLeavesTheListAsItWas) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "broken.cdf", "[Contour(0)]\nLevel=1\n[]\n");
    ContourDefinitionList list = ListOf({5});
    EXPECT_FALSE(list.Load(nullptr));
    EXPECT_FALSE(list.Load(L""));
    EXPECT_FALSE(list.Load(folder.File(L"missing.cdf").c_str()));
    EXPECT_FALSE(list.Load(folder.File(L".").c_str()));
    EXPECT_FALSE(list.Load(folder.File(L"broken.cdf").c_str()));
    EXPECT_EQ(Levels{5}, LevelsOf(list));
}

TEST(ContourDefinitionList_Load, AppendsAndTellsWhetherThereIsAnything) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.cdf", "[Contour(0)]\nLevel=5\n[Contour(1)]\nLevel=1\n");
    WriteBytes(folder.Path() / "none.cdf", "[Other]\n");
    ContourDefinitionList list = ListOf({5, 9});
    EXPECT_TRUE(list.Load(folder.File(L"a.cdf").c_str()));
    EXPECT_EQ((Levels{5, 9, 5, 1}), LevelsOf(list));
    EXPECT_TRUE(list.Load(folder.File(L"none.cdf").c_str())); // there are records, though none from the file
    EXPECT_EQ((Levels{5, 9, 5, 1}), LevelsOf(list));
}

TEST(ContourDefinitionList_Load, ReadsEachKeyAsAStreamWould) {
    struct Row {
        const char* keys;
        Info info;
    };
    const Row rows[] = {
        {"x=1", {}},
        {"Color=10", {.trueColor = 0x0000FF}}, // a file without true colours
        {"Color=11", {.trueColor = 0x7F82FF}},
        {"Color=7", {.trueColor = 0}}, // white is stored as black
        {"Color=256", {}},
        {"Color=-1", {}},
        {"Color=99999999999", {}},
        {"Color=red", {}},
        {"Color=10\nTrueColor=65280", {.trueColor = 0x00FF00}},
        {"TrueColor=65280\nColor=10", {.trueColor = 0x00FF00}},
        {"Color=10\nTrueColor=", {.trueColor = 0x0000FF}}, // nothing to read leaves the palette's colour
        {"Color=10\nTrueColor=red", {.trueColor = 0}},     // a text that is no number reads as 0
        {"TrueColor=4294967296", {.trueColor = 0xFFFFFFFF}},
        {"TrueColor=-1", {.trueColor = 0xFFFFFFFF}},
        {"TrueColor=0x10", {.trueColor = 0}},
        {"LineType=dashed", {.lineType = 1}},
        {"LineType=Dotted", {.lineType = 2}},
        {"LineType=continuous", {}},
        {"LineType=DASH", {}},
        {"LineType=1", {}},
        {"LineType=", {}},
        {"Annotate=1", {.annotate = true}},
        {"Annotate=0", {}},
        {"Annotate=true", {}},
        {"Annotate=2", {.annotate = true}},
        {"Annotate=", {}},
        {"Level=-0.5 m", {.level = -0.5}},
        {"Level=1,5", {.level = 1}},
        {"Level=1e999", {.level = kLargest}},
        {"Level=-1e999", {.level = -kLargest}},
        {"Level=nan", {}},
        {"Level=inf", {}},
        {"Level=1e5;2", {.level = 1e5}},
        {"LineWidth=0.35", {.lineWidth = 0.35f}},
        {"LineWidth=1e99", {.lineWidth = std::numeric_limits<float>::max()}},
        {"LineWidth=-1", {.lineWidth = -1}},
        {"LINEWIDTH=2\nANNOTATE=1\nlinetype=DOTTED\nlevel=3",
         {.lineWidth = 2, .lineType = 2, .level = 3, .annotate = true}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.keys);
        EXPECT_EQ(std::vector<Info>{row.info}, LoadedFrom(std::string("[Contour(0)]\n") + row.keys));
    }
}

TEST(ContourDefinitionList_Load, AgreesWithTheSettingsStoreOnRandomFiles) {
    Random random(65);
    const auto pick = [&](const auto& texts) { return std::string(texts[random() % std::size(texts)]); };
    const char* const headers[] = {
        "[Contour(0)]", "[Contour(1)]",  "[contour(2)]", "[Contour(3)]", "[Contour(4)] ;c",
        "[CONTOUR(5)]", "[Contour(06)]", "[Contour()]",  "[Contour(]",   "[Contour(x)]",
        "[Contour]",    "[Contour(1)x]", "[x]"};
    const char* const names[] = {"Level", "Color", "TrueColor", "LineType", "LineWidth", "Annotate",
                                 "level", "COLOR", "truecolor", "x",        "",          "; Level"};
    const char* const values[] = {"",      "0",          "1",   "10",  "-3.25", "300", "DASHED", "dotted",
                                  "1e999", "4294967296", "nan", "1;c", " 7 ",   "=5",  "abc"};
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"random.cdf");
    int loaded = 0;
    for (int round = 0; round < 1500; ++round) {
        std::string content;
        std::vector<const char*> order(std::begin(headers), std::end(headers));
        std::shuffle(order.begin(), order.end(), random);
        if (random() % 4 == 0) std::sort(order.begin(), order.end());
        order.resize(random() % order.size() + 1);
        if (random() % 10 == 0) order.push_back(order[random() % order.size()]);
        for (const char* header : order) {
            content += std::string(header) + "\r\n";
            for (auto i = random() % 6; i > 0; --i) content += pick(names) + " = " + pick(values) + "\n";
        }
        WriteBytes(path, content);
        ContourDefinitionList list;
        const bool result = list.Load(path.c_str());
        const std::optional<std::vector<Info>> expected = RecordsByIniFile(path);
        ASSERT_EQ(expected && !expected->empty(), result) << content;
        ASSERT_EQ(expected.value_or(std::vector<Info>{}), RecordsOf(list)) << content;
        loaded += result;
    }
    EXPECT_GT(loaded, 150);
}

// What is said of a file with this content.
std::vector<std::wstring> RemarksOn(const std::string& content) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.cdf", content);
    ContourDefinitionList list, silent;
    std::vector<std::wstring> remarks;
    EXPECT_EQ(silent.Load(folder.File(L"a.cdf").c_str()), list.Load(folder.File(L"a.cdf").c_str(), &remarks));
    EXPECT_EQ(silent, list); // what is read does not depend on who asks
    return remarks;
}

TEST(ContourDefinitionList_Load, RemarksOnWhatIsOdd) {
    struct Row {
        const char* keys; // of a contour that has a level and a colour without these
        const wchar_t* remark;
    };
    for (const Row& row : {
             Row{"LineWidth=0.5\nAnnotate=1\nLineType=dashed\n; a comment\n", nullptr},
             Row{"Lable=1", L"has the key \"Lable\", which is not read"},
             Row{"LEVEL=2", L"has the key \"LEVEL\" again; the first one counts"},
             Row{"LineWidth=1,5", L"has \"1,5\" for \"LineWidth\", which is read as 1"},
             Row{"LineWidth=", L"has \"\" for \"LineWidth\", which is read as 0"},
             Row{"LineWidth=-1", L"has a \"LineWidth\" below 0"},
             Row{"Annotate=yes", L"has \"yes\" for \"Annotate\", which is read as 0"},
             Row{"Annotate=2", L"has \"2\" for \"Annotate\", which is read as 1"},
             Row{"TrueColor=red", L"has \"red\" for \"TrueColor\", which is read as 0"},
             Row{"TrueColor=", L"has \"\" for \"TrueColor\", which is read as 255"}, // as the index has it
             Row{"TrueColor=65280", L"has the \"Color\" 10, but nearest to its \"TrueColor\" is 90"},
             Row{"LineType=wavy", L"has the line type \"wavy\", which is read as continuous; known are "
                                  L"CONTINUOUS, DASHED and DOTTED"},
         }) {
        SCOPED_TRACE(row.keys);
        std::vector<std::wstring> expected;
        if (row.remark) expected.push_back(std::wstring(L"[CONTOUR(0)] ") + row.remark);
        EXPECT_EQ(expected, RemarksOn(std::string("[CONTOUR(0)]\nLevel=1\nColor=10\n") + row.keys));
    }
    using Remarks = std::vector<std::wstring>;
    EXPECT_EQ(Remarks{L"[Contour(0)] has no colour, so it is black"}, RemarksOn("[Contour(0)]\nLevel=1\n"));
    EXPECT_EQ((Remarks{L"[Contour(0)] has \"deep\" for \"Level\", which is read as 0",
                       L"[Contour(0)] has a \"Color\" outside 0 to 255, which is read as 0"}),
              RemarksOn("[Contour(0)]\nColor=256\nLevel=deep\n"));
    EXPECT_EQ(Remarks{L"[Contour(0)] has no \"Level\", which is read as 0"},
              RemarksOn("[Contour(0)]\nColor=0\n"));
}

TEST(ContourDefinitionList_Load, RemarksComeByContourAndThenBySection) {
    const std::vector<std::wstring> expected = {
        L"[Contour(0)] has the key \"x\", which is not read",
        L"[contour(1)] has the key \"y\", which is not read",
        L"[contour(1)] has \"1m\" for \"Level\", which is read as 1",
        L"[contour(1)] has the level 1 below the one before, 2",
        L"[contour(1)] has a \"LineWidth\" below 0",
        L"[Contour(2)] has no \"Level\", which is read as 0",
        L"[Contour(3)] has the level of the contour before, 1", // the last one that has any
        L"[Contour(6)] is not read: there is no [Contour(4)] with keys, and reading ends at the first gap",
        L"[Other] is no contour and not read",
        L"[Contour(04)] is not read: there is no [Contour(4)] with keys, and reading ends at the first gap",
        L"[Contour(4)] has no keys, so reading ends here",
    };
    EXPECT_EQ(expected, RemarksOn("[Contour(6)]\nz=1\n[Contour(3)]\nLevel=1\nColor=0\n"
                                  "[contour(1)]\nColor=0\nLineWidth=-1\nLevel=1m\ny=1\n[Other]\nx=1\n"
                                  "[Contour(0)]\nColor=0\nLevel=2\nx=1\n[Contour(04)]\nLevel=3\n"
                                  "[Contour(4)]\n[Contour(2)]\nColor=0\n"));
}

TEST(ContourDefinitionList_Load, RemarksOnAFileWithoutContours) {
    EXPECT_EQ((std::vector<std::wstring>{L"[x] is no contour and not read",
                                         L"[Contour(0)] is missing or has no keys: the file has no contour"}),
              RemarksOn("[x]\n"));
    for (const char* unreadable : {"[]\n", "[Contour(0)]\nx=1\n[Contour(0)]\nx=1\n"})
        EXPECT_EQ(std::vector<std::wstring>{}, RemarksOn(unreadable)) << unreadable;
}

TEST(ContourDefinitionList_Load, AMillionSectionsAreReadInProportion) {
    std::string content;
    for (int i = 999999; i >= 0; --i)
        content += "[Contour(" + std::to_string(i) + ")]\nLevel=" + std::to_string(i) + "\n";
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "many.cdf", content);
    ContourDefinitionList list;
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(list.Load(folder.File(L"many.cdf").c_str()));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    ASSERT_EQ(1000000, list.NumContours());
    EXPECT_EQ(999999, list[999999].level);
}

// Of the processor's time: others use the machine.
double SecondsOf(auto work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// The best of some runs, each with as many levels in all: ten times a tenth or all at once.
TEST(ContourDefinitionList, SaveAndLoadGrowLinearly) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.cdf");
    const int levels[2] = {10000, 100000};
    double save[2] = {kInfinity, kInfinity};
    double load[2] = {kInfinity, kInfinity};
    for (int run = 0; run < 14; ++run) {
        const int size = run % 2;
        ContourDefinitionList list;
        ASSERT_TRUE(list.Generate(0, levels[size] - 1, 1));
        const int times = levels[1] / levels[size];
        save[size] = std::min(save[size], SecondsOf([&] {
                                  for (int i = 0; i < times; ++i) ASSERT_TRUE(list.Save(path.c_str()));
                              }));
        load[size] = std::min(load[size], SecondsOf([&] {
                                  for (int i = 0; i < times; ++i) {
                                      ContourDefinitionList read;
                                      ASSERT_TRUE(read.Load(path.c_str()));
                                      ASSERT_EQ(levels[size], read.NumContours());
                                  }
                              }));
    }
    RecordProperty("save", std::to_string(save[1] / save[0]));
    RecordProperty("load", std::to_string(load[1] / load[0]));
    // Ten times the levels may take fifteen times as long, and what any file costs is a matter of
    // milliseconds.
    EXPECT_LT(save[1], 1.5 * save[0] + 0.01);
    EXPECT_LT(load[1], 1.5 * load[0] + 0.01);
}

TEST(ContourDefinitionList, TheShippedFileIsInOrderAndAsItWouldBeSaved) {
    const std::wstring path = FromUtf8(PROJECT_DATA_FOLDER) + L"/pensacola/levels.cdf";
    ContourDefinitionList list;
    ASSERT_TRUE(list.Load(path.c_str()));
    const Levels levels = LevelsOf(list);
    EXPECT_TRUE(std::is_sorted(levels.begin(), levels.end()));
    EXPECT_EQ(0, levels.front());
    EXPECT_EQ(20, levels.back());
    const TemporaryFolder folder;
    ASSERT_TRUE(list.Save(folder.File(L"again.cdf").c_str()));
    EXPECT_EQ(ReadBytes(NativePath(path)), ReadBytes(folder.Path() / "again.cdf"));
}

} // namespace

TEST(ContourDefinitionList, TextIsReadAndWrittenAsAFileIs) {
    const std::string content =
        ReadBytes(NativePath(FromUtf8(PROJECT_DATA_FOLDER) + L"/pensacola/levels.cdf"));
    ContourDefinitionList list;
    ASSERT_TRUE(list.ReadText(content));
    std::string written;
    EXPECT_TRUE(list.Write([&](std::string_view piece) {
        written += piece;
        return true;
    }));
    EXPECT_EQ(content, written);
    EXPECT_FALSE(list.Write([](std::string_view) { return false; }));

    std::vector<std::wstring> remarks;
    EXPECT_TRUE(list.ReadText("[Contour(0)]\nLevel=x\n", &remarks)); // behind what is there
    EXPECT_FALSE(remarks.empty());
    EXPECT_FALSE(ContourDefinitionList().ReadText("[]\n"));
    EXPECT_FALSE(ContourDefinitionList().ReadText(""));
}

TEST(ContourDefinitionList, MoveAssignmentCarriesTheRecords) {
    ContourDefinitionList list = ListOf({5, 7}), other = ListOf({1});
    other = std::move(list);
    EXPECT_EQ((std::vector<double>{5, 7}), LevelsOf(other));
}
