// SPDX-License-Identifier: MIT
#include "UtilityDLL/keywords/Keywords.h"

#include "VelmBase/CRCChecksum.h"
#include "tests/support/Random.h"

#include <chrono>
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <vector>

// For the messages of failed expectations.
void PrintTo(const CKeyword& keyword, std::ostream* out) {
    *out << ::testing::PrintToString(keyword.name) << " = " << ::testing::PrintToString(keyword.value) << " x"
         << keyword.refCount;
}
void PrintTo(const CKeywords& set, std::ostream* out) {
    *out << '{';
    for (int i = 0; i < set.GetSize(); ++i) {
        *out << (i > 0 ? ", " : "");
        PrintTo(*set.GetKeywordConst(i), out);
    }
    *out << '}';
}

namespace {

using Rows = std::vector<CKeyword>;

CKeyword Keyword(const std::wstring& name, const std::wstring& value = {}, int refCount = 0) {
    CKeyword keyword;
    keyword.name = name;
    keyword.value = value;
    keyword.refCount = refCount;
    return keyword;
}

CKeywords SetOf(const Rows& rows) {
    CKeywords set;
    for (const CKeyword& row : rows) set.AddKeyword(&row);
    return set;
}

Rows RowsOf(const CKeywords& set) {
    Rows rows;
    for (int i = 0; i < set.GetSize(); ++i) rows.push_back(*set.GetKeywordConst(i));
    return rows;
}

CKeywords SetWithRepeatedNames(const Rows& rows) {
    Section section(L"Any");
    for (const CKeyword& row : rows) section.AddKey(row.name, row.value, {});
    CKeywords set;
    EXPECT_TRUE(set.Read(section));
    for (int i = 0; i < set.GetSize(); ++i)
        set.GetKeyword(i)->refCount = rows[static_cast<std::size_t>(i)].refCount;
    return set;
}

TEST(CKeyword, DefaultsAreZeroAndEmptyAndAllFieldsAreCopied) {
    CKeyword keyword;
    EXPECT_EQ(0, keyword.refCount);
    EXPECT_EQ(0, keyword.reserved1);
    EXPECT_EQ(0, keyword.reserved2);
    EXPECT_EQ(L"", keyword.value);
    EXPECT_EQ(L"", keyword.name);
    keyword = {1, 2, 3, L"v", L"n"};
    CKeywords set;
    set.AddKeyword(&keyword);
    EXPECT_EQ(keyword, *CKeywords(set).GetKeywordConst(L"n"));
    static_assert(sizeof(keyword.refCount) == 4 && sizeof(keyword.reserved1) == 4 &&
                  sizeof(keyword.reserved2) == 4);
}

TEST(CKeywords, PredefinedNames) {
    EXPECT_THAT(CKeywords::PredefinedKeywordKeys,
                ::testing::ElementsAre(L"plot project", L"current date", L"current time",
                                       L"coordinate system", L"project name", L"project number",
                                       L"project task", L"project client", L"project contractor"));
    EXPECT_THAT(CKeywords::PredefinedPlotKeywordKeys, ::testing::ElementsAre(L"plot name"));
    for (const std::wstring& name : CKeywords::PredefinedKeywordKeys) {
        EXPECT_TRUE(CKeywords::IsPredefinedKeyword(name));
        EXPECT_FALSE(CKeywords::IsPredefinedPlotKeyword(name));
    }
    EXPECT_TRUE(CKeywords::IsPredefinedPlotKeyword(L"plot name"));
    for (const wchar_t* name : {L"plot name", L"Project name", L"project", L"project name ", L""})
        EXPECT_FALSE(CKeywords::IsPredefinedKeyword(name)) << ::testing::PrintToString(name);
    for (const wchar_t* name : {L"Plot name", L"plot", L"project name", L""})
        EXPECT_FALSE(CKeywords::IsPredefinedPlotKeyword(name)) << ::testing::PrintToString(name);
}

TEST(CKeywords, PlaceholdersOfATextAreCountedAndNamedAsTheirValue) {
    struct Row {
        const wchar_t* text;
        Rows keywords;
    };
    const Row rows[] = {
        {L"Title %plot name% of %project name%, %plot name%",
         {Keyword(L"plot name", L"plot name", 2), Keyword(L"project name", L"project name", 1)}},
        {L"%ab\n%cd%", {Keyword(L"abcd", L"abcd", 1)}},
        {L"100%%", {}},
        {L"%%", {}},
        {L"50% and 60%", {Keyword(L" and 60", L" and 60", 1)}},
        {L"%unfinished", {}},
        {L"%a% %A%", {Keyword(L"a", L"a", 1), Keyword(L"A", L"A", 1)}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.text));
        CKeywords set;
        set.AddKeywordsInString(row.text);
        EXPECT_EQ(row.keywords, RowsOf(set));
    }
}

TEST(CKeywords, PlaceholdersOfSeveralTextsAddUpAndKeepValues) {
    CKeywords set = SetOf({Keyword(L"a", L"given", 5)});
    set.AddKeywordsInString(L"%a%%b%");
    set.AddKeywordsInString(L"%b%%a% %open");
    set.AddKeywordsInString(L"%c%"); // what was left open does not reach the next text
    EXPECT_EQ((Rows{Keyword(L"a", L"given", 7), Keyword(L"b", L"b", 2), Keyword(L"c", L"c", 1)}),
              RowsOf(set));
}

TEST(CKeywords, LookUpByExactNameAndByPosition) {
    CKeywords set = SetOf({Keyword(L"a", L"1"), Keyword(L"A", L"2"), Keyword(L"", L"3")});
    EXPECT_EQ(3, set.GetSize());
    EXPECT_EQ(L"1", set.GetKeywordConst(L"a")->value);
    EXPECT_EQ(L"2", set.GetKeywordConst(L"A")->value);
    EXPECT_EQ(L"3", set.GetKeywordConst(L"")->value);
    EXPECT_EQ(nullptr, set.GetKeywordConst(L"a "));
    EXPECT_EQ(nullptr, set.GetKeyword(L"b"));
    for (const int index : {-1, 3, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(nullptr, set.GetKeyword(index));
        EXPECT_EQ(nullptr, set.GetKeywordConst(index));
    }
    for (int i = 0; i < set.GetSize(); ++i) EXPECT_EQ(set.GetKeyword(i), set.GetKeywordConst(i));
    EXPECT_EQ(set.GetKeyword(1), set.GetKeyword(L"A"));
}

TEST(CKeywords, AddingAKnownNameAddsItsCountAndKeepsTheValue) {
    CKeywords set = SetOf({Keyword(L"a", L"old", 2)});
    const CKeyword more = Keyword(L"a", L"new", 3);
    set.AddKeyword(&more);
    EXPECT_EQ(Rows{Keyword(L"a", L"old", 5)}, RowsOf(set));
    set.AddKeywordToFront(&more);
    EXPECT_EQ(Rows{Keyword(L"a", L"old", 8)}, RowsOf(set));
    set.AddKeyword(set.GetKeyword(0)); // one of its own
    EXPECT_EQ(Rows{Keyword(L"a", L"old", 16)}, RowsOf(set));
}

TEST(CKeywords, NewKeywordsGoToTheEndOrToTheFront) {
    CKeywords set;
    const CKeyword a = Keyword(L"a");
    const CKeyword b = Keyword(L"b");
    const CKeyword c = Keyword(L"c");
    set.AddKeyword(&a);
    set.AddKeyword(&b);
    set.AddKeywordToFront(&c);
    EXPECT_EQ((Rows{c, a, b}), RowsOf(set));
    for (const CKeyword& keyword : {a, b, c}) EXPECT_EQ(keyword, *set.GetKeywordConst(keyword.name));
}

TEST(CKeywords, NullPointersChangeNothing) {
    CKeywords set = SetOf({Keyword(L"a")});
    set.AddKeyword(nullptr);
    set.AddKeywordToFront(nullptr);
    EXPECT_EQ(Rows{Keyword(L"a")}, RowsOf(set));
}

TEST(CKeywords, ReferenceCountsWrapAt32Bits) {
    constexpr int kMax = std::numeric_limits<int>::max();
    CKeywords set = SetOf({Keyword(L"a", L"", kMax)});
    set.AddKeywordsInString(L"%a%");
    EXPECT_EQ(std::numeric_limits<int>::min(), set.GetKeywordConst(0)->refCount);
    set.AddKeywords(SetOf({Keyword(L"a", L"", std::numeric_limits<int>::min())}));
    EXPECT_EQ(0, set.GetKeywordConst(0)->refCount);
}

TEST(CKeywords, AddKeywordsMergesInOrder) {
    CKeywords set = SetOf({Keyword(L"a", L"1", 1), Keyword(L"b", L"2", 1)});
    set.AddKeywords(SetOf({Keyword(L"c", L"3", 4), Keyword(L"b", L"9", 2), Keyword(L"d", L"", 0)}));
    const Rows expected{Keyword(L"a", L"1", 1), Keyword(L"b", L"2", 3), Keyword(L"c", L"3", 4),
                        Keyword(L"d", L"", 0)};
    EXPECT_EQ(expected, RowsOf(set));
}

TEST(CKeywords, AddRefcountRemoveLeavesTheOtherSetWhatThisOneLacks) {
    CKeywords set = SetOf({Keyword(L"a", L"1", 1), Keyword(L"b", L"2", 0)});
    CKeywords other =
        SetOf({Keyword(L"x", L"", 7), Keyword(L"b", L"9", 2), Keyword(L"y"), Keyword(L"a", L"", 3)});
    set.AddRefcountRemove(other);
    EXPECT_EQ((Rows{Keyword(L"a", L"1", 4), Keyword(L"b", L"2", 2)}), RowsOf(set));
    EXPECT_EQ((Rows{Keyword(L"x", L"", 7), Keyword(L"y")}), RowsOf(other));
    EXPECT_EQ(nullptr, other.GetKeywordConst(L"a"));
    EXPECT_EQ(L"y", other.GetKeywordConst(L"y")->name);
}

TEST(CKeywords, ExcludeKeywordsRemovesWhateverTheCount) {
    CKeywords set = SetOf({Keyword(L"a", L"", 5), Keyword(L"b"), Keyword(L"c", L"", 1)});
    set.ExcludeKeywords(SetOf({Keyword(L"c"), Keyword(L"none"), Keyword(L"a")}));
    EXPECT_EQ(Rows{Keyword(L"b")}, RowsOf(set));
}

TEST(CKeywords, ExcludeKeywordsRemovesOneForEachOfTheOther) {
    CKeywords set =
        SetWithRepeatedNames({Keyword(L"a", L"1"), Keyword(L"b"), Keyword(L"a", L"2"), Keyword(L"a", L"3")});
    CKeywords same = set;
    set.ExcludeKeywords(SetOf({Keyword(L"a")}));
    EXPECT_EQ((Rows{Keyword(L"b"), Keyword(L"a", L"2"), Keyword(L"a", L"3")}), RowsOf(set));
    same.ExcludeKeywords(SetWithRepeatedNames({Keyword(L"a"), Keyword(L"a")}));
    EXPECT_EQ((Rows{Keyword(L"b"), Keyword(L"a", L"3")}), RowsOf(same));
}

TEST(CKeywords, RemoveKeywordKeepsCountedOnesUnlessForced) {
    CKeywords set = SetOf({Keyword(L"a", L"", 1), Keyword(L"b", L"", 0), Keyword(L"c", L"", -1)});
    set.RemoveKeyword(L"a", false);
    set.RemoveKeyword(L"b", false);
    set.RemoveKeyword(L"c", false);
    set.RemoveKeyword(L"none", true);
    EXPECT_EQ((Rows{Keyword(L"a", L"", 1), Keyword(L"c", L"", -1)}), RowsOf(set));
    set.RemoveKeyword(L"a", true);
    EXPECT_EQ(Rows{Keyword(L"c", L"", -1)}, RowsOf(set));
    EXPECT_EQ(nullptr, set.GetKeywordConst(L"a"));
    EXPECT_EQ(set.GetKeywordConst(0), set.GetKeywordConst(L"c"));
}

TEST(CKeywords, SetValuesNeitherAddsNorRemoves) {
    CKeywords set = SetOf({Keyword(L"a", L"old", 1), Keyword(L"b", L"kept", 2)});
    set.SetValues(SetOf({Keyword(L"c", L"x", 9), Keyword(L"a", L"new", 9)}));
    EXPECT_EQ((Rows{Keyword(L"a", L"new", 1), Keyword(L"b", L"kept", 2)}), RowsOf(set));
    set.SetValues(SetWithRepeatedNames({Keyword(L"a", L"first"), Keyword(L"a", L"second")}));
    EXPECT_EQ(L"first", set.GetKeywordConst(L"a")->value);
}

TEST(CKeywords, ASetMayBeItsOwnArgument) {
    const Rows rows{Keyword(L"a", L"1", 2), Keyword(L"b", L"2", 3)};
    CKeywords set = SetOf(rows);
    set.SetValues(set);
    EXPECT_EQ(rows, RowsOf(set));
    set.AddKeywords(set);
    EXPECT_EQ((Rows{Keyword(L"a", L"1", 4), Keyword(L"b", L"2", 6)}), RowsOf(set));
    set = *&set;
    EXPECT_EQ(2, set.GetSize());
    set.AddRefcountRemove(set);
    EXPECT_EQ(0, set.GetSize());
    set = SetOf(rows);
    set.ExcludeKeywords(set);
    EXPECT_EQ(0, set.GetSize());
}

TEST(CKeywords, ClearAndClearRefCount) {
    CKeywords set = SetOf({Keyword(L"a", L"1", 2), Keyword(L"b", L"2", -3)});
    set.ClearRefCount();
    EXPECT_EQ((Rows{Keyword(L"a", L"1", 0), Keyword(L"b", L"2", 0)}), RowsOf(set));
    set.Dump();
    set.Clear();
    EXPECT_EQ(0, set.GetSize());
    EXPECT_EQ(nullptr, set.GetKeywordConst(L"a"));
    set.AddKeywordsInString(L"%a%");
    EXPECT_EQ(1, set.GetKeywordConst(L"a")->refCount);
}

TEST(CKeywords, EqualityIgnoresOrderAndCounts) {
    struct Row {
        Rows a, b;
        bool equal;
    };
    const Row rows[] = {
        {{}, {}, true},
        {{Keyword(L"a", L"1", 1), Keyword(L"b", L"2", 2)}, {Keyword(L"b", L"2"), Keyword(L"a", L"1")}, true},
        {{Keyword(L"a", L"1")}, {Keyword(L"a", L"2")}, false},
        {{Keyword(L"a", L"1")}, {Keyword(L"A", L"1")}, false},
        {{Keyword(L"a", L"x")}, {Keyword(L"a", L"X")}, false},
        {{Keyword(L"a", L"1")}, {Keyword(L"a", L"1"), Keyword(L"b", L"2")}, false},
        {{Keyword(L"a", L"1"), Keyword(L"c", L"2")}, {Keyword(L"a", L"1"), Keyword(L"b", L"2")}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.a) + ::testing::PrintToString(row.b));
        EXPECT_EQ(row.equal, SetOf(row.a) == SetOf(row.b));
        EXPECT_EQ(row.equal, SetOf(row.b) == SetOf(row.a));
    }
    // A set with a name twice is still equal to its copy.
    const CKeywords repeated = SetWithRepeatedNames({Keyword(L"a", L"1"), Keyword(L"a", L"2")});
    EXPECT_EQ(repeated, CKeywords(repeated));
}

TEST(CKeywords, ChecksumDependsOnOrderAndNotOnCounts) {
    const CKeywords set = SetOf({Keyword(L"a", L"1", 1), Keyword(L"b", L"2", 2)});
    const CKeywords reversed = SetOf({Keyword(L"b", L"2"), Keyword(L"a", L"1")});
    EXPECT_EQ(set, reversed);
    EXPECT_NE(set.GetChecksum(), reversed.GetChecksum());
    EXPECT_EQ(set.GetChecksum(), SetOf({Keyword(L"a", L"1", 7), Keyword(L"b", L"2")}).GetChecksum());
    CRCChecksum checksum;
    for (const wchar_t* text : {L"1", L"a", L"2", L"b"}) checksum += std::wstring(text); // value before name
    EXPECT_EQ(checksum.Value(), set.GetChecksum());
    EXPECT_EQ(CRCChecksum().Value(), CKeywords().GetChecksum());
}

TEST(CKeywords, OneLineFormHasTheNamesOnly) {
    CKeywords set;
    set.FromString(L"a%b%a");
    EXPECT_EQ((Rows{Keyword(L"a", L"", 2), Keyword(L"b", L"", 1)}), RowsOf(set));
    EXPECT_EQ(L"a%b", set.ToString());
    set.FromString(L"%%x%% y %"); // empty items are passed over
    EXPECT_EQ((Rows{Keyword(L"x", L"", 1), Keyword(L" y ", L"", 1)}), RowsOf(set));
    set.FromString(L"");
    EXPECT_EQ(0, set.GetSize());
    EXPECT_EQ(L"", set.ToString());
}

TEST(CKeywords, SectionHoldsNamesAndValuesInOrder) {
    Section section(L"Keywords");
    section[L"old"] << L"gone";
    EXPECT_TRUE(SetOf({Keyword(L"b", L"2", 4), Keyword(L"a", L"", 1)}).Write(section));
    ASSERT_EQ(2, section.NumKeys());
    EXPECT_EQ(L"b", section[0].GetName().String());
    EXPECT_EQ(L"2", section[0].GetValue());
    EXPECT_EQ(L"", section[0].GetComments());
    EXPECT_EQ(L"a", section[1].GetName().String());
    EXPECT_EQ(L"", section[1].GetValue());

    CKeywords set = SetOf({Keyword(L"other", L"", 1)});
    EXPECT_TRUE(set.Read(section));
    EXPECT_EQ((Rows{Keyword(L"b", L"2"), Keyword(L"a")}), RowsOf(set)); // counts are not stored
}

TEST(CKeywords, NamesThatDifferInCaseSurviveASection) {
    Section section(L"Keywords");
    const CKeywords set = SetOf({Keyword(L"a", L"small"), Keyword(L"A", L"capital")});
    EXPECT_TRUE(set.Write(section));
    CKeywords read;
    EXPECT_TRUE(read.Read(section));
    EXPECT_EQ(set, read);
}

TEST(CKeywords, ReadTakesEveryKey) {
    Section section(L"Keywords");
    section.AddKey(std::wstring(), L"", L"a comment line");
    section.AddKey(std::wstring(L"a"), L"1", {});
    section.AddKey(std::wstring(L"a"), L"2", {});
    section.AddChecksum();
    CKeywords set;
    EXPECT_TRUE(set.Read(section));
    ASSERT_EQ(4, set.GetSize());
    EXPECT_EQ(L"", set.GetKeywordConst(0)->name);
    EXPECT_EQ(L"$CHECKSUM$", set.GetKeywordConst(3)->name);
    EXPECT_EQ(L"1", set.GetKeywordConst(L"a")->value); // the first of a name counts
    set.RemoveKeyword(L"a", false);
    EXPECT_EQ(L"2", set.GetKeywordConst(L"a")->value);
}

TEST(CKeywords, CopiesAndMovesCarryEverything) {
    const Rows rows{Keyword(L"a", L"1", 2), Keyword(L"b", L"2", 3)};
    CKeywords set = SetOf(rows);
    CKeywords copy(set);
    copy.GetKeyword(L"a")->value = L"changed";
    EXPECT_EQ(rows, RowsOf(set));
    CKeywords assigned;
    assigned = set;
    EXPECT_EQ(rows, RowsOf(assigned));
    const CKeywords moved(std::move(set));
    EXPECT_EQ(rows, RowsOf(moved));
    set = moved; // NOLINT(bugprone-use-after-move): a moved-from set takes a new value
    EXPECT_EQ(rows, RowsOf(set));
    EXPECT_EQ(L"2", set.GetKeywordConst(L"b")->value);
}

TEST(CKeywords, PointersHoldWhileKeywordsAreAdded) {
    CKeywords set = SetOf({Keyword(L"a", L"1")});
    CKeyword* const a = set.GetKeyword(L"a");
    for (int i = 0; i < 1000; ++i) {
        const CKeyword more = Keyword(std::to_wstring(i));
        i % 2 ? set.AddKeyword(&more) : set.AddKeywordToFront(&more);
    }
    a->value = L"late";
    EXPECT_EQ(L"late", set.GetKeywordConst(L"a")->value);
    EXPECT_EQ(a, set.GetKeyword(L"a"));
}

// A host renames a keyword behind the back of whatever makes look-ups fast.
TEST(CKeywords, ARenamedKeywordIsFoundByItsNewNameOnly) {
    for (const int size : {1, 3, 50, 2000}) {
        SCOPED_TRACE(size);
        CKeywords set;
        for (int i = 0; i < size; ++i) set.AddKeywordsInString(L"%n" + std::to_wstring(i) + L"%");
        CKeyword* const keyword = set.GetKeyword(size / 2);
        const std::wstring oldName = keyword->name;
        keyword->name = L"new";
        EXPECT_EQ(nullptr, set.GetKeywordConst(oldName));
        EXPECT_EQ(keyword, set.GetKeywordConst(L"new"));
        set.AddKeywordsInString(L"%new%");
        EXPECT_EQ(2, keyword->refCount);
        EXPECT_EQ(size, set.GetSize());

        keyword->name = L"newer"; // again, through the same pointer, after the set was used
        EXPECT_EQ(nullptr, set.GetKeywordConst(L"new"));
        set.AddKeywordsInString(L"%newer%%new%");
        EXPECT_EQ(3, keyword->refCount);
        EXPECT_EQ(size + 1, set.GetSize());

        const CKeywords values = SetOf({Keyword(L"newer", L"value")});
        keyword->name = oldName;
        set.SetValues(values);
        EXPECT_EQ(nullptr, set.GetKeywordConst(L"newer"));
        EXPECT_NE(L"value", keyword->value);
    }
}

TEST(CKeywords, OfTwoKeywordsThatTheHostGaveOneNameTheFirstCounts) {
    CKeywords set = SetOf({Keyword(L"a", L"1"), Keyword(L"b", L"2"), Keyword(L"c", L"3")});
    set.GetKeyword(L"a")->name = L"c";
    EXPECT_EQ(L"1", set.GetKeywordConst(L"c")->value);
    set.AddKeywordsInString(L"%c%");
    EXPECT_EQ(1, set.GetKeywordConst(0)->refCount);
    EXPECT_EQ(0, set.GetKeywordConst(2)->refCount);
}

TEST(CKeywords, RenamingThroughAPointerIntoAnAssignedSetIsNoticed) {
    CKeywords source = SetOf({Keyword(L"a")});
    CKeyword* const keyword = source.GetKeyword(0);
    const CKeywords target(std::move(source)); // the pointer now leads into this one
    ASSERT_EQ(keyword, target.GetKeywordConst(0));
    keyword->name = L"b";
    EXPECT_EQ(nullptr, target.GetKeywordConst(L"a"));
    EXPECT_EQ(keyword, target.GetKeywordConst(L"b"));
}

// The plain set: a vector, searched from the front.
class PlainSet {
public:
    Rows rows;

    CKeyword* Find(const std::wstring& name) {
        for (CKeyword& row : rows)
            if (row.name == name) return &row;
        return nullptr;
    }
    void Add(const CKeyword& keyword, bool front) {
        if (CKeyword* const found = Find(keyword.name))
            found->refCount += keyword.refCount;
        else
            rows.insert(front ? rows.begin() : rows.end(), keyword);
    }
    void Remove(const std::wstring& name, bool force) {
        CKeyword* const found = Find(name);
        if (found && (force || found->refCount == 0)) rows.erase(rows.begin() + (found - rows.data()));
    }
    void AddRefcountRemove(PlainSet& other) {
        for (std::size_t i = other.rows.size(); i-- > 0;)
            if (CKeyword* const found = Find(other.rows[i].name)) {
                found->refCount += other.rows[i].refCount;
                other.rows.erase(other.rows.begin() + static_cast<std::ptrdiff_t>(i));
            }
    }
    void SetValues(PlainSet& other) {
        for (CKeyword& row : rows)
            if (const CKeyword* const found = other.Find(row.name)) row.value = found->value;
    }
};

TEST(CKeywords, RandomOperationsAgreeWithThePlainSet) {
    Random random(42);
    const auto anyName = [&] {
        return std::wstring(1 + random() % 2, static_cast<wchar_t>(L'a' + random() % 12));
    };
    for (int round = 0; round < 500; ++round) {
        CKeywords sets[2];
        PlainSet plain[2];
        for (int step = 0; step < 250; ++step) {
            const std::size_t s = random() % 2;
            CKeywords& set = sets[s];
            PlainSet& expected = plain[s];
            const CKeyword keyword =
                Keyword(anyName(), std::to_wstring(step), static_cast<int>(random() % 3) - 1);
            switch (random() % 12) {
            case 0:
            case 1:
                set.AddKeyword(&keyword);
                expected.Add(keyword, false);
                break;
            case 2:
                set.AddKeywordToFront(&keyword);
                expected.Add(keyword, true);
                break;
            case 3:
                set.RemoveKeyword(keyword.name, step % 2);
                expected.Remove(keyword.name, step % 2);
                break;
            case 4:
                set.AddKeywordsInString(L"x %" + keyword.name + L"% y");
                expected.Add(Keyword(keyword.name, keyword.name, 1), false);
                break;
            case 5:
                set.AddKeywords(sets[1 - s]);
                for (const CKeyword& other : plain[1 - s].rows) expected.Add(other, false);
                break;
            case 6:
                set.AddRefcountRemove(sets[1 - s]);
                expected.AddRefcountRemove(plain[1 - s]);
                break;
            case 7:
                set.ExcludeKeywords(sets[1 - s]);
                for (const CKeyword& other : plain[1 - s].rows) expected.Remove(other.name, true);
                break;
            case 8:
                set.SetValues(sets[1 - s]);
                expected.SetValues(plain[1 - s]);
                break;
            case 9: // the host renames one; only now and then, since from then on every look-up is a scan
                if (CKeyword* const found = random() % 8 ? nullptr : set.GetKeyword(anyName())) {
                    expected.Find(found->name)->name = keyword.name;
                    found->name = keyword.name;
                }
                break;
            case 10:
                if (random() % 10 == 0) {
                    set = sets[1 - s];
                    expected = plain[1 - s];
                }
                break;
            default: {
                const CKeyword* const found = set.GetKeywordConst(keyword.name);
                const CKeyword* const wanted = expected.Find(keyword.name);
                ASSERT_EQ(wanted != nullptr, found != nullptr);
                if (found) {
                    ASSERT_EQ(*wanted, *found);
                }
            }
            }
            ASSERT_EQ(expected.rows, RowsOf(set)) << "round " << round << " step " << step;
        }
    }
}

double SecondsOf(auto work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Bounds that a quadratic search overruns by far (10^10 comparisons and more), whatever the machine is busy
// with.
TEST(CKeywords, ManyNamesTakeTimeInProportion) {
    constexpr int kNames = 200000;
    std::wstring text;
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < kNames; ++i) text += L"%name " + std::to_wstring(i) + L"%\n";
    CKeywords set;
    EXPECT_LT(SecondsOf([&] {
                  set.AddKeywordsInString(text);
                  CKeywords other(set);
                  other.AddKeywords(set);
                  other.SetValues(set);
                  EXPECT_EQ(other, set);
                  CKeywords rest(set);
                  other.AddRefcountRemove(rest);
                  EXPECT_EQ(0, rest.GetSize());
                  other.ExcludeKeywords(set);
                  EXPECT_EQ(0, other.GetSize());
                  for (int i = 0; i < kNames; ++i) other.AddKeyword(set.GetKeywordConst(i));
                  set.GetKeyword(0)->name = L"renamed";
                  set.AddKeywordsInString(text);
                  other.FromString(set.ToString());
                  Section section;
                  EXPECT_TRUE(set.Write(section));
                  EXPECT_TRUE(other.Read(section));
                  EXPECT_EQ(kNames + 1, other.GetSize());
              }),
              30.0);
    EXPECT_EQ(4, set.GetKeywordConst(L"name 7")->refCount);
}

TEST(CKeywords, PointersThatTheHostHoldsRenameAtAnyTime) {
    Random random(43);
    const auto anyName = [&] { return random.Text(L"abcd", 2); };
    for (int round = 0; round < 300; ++round) {
        PlainSet plain;
        for (unsigned i = random.Below(3) * 6; i > 0; --i) plain.rows.push_back(Keyword(anyName()));
        CKeywords set = SetWithRepeatedNames(plain.rows);
        std::vector<std::pair<CKeyword*, std::size_t>> held; // with their positions
        const std::size_t mostHeld = round % 3 * 8 + 1;
        for (int step = 0; step < 60; ++step) {
            const CKeyword keyword = Keyword(anyName(), L"", 1);
            switch (random.Below(6)) {
            case 0:
                if (random.OnceIn(2) && plain.rows.size() > 0 && held.size() < mostHeld) {
                    const std::size_t position = random.Below(plain.rows.size());
                    held.emplace_back(set.GetKeyword(static_cast<int>(position)), position);
                }
                break;
            case 1:
                if (!held.empty()) {
                    const auto& [pointer, position] = held[random.Below(held.size())];
                    pointer->name = plain.rows[position].name = keyword.name;
                }
                break;
            case 2:
                set.AddKeyword(&keyword);
                plain.Add(keyword, false);
                break;
            case 3: {
                const std::size_t before = plain.rows.size();
                set.AddKeywordToFront(&keyword);
                plain.Add(keyword, true);
                for (auto& [pointer, position] : held) position += plain.rows.size() - before;
                break;
            }
            case 4:
                set.AddKeywordsInString(L"%" + keyword.name + L"%");
                if (!keyword.name.empty()) plain.Add(Keyword(keyword.name, keyword.name, 1), false);
                break;
            default:
                if (random.OnceIn(10)) {
                    const std::size_t before = plain.rows.size();
                    set.RemoveKeyword(keyword.name, true);
                    plain.Remove(keyword.name, true);
                    if (plain.rows.size() < before) held.clear();
                }
            }
            ASSERT_EQ(plain.rows, RowsOf(set)) << "round " << round << " step " << step;
            for (const wchar_t* name : {L"", L"a", L"b", L"ab", L"cd", L"dd"}) {
                const CKeyword* const found = plain.Find(name);
                ASSERT_EQ(found ? set.GetKeywordConst(static_cast<int>(found - plain.rows.data())) : nullptr,
                          set.GetKeywordConst(name))
                    << "round " << round << " step " << step;
            }
        }
    }
}

TEST(CKeywords, OnePointerToAKeywordMakesNothingSlow) {
    constexpr int kNames = 100000; // each look-up that scanned would pass over all of these
    const auto name = [](int i) { return L"name " + std::to_wstring(i); };
    CKeywords set;
    EXPECT_LT(SecondsOf([&] {
                  for (int i = 0; i < kNames; ++i) {
                      const CKeyword keyword = Keyword(name(i), L"", 1);
                      set.AddKeyword(&keyword);
                  }
                  set.GetKeyword(7)->value = L"given";
                  for (int i = 0; i < kNames; ++i) {
                      ASSERT_EQ(i, std::stoi(set.GetKeywordConst(name(i))->name.substr(5)));
                      ASSERT_EQ(nullptr, set.GetKeywordConst(name(-1 - i)));
                      const CKeyword more = Keyword(name(kNames + i), L"", 1);
                      set.AddKeyword(&more);
                      set.AddKeywordsInString(L"%" + name(2 * kNames + i) + L"%");
                      ASSERT_EQ(set.GetKeyword(7), set.GetKeyword(name(7)));
                  }
              }),
              30.0);
    EXPECT_EQ(3 * kNames, set.GetSize());
}

} // namespace

static_assert(std::has_virtual_destructor_v<CKeywords> && !std::is_polymorphic_v<CKeyword>);

TEST(CKeywords, OneLineFormHasAnItemForAnEmptyName) {
    EXPECT_EQ(L"%a", SetOf({Keyword(L""), Keyword(L"a")}).ToString());
    EXPECT_EQ(L"a%", SetOf({Keyword(L"a"), Keyword(L"")}).ToString());
    EXPECT_EQ(L"a%%b", SetOf({Keyword(L"a"), Keyword(L""), Keyword(L"b")}).ToString());
}

TEST(CKeywords, ReadClearsTheOtherFields) {
    Section section(L"s");
    section[L"a"] << L"1";
    const CKeyword old{3, 4, 5, L"", L"a"};
    CKeywords set;
    set.AddKeyword(&old);
    EXPECT_TRUE(set.Read(section));
    EXPECT_EQ((CKeyword{0, 0, 0, L"1", L"a"}), *set.GetKeywordConst(0));
}

TEST(CKeywords, ChecksumIsThatOfItsSection) {
    const CKeywords set = SetOf({Keyword(L"a", L"1"), Keyword(L"B", L"2")});
    Section section(L"$KEYWORDS$");
    EXPECT_TRUE(set.Write(section));
    EXPECT_EQ(section.ComputeChecksum(), set.GetChecksum());
}

TEST(CKeywords, EveryOperationTakesWhatLivesInTheSet) {
    const std::wstring text = L"%a text that is longer than a small buffer%b%";
    const auto made = [&] { return SetOf({Keyword(L"k", text, 1), Keyword(L"b", L"2", 0)}); };

    CKeywords set = made();
    set.FromString(set.GetKeyword(0)->value);
    EXPECT_EQ((Rows{Keyword(text.substr(1, text.size() - 4), L"", 1), Keyword(L"b", L"", 1)}), RowsOf(set));
    set.FromString(set.GetKeywordConst(0)->name);
    EXPECT_EQ(1, set.GetSize());

    set = made();
    set.AddKeywordsInString(set.GetKeyword(0)->value);
    EXPECT_EQ(3, set.GetSize());
    for (int i = 0; i < 20; ++i) { // a copy of its own keyword, under another name
        CKeyword copy = *set.GetKeyword(0);
        copy.name += std::to_wstring(i);
        set.AddKeyword(&copy);
        set.AddKeyword(set.GetKeyword(set.GetSize() - 1));
        set.AddKeywordToFront(set.GetKeyword(0));
    }
    EXPECT_EQ(23, set.GetSize());
    set.RemoveKeyword(set.GetKeyword(1)->name, true);
    set.RemoveKeyword(set.GetKeyword(0)->name, true);
    EXPECT_EQ(21, set.GetSize());
    EXPECT_EQ(nullptr, set.GetKeyword(L"k"));
    EXPECT_EQ(set.GetKeyword(5), set.GetKeyword(set.GetKeyword(5)->name));
    const CKeywords& self = set;
    set = self;
    EXPECT_EQ(21, set.GetSize());
}
