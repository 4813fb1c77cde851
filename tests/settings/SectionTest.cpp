// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/Section.h"

#include "VelmBase/CRCChecksum.h"
#include "tests/support/CollidingNames.h"
#include "tests/support/Random.h"
#include "tests/support/SettingsPrinters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A section of keys with values: "name=value" each.
Section SectionWith(const std::vector<std::pair<std::wstring, std::wstring>>& keys) {
    Section section(L"Section");
    for (const auto& [name, value] : keys)
        section.AddKey(SectionKey(HashedString<wchar_t>(name), value, std::wstring()));
    return section;
}

std::vector<std::wstring> KeyTexts(const Section& section) {
    std::vector<std::wstring> texts;
    for (int i = 0; i < section.NumKeys(); ++i)
        texts.push_back(section[i].GetName().String() + L"=" + section[i].GetValue());
    return texts;
}

const wchar_t* const kNull = nullptr;

} // namespace

TEST(Section, ANewSectionHasItsNameOnly) {
    for (const Section& section : {Section(L"Grid"), Section(std::wstring(L"Grid"))}) {
        EXPECT_EQ(L"Grid", section.GetName().String());
        EXPECT_EQ(HashedString<wchar_t>(L"gRID").Hash(), section.GetName().Hash());
        EXPECT_EQ(L"", section.GetComments());
        EXPECT_EQ(0, section.NumKeys());
        EXPECT_TRUE(section.IsValid());
    }
    EXPECT_FALSE(Section(kNull).IsValid());
    EXPECT_FALSE(Section(L"").IsValid());
    EXPECT_FALSE(Section().IsValid());
}

TEST(Section, SetNameTakesTextAndHash) {
    Section section(L"old");
    section.SetName(HashedString<wchar_t>(L"New"));
    EXPECT_EQ(L"New", section.GetName().String());
    EXPECT_EQ(HashedString<wchar_t>(L"New").Hash(), section.GetName().Hash());
    section.SetName(HashedString<wchar_t>());
    EXPECT_FALSE(section.IsValid());
}

TEST(Section, SetCommentsReplacesAndANullLeavesTheComment) {
    Section section(L"s");
    section.SetComments(L"first");
    section.SetComments(kNull);
    EXPECT_EQ(L"first", section.GetComments());
    section.SetComments(std::wstring(L"second"));
    EXPECT_EQ(L"second", section.GetComments());
    section.SetComments(L"");
    EXPECT_EQ(L"", section.GetComments());
}

TEST(Section, CopiesAndMovesCarryNameCommentAndKeys) {
    Section original = SectionWith({{L"a", L"1"}, {L"b", L"2"}});
    original.SetComments(L"comment");
    const auto expectSame = [&](const Section& section) {
        EXPECT_EQ(L"Section", section.GetName().String());
        EXPECT_EQ(original.GetName().Hash(), section.GetName().Hash());
        EXPECT_EQ(L"comment", section.GetComments());
        EXPECT_THAT(KeyTexts(section), ElementsAre(L"a=1", L"b=2"));
    };
    Section copied(original);
    expectSame(copied);
    Section moved(std::move(copied));
    expectSame(moved);
    Section assigned(L"other");
    assigned += L"x";
    assigned = original;
    expectSame(assigned);
    Section moveAssigned(L"other");
    moveAssigned = std::move(assigned);
    expectSame(moveAssigned);
    const Section& self = moveAssigned;
    moveAssigned = self;
    expectSame(moveAssigned);
    moveAssigned[L"a"] << 9;
    expectSame(original);
}

TEST(Section, ClearRemovesTheKeysOnly) {
    Section section = SectionWith({{L"a", L"1"}});
    section.SetComments(L"comment");
    section.Clear();
    EXPECT_EQ(0, section.NumKeys());
    EXPECT_FALSE(section.HasKey(L"a"));
    EXPECT_EQ(L"Section", section.GetName().String());
    EXPECT_EQ(L"comment", section.GetComments());
}

TEST(Section, KeysAreAppendedWithoutALookForDuplicates) {
    Section section(L"s");
    SectionKey key(HashedString<wchar_t>(L"a"), L"1", L"c");
    EXPECT_TRUE(section.AddKey(key));
    EXPECT_TRUE(section.AddKey(L"A"));
    EXPECT_TRUE(section.AddKey(std::wstring(L"a")));
    EXPECT_TRUE(section.AddKey(L""));
    EXPECT_TRUE(section.AddKey(kNull));
    EXPECT_THAT(KeyTexts(section), ElementsAre(L"a=1", L"A=", L"a=", L"=", L"="));
    EXPECT_EQ(L"c", section[0].GetComments());
    EXPECT_EQ(L"", section[1].GetComments());
    key << L"changed";
    EXPECT_EQ(L"1", section[0].GetValue());
}

TEST(Section, PlusEqualsIsAddKeyAndReturnsTheSection) {
    Section section(L"s");
    EXPECT_EQ(&section, &(section += SectionKey(HashedString<wchar_t>(L"a"), L"1", L"c")));
    EXPECT_EQ(&section, &((section += L"b") += std::wstring(L"a")));
    EXPECT_THAT(KeyTexts(section), ElementsAre(L"a=1", L"b=", L"a="));
}

TEST(Section, AKeyOfTheSectionItselfCanBeAdded) {
    Section section = SectionWith({{L"a", L"a value that is longer than a small buffer"}});
    for (int i = 0; i < 100; ++i) section.AddKey(section[0]);
    for (int i = 0; i < 100; ++i) section += section[section.NumKeys() - 1];
    EXPECT_EQ(201, section.NumKeys());
    for (int i = 0; i < section.NumKeys(); ++i) ASSERT_EQ(section[0].GetValue(), section[i].GetValue());
}

TEST(Section, HasKeyIgnoresLetterCase) {
    const Section section = SectionWith({{L"Depth", L"1"}, {L"\u00DCber", L"2"}});
    for (const wchar_t* name : {L"Depth", L"DEPTH", L"depth", L"\u00FCBER"}) {
        EXPECT_TRUE(section.HasKey(name));
        EXPECT_TRUE(section.HasKey(std::wstring(name)));
        EXPECT_TRUE(section.HasKey(SectionKey(name)));
    }
    for (const wchar_t* name : {L"Dept", L"Depth ", L"", kNull}) {
        EXPECT_FALSE(section.HasKey(name));
        EXPECT_FALSE(section.HasKey(SectionKey(name)));
    }
    EXPECT_TRUE(SectionWith({{L"", L"x"}}).HasKey(L"")); // a comment-only line is found as the nameless key
}

TEST(Section, ColumnsOfEqualHashAreNotMistakenForEachOther) {
    ASSERT_FALSE(CollidingNames().empty());
    for (const auto& [first, second] : CollidingNames()) {
        Section section = SectionWith({{first, L"1"}});
        EXPECT_FALSE(section.HasKey(second));
        EXPECT_FALSE(section.RemoveKey(second));
        section[second] << 2;
        EXPECT_EQ(L"1", section[first].GetValue());
        EXPECT_EQ(L"2", section[second].GetValue());
        EXPECT_EQ(2, section.NumKeys());
    }
}

TEST(Section, RemoveKeyTakesTheFirstOfThatName) {
    Section section = SectionWith({{L"x", L"0"}, {L"a", L"1"}, {L"A", L"2"}, {L"a", L"3"}});
    EXPECT_TRUE(section.RemoveKey(L"A"));
    EXPECT_THAT(KeyTexts(section), ElementsAre(L"x=0", L"A=2", L"a=3"));
    EXPECT_EQ(L"2", section[L"a"].GetValue());
    EXPECT_TRUE(section.RemoveKey(std::wstring(L"a")));
    EXPECT_TRUE(section.RemoveKey(SectionKey(L"a")));
    EXPECT_FALSE(section.RemoveKey(L"a"));
    EXPECT_FALSE(section.RemoveKey(std::wstring(L"a")));
    EXPECT_FALSE(section.RemoveKey(SectionKey(L"a")));
    EXPECT_FALSE(section.RemoveKey(kNull));
    EXPECT_THAT(KeyTexts(section), ElementsAre(L"x=0"));
}

TEST(Section, AKeyOfTheSectionItselfCanBeRemoved) {
    Section section;
    for (int i = 0; i < 100; ++i)
        section.AddKey(L"a name that is longer than a small buffer " + std::to_wstring(i));
    for (int i = 99; i >= 0; --i) ASSERT_TRUE(section.RemoveKey(section[i / 2]));
    EXPECT_EQ(0, section.NumKeys());
}

TEST(Section, IndexByPosition) {
    Section section = SectionWith({{L"a", L"1"}, {L"b", L"2"}});
    EXPECT_EQ(L"b", section[1].GetName().String());
    section[1] << 5;
    EXPECT_EQ(L"5", std::as_const(section)[1].GetValue());
    section[0] = SectionKey(L"c");
    EXPECT_TRUE(section.HasKey(L"c"));
    EXPECT_FALSE(section.HasKey(L"a"));
}

TEST(Section, TheIndexOperatorAppendsAMissingKey) {
    Section section = SectionWith({{L"A", L"1"}});
    section[L"a"] << 5;
    EXPECT_THAT(KeyTexts(section), ElementsAre(L"A=5"));
    section[L"b"] << 6;
    section[std::wstring(L"c")] << L"7";
    EXPECT_THAT(KeyTexts(section), ElementsAre(L"A=5", L"b=6", L"c=7"));
    EXPECT_EQ(L"", section[L"d"].GetValue());
    EXPECT_EQ(L"", section[L"d"].GetComments());
    EXPECT_EQ(4, section.NumKeys());
    section[kNull] << 1;
    EXPECT_EQ(5, section.NumKeys());
    EXPECT_FALSE(section[4].IsValid());
    EXPECT_EQ(&section[4], &section[L""]);
}

TEST(Section, TheIndexOperatorFindsTheFirstOfSeveral) {
    Section section = SectionWith({{L"x", L"0"}, {L"a", L"1"}, {L"A", L"2"}});
    EXPECT_EQ(&section[1], &section[L"A"]);
    EXPECT_EQ(&section[1], &std::as_const(section)[std::wstring(L"A")]);
}

TEST(Section, TheConstIndexOperatorGivesTheErrorKey) {
    const Section section = SectionWith({{L"a", L"1"}});
    EXPECT_EQ(&Section::m_ErrorKey, &section[L"b"]);
    EXPECT_EQ(&Section::m_ErrorKey, &section[std::wstring(L"b")]);
    EXPECT_EQ(&Section::m_ErrorKey, &section[kNull]);
    EXPECT_FALSE(section[L"b"].IsValid());
    EXPECT_EQ(1, section.NumKeys());
    int number = 42;
    bool flag = true;
    double real = 1.5;
    section[L"b"] >> number >> flag >> real;
    EXPECT_EQ(42, number);
    EXPECT_TRUE(flag);
    EXPECT_EQ(1.5, real);
}

TEST(Section, ReferencesHoldWhileKeysAreAdded) {
    Section section(L"s");
    SectionKey& first = section[L"first"];
    for (int i = 0; i < 10000; ++i) section.AddKey(L"key" + std::to_wstring(i));
    first << L"still here";
    EXPECT_EQ(L"still here", section[0].GetValue());
}

TEST(Section, AnotherSectionsKeysAreAppendedInOrder) {
    Section section = SectionWith({{L"a", L"1"}});
    section.SetComments(L"mine");
    Section other = SectionWith({{L"b", L"2"}, {L"a", L"3"}});
    other.SetName(HashedString<wchar_t>(L"Other"));
    other.SetComments(L"theirs");
    section << other;
    EXPECT_THAT(KeyTexts(section), ElementsAre(L"a=1", L"b=2", L"a=3"));
    EXPECT_EQ(L"Section", section.GetName().String());
    EXPECT_EQ(L"mine", section.GetComments());
    EXPECT_THAT(KeyTexts(other), ElementsAre(L"b=2", L"a=3"));
    EXPECT_EQ(&section, &(section << Section()));
}

TEST(Section, ItsOwnKeysAreAppendedOnce) {
    Section section = SectionWith({{L"a", L"1"}, {L"b", L"2"}});
    section << section;
    EXPECT_THAT(KeyTexts(section), ElementsAre(L"a=1", L"b=2", L"a=1", L"b=2"));
}

TEST(Section, EveryOperationTakesWhatLivesInTheSection) {
    const std::wstring text = L"a text that is longer than any small buffer";
    for (const int others : {0, 6, 7, 100}) { // a block of keys is full, or not
        Section section(text);
        section.AddKey(text, text, text);
        for (int i = 0; i < others; ++i) section.AddKey(std::to_wstring(i));
        const int size = others + 1;

        section.AddKey(section[0].GetName(), section[0].GetValue(), section[0].GetComments());
        section.AddKey(section[0].GetValue());
        section.AddKey(section[0].GetValue().c_str());
        section += section[0];
        section += section[0].GetComments();
        EXPECT_EQ(size + 5, section.NumKeys());
        for (int i = size; i < size + 5; ++i) {
            ASSERT_EQ(text, section[i].GetName().String());
            EXPECT_EQ(section[i].GetValue().empty() ? L"" : text, section[i].GetComments());
        }
        section << section;
        EXPECT_EQ(2 * (size + 5), section.NumKeys());
        EXPECT_EQ(text, section[size + 5].GetValue());

        EXPECT_EQ(&section[0], &section[section[0].GetName()]);
        EXPECT_EQ(&section[0], &section[section[0].GetValue().c_str()]);
        section[section[0].GetComments() + L"?"] << section[0].GetValue() << section[0].GetName().String();
        EXPECT_EQ(text, section[text + L"?"].GetValue());
        EXPECT_TRUE(section.RemoveKey(section[text + L"?"]));

        section.SetComments(section[0].GetValue());
        section.SetComments(section.GetComments());
        section.SetComments(section.GetComments().c_str() + 2);
        EXPECT_EQ(text.substr(2), section.GetComments());
        section.SetName(section[0].GetName());
        section.SetName(section.GetName());
        EXPECT_EQ(text, section.GetName().String());

        while (section.HasKey(text)) ASSERT_TRUE(section.RemoveKey(section[text].GetName()));
        EXPECT_EQ(2 * others, section.NumKeys());
        section.AddKey(text, text, text);
        section[text] = section[section.NumKeys() - 1];
        Section& self = section;
        section = self;
        section = std::move(self);
        EXPECT_EQ(2 * others + 1, section.NumKeys());
        EXPECT_EQ(text, section[text].GetComments());
        EXPECT_TRUE(section.AddKey(std::move(section[text])));
        EXPECT_EQ(text, section[section.NumKeys() - 1].GetValue());
    }
}

TEST(Section, ComparisonIsByNameOnly) {
    Section a = SectionWith({{L"a", L"1"}});
    EXPECT_EQ(a, Section(L"SECTION"));
    EXPECT_FALSE(a != Section(L"sEction"));
    EXPECT_FALSE(a < Section(L"SECTION"));
    EXPECT_FALSE(a > Section(L"SECTION"));
    EXPECT_FALSE(a == Section(L"Sections"));
    EXPECT_NE(a, Section(L"Sections"));
    Random random(4);
    for (int i = 0; i < 1000; ++i) {
        const Section l(std::to_wstring(random.Bits())), r(std::to_wstring(random.Bits()));
        const unsigned left = l.GetName().Hash(), right = r.GetName().Hash();
        ASSERT_EQ(left < right, l < r);
        ASSERT_EQ(left > right, l > r);
    }
    for (const auto& [first, second] : CollidingNames()) {
        EXPECT_NE(Section(first), Section(second));
        EXPECT_EQ(first < second, Section(first) < Section(second));
        EXPECT_EQ(first > second, Section(first) > Section(second));
    }
}

TEST(Section, WriteOffsetsAreTheLongestNameAndValue) {
    int names = -1, values = -1;
    Section(L"a long section name").GetWriteOffsets(names, values);
    EXPECT_EQ(0, names);
    EXPECT_EQ(0, values);
    Section section = SectionWith({{L"Width", L"10"}, {L"LineStyle", L"Solid Line"}});
    section[0].SetComments(L"a comment that is longer than both");
    section.GetWriteOffsets(names, values);
    EXPECT_EQ(9, names);
    EXPECT_EQ(10, values);
    section.AddKey(SectionKey(HashedString<wchar_t>(), L"the value of a nameless key", L""));
    section.GetWriteOffsets(names, values);
    EXPECT_EQ(9, names);
    EXPECT_EQ(27, values);
}

TEST(Section, WriteOffsetsCountACharacterAboveTheFirst65536AsTwo) {
    int names = 0, values = 0;
    SectionWith({{L"\U0001F6A2\U0001F6A2", L"\U0001F6A2"}, {L"abc", L"\uFFFF"}})
        .GetWriteOffsets(names, values);
    EXPECT_EQ(4, names);
    EXPECT_EQ(2, values);
}

namespace {

unsigned int ChecksumOf(const std::vector<std::wstring>& texts) {
    CRCChecksum checksum;
    for (const std::wstring& text : texts) checksum += text;
    return checksum.Value();
}

} // namespace

TEST(Section_Checksum, CoversValuesAndNamesInOrder) {
    EXPECT_EQ(0u, Section(L"s").ComputeChecksum());
    Section section = SectionWith({{L"a", L"1"}, {L"B", L"zwei \u00FC"}, {L"", L"x"}});
    const unsigned int sum = ChecksumOf({L"1", L"a", L"zwei \u00FC", L"B", L"x", L""});
    EXPECT_EQ(sum, section.ComputeChecksum());
    section.SetName(HashedString<wchar_t>(L"renamed"));
    section.SetComments(L"comment");
    section[0].SetComments(L"comment");
    EXPECT_EQ(sum, section.ComputeChecksum());
    EXPECT_NE(sum, SectionWith({{L"B", L"zwei \u00FC"}, {L"a", L"1"}, {L"", L"x"}}).ComputeChecksum());
    EXPECT_NE(sum, SectionWith({{L"a", L"1"}, {L"b", L"zwei \u00FC"}, {L"", L"x"}}).ComputeChecksum());
}

TEST(Section_Checksum, LeavesTheChecksumKeyOutInAnyCaseAndNumber) {
    const unsigned int sum = SectionWith({{L"a", L"1"}, {L"b", L"2"}}).ComputeChecksum();
    EXPECT_EQ(
        sum,
        SectionWith(
            {{L"$checksum$", L"5"}, {L"a", L"1"}, {L"$CheckSum$", L"6"}, {L"b", L"2"}, {L"$CHECKSUM$", L"7"}})
            .ComputeChecksum());
    EXPECT_NE(sum, SectionWith({{L"a", L"1"}, {L"b", L"2"}, {L"CHECKSUM$", L"7"}}).ComputeChecksum());
    EXPECT_EQ(L"$CHECKSUM$", Section::m_ChecksumName.String());
}

TEST(Section_Checksum, IsStoredAsUnsignedDecimalDigitsAtTheEnd) {
    // Sought until the sum has its highest bit set: it must not come out negative.
    Section section = SectionWith({{L"a", L"0"}});
    for (int i = 0; section.ComputeChecksum() < 0x80000000u; ++i) section[0] << i;
    section.AddChecksum();
    ASSERT_EQ(2, section.NumKeys());
    EXPECT_EQ(L"$CHECKSUM$", section[1].GetName().String());
    EXPECT_EQ(std::to_wstring(section.ComputeChecksum()), section[1].GetValue());
    EXPECT_EQ(L"", section[1].GetComments());
    EXPECT_FALSE(section.IsModified());
    Section copy = section;
    copy.AddChecksum();
    EXPECT_EQ(KeyTexts(section), KeyTexts(copy));
}

TEST(Section_Checksum, ReplacesTheValueOfAKeyThatIsThere) {
    Section section = SectionWith({{L"$checksum$", L"old"}, {L"a", L"1"}});
    section[0].SetComments(L"kept");
    section.AddChecksum();
    ASSERT_EQ(2, section.NumKeys());
    EXPECT_EQ(L"$checksum$", section[0].GetName().String());
    EXPECT_EQ(std::to_wstring(section.ComputeChecksum()), section[0].GetValue());
    EXPECT_EQ(L"kept", section[0].GetComments());
    EXPECT_FALSE(section.IsModified());
}

TEST(Section_Checksum, AMissingChecksumCountsAsModified) {
    EXPECT_TRUE(Section(L"s").IsModified());
    EXPECT_TRUE(SectionWith({{L"a", L"1"}}).IsModified());
    Section empty(L"s");
    empty.AddChecksum();
    EXPECT_FALSE(empty.IsModified());
    EXPECT_EQ(L"0", empty[0].GetValue());
}

TEST(Section_Checksum, TellsEveryChangeOfNamesAndValuesButNotOfComments) {
    Section sealed = SectionWith({{L"a", L"1"}, {L"b", L"2"}});
    sealed.AddChecksum();
    const auto changed = [&](auto change) {
        Section section = sealed;
        change(section);
        return section.IsModified();
    };
    EXPECT_FALSE(changed([](Section& s) { s[0].SetComments(L"c"); }));
    EXPECT_FALSE(changed([](Section& s) { s.SetComments(L"c"); }));
    EXPECT_FALSE(changed([](Section& s) { s.SetName(HashedString<wchar_t>(L"other")); }));
    EXPECT_FALSE(changed([](Section& s) { s.AddKey(L""); })); // adds nothing to the sum
    EXPECT_TRUE(changed([](Section& s) { s[0] << 2; }));
    EXPECT_TRUE(changed([](Section& s) { s.AddKey(L"c"); }));
    EXPECT_TRUE(changed([](Section& s) { s.RemoveKey(L"b"); }));
    EXPECT_TRUE(changed([](Section& s) { s[0] = SectionKey(HashedString<wchar_t>(L"A"), L"1", L""); }));
    EXPECT_TRUE(changed([](Section& s) { s.RemoveKey(L"$CHECKSUM$"); }));
    EXPECT_TRUE(changed([](Section& s) { s[L"$CHECKSUM$"] << L""; }));
}

TEST(Section_Checksum, TheStoredNumberIsReadAsAWideStreamReadsIt) {
    Section section = SectionWith({{L"a", L"1"}});
    const std::wstring sum = std::to_wstring(section.ComputeChecksum());
    const auto modified = [&](const std::wstring& seal) {
        section[L"$CHECKSUM$"] << seal;
        return section.IsModified();
    };
    EXPECT_FALSE(modified(sum));
    EXPECT_FALSE(modified(L" \t+000" + sum + L" by hand"));
    EXPECT_FALSE(modified(L"-" + std::to_wstring(0u - section.ComputeChecksum()))); // wraps at 32 bits
    EXPECT_TRUE(modified(sum + L"0"));
    EXPECT_TRUE(modified(L"x" + sum));
    EXPECT_TRUE(modified(L"-" + sum));
    EXPECT_TRUE(modified(std::to_wstring(0x100000000ull + section.ComputeChecksum()))); // no wrap above
    EXPECT_TRUE(modified(L"4294967296"));
    EXPECT_TRUE(modified(L"not a number"));
}

TEST(Section_Checksum, OnlyTheFirstOfTwoSealsCounts) {
    Section section = SectionWith({{L"a", L"1"}});
    section.AddChecksum();
    section.AddKey(SectionKey(HashedString<wchar_t>(L"$checksum$"), L"1", L""));
    EXPECT_FALSE(section.IsModified());
    section[1] << 1;
    section[2] << std::to_wstring(section.ComputeChecksum());
    EXPECT_TRUE(section.IsModified());
    section.AddChecksum();
    EXPECT_FALSE(section.IsModified());
    EXPECT_EQ(3, section.NumKeys());
}

TEST(Section_Checksum, OfAnEmptySectionWithAnUnreadableSealIsZero) {
    // The sum of nothing is 0, and so is a text that is no number: such a section counts as untouched.
    EXPECT_FALSE(SectionWith({{L"$CHECKSUM$", L"none"}}).IsModified());
    EXPECT_TRUE(SectionWith({{L"$CHECKSUM$", L"1"}}).IsModified());
}

TEST(Section, HashedNamesLookUpAndAppendLikeTheirText) {
    const HashedString<wchar_t> name(L"Width");
    Section section;
    section[name] << 5;
    EXPECT_EQ(1, section.NumKeys());
    EXPECT_EQ(L"Width", section[0].GetName().String());
    section[HashedString<wchar_t>(L"WIDTH")] << 6;
    EXPECT_EQ(1, section.NumKeys());
    EXPECT_EQ(L"6", std::as_const(section)[name].GetValue());
    EXPECT_FALSE(std::as_const(section)[HashedString<wchar_t>(L"Height")].IsValid());
    EXPECT_EQ(&Section::m_ErrorKey, &std::as_const(section)[HashedString<wchar_t>()]);
}

TEST(Section, ItsMovesCannotFailAndLeaveASectionThatCanBeUsed) {
    static_assert(std::is_nothrow_move_constructible_v<Section> &&
                  std::is_nothrow_move_assignable_v<Section>);
    for (const int keys : {1, 100}) {
        Section section(L"s");
        section.SetComments(L"comment");
        for (int i = 0; i < keys; ++i) section[std::to_wstring(i)] << i;
        Section taken(std::move(section));
        section.Clear(); // NOLINT(bugprone-use-after-move): that is the point
        EXPECT_EQ(0, section.NumKeys());
        section[L"new"] << 1;
        EXPECT_EQ(&section[0], &section[L"NEW"]);
        Section assigned(L"other");
        for (int i = 0; i < 50; ++i) assigned[L"old" + std::to_wstring(i)];
        assigned = std::move(taken);
        EXPECT_EQ(keys, assigned.NumKeys());
        EXPECT_EQ(&assigned[keys - 1], &assigned[std::to_wstring(keys - 1)]);
        EXPECT_FALSE(assigned.HasKey(L"old1"));
        EXPECT_EQ(L"comment", assigned.GetComments());
    }
}

TEST(Section, KeysThatMoveInAndOutAreFoundWhereTheyAre) {
    for (const int keys : {10, 100}) {
        Section section(L"s");
        for (int i = 0; i < keys; ++i) section[L"k" + std::to_wstring(i)] << i;
        SectionKey out = std::move(section[3]);
        EXPECT_EQ(L"3", out.GetValue());
        EXPECT_EQ(&section[3], &section[L"k3"]); // what was moved from keeps its name
        section[3] << L"again";
        out = SectionKey(L"out"); // no longer one of the section
        EXPECT_EQ(&section[3], &section[L"k3"]);
        section[4] = std::move(out);
        EXPECT_EQ(&section[4], &section[L"out"]);
        EXPECT_FALSE(section.HasKey(L"k4"));
        std::swap(section[5], section[6]);
        EXPECT_EQ(&section[6], &section[L"k5"]);
        EXPECT_EQ(&section[5], &section[L"k6"]);
        EXPECT_TRUE(section.AddKey(std::move(section[7])));
        EXPECT_EQ(&section[7], &section[L"k7"]);
        EXPECT_TRUE(section.RemoveKey(L"k7"));
        EXPECT_EQ(L"7", section[L"k7"].GetValue());
    }
}

namespace {

template <typename T>
concept GivesItsNameAway = requires(T element) {
    element.NameSlot();
};
template <typename T>
concept CanBeDetached = requires(T name) {
    name.WatchFor(nullptr);
};

} // namespace

TEST(Section, HostsCannotDetachAKeyFromItsIndex) {
    static_assert(!GivesItsNameAway<SectionKey> && !GivesItsNameAway<Section> && !CanBeDetached<IndexedName>);
}

namespace {

/// A section as a plain list.
using PlainKeys = std::vector<std::pair<std::wstring, std::wstring>>;

std::size_t FindPlainly(const PlainKeys& keys, const std::wstring& name) {
    std::size_t i = 0;
    while (i < keys.size() && !icompareW(keys[i].first, name)) ++i;
    return i;
}

void RemovePlainly(PlainKeys& keys, std::size_t i) {
    keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(i));
}

} // namespace

TEST(Section, RandomOperationsMatchAPlainList) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        Random random(seed);
        const unsigned names = seed % 2 ? 12 : 300; // few names give many duplicates
        const auto anyName = [&] {
            return (random.OnceIn(2) ? L"name" : L"NAME") + std::to_wstring(random.Below(names));
        };
        Section section(L"s");
        PlainKeys plain;
        for (int step = 0; step < 1500; ++step) {
            const std::wstring name = anyName(), value = std::to_wstring(step);
            const std::size_t found = FindPlainly(plain, name);
            const auto any = static_cast<int>(random.Below(plain.size() + 1));
            const bool isKey = any < static_cast<int>(plain.size());
            const unsigned removals = step / 300 % 2 ? 45 : 12;
            const unsigned choice = random.Below(100);
            if (choice < removals) {
                ASSERT_EQ(found < plain.size(), random.OnceIn(2) || found == plain.size()
                                                    ? section.RemoveKey(name)
                                                    : section.RemoveKey(section[static_cast<int>(found)]));
                if (found < plain.size()) RemovePlainly(plain, found);
            } else if (choice < 65) {
                section[name] << value;
                if (found == plain.size()) plain.emplace_back(name, L"");
                plain[found].second = value;
            } else if (choice < 75) {
                section.AddKey(name, value, {});
                plain.emplace_back(name, value);
            } else if (choice < 85 && isKey) { // renamed through a reference
                section[any] = SectionKey(name, value, std::wstring());
                plain[static_cast<std::size_t>(any)] = {name, value};
            } else if (choice < 90 && isKey) {
                const auto other = static_cast<int>(random.Below(plain.size()));
                std::swap(section[any], section[other]);
                std::swap(plain[static_cast<std::size_t>(any)], plain[static_cast<std::size_t>(other)]);
            } else if (choice < 93) {
                Section copy(section);
                if (random.OnceIn(2)) copy[anyName()] << 1;
                if (random.OnceIn(2)) copy = section;
                copy = section;
                section = std::move(copy);
            } else if (choice == 99 && random.OnceIn(10)) {
                section.Clear();
                plain.clear();
            }
            const std::wstring sought = anyName();
            const std::size_t expected = FindPlainly(plain, sought);
            ASSERT_EQ(expected < plain.size(), section.HasKey(sought)) << seed;
            if (expected < plain.size()) {
                ASSERT_EQ(&section[static_cast<int>(expected)], &std::as_const(section)[sought]) << seed;
                ASSERT_EQ(&section[static_cast<int>(expected)], &section[sought]) << seed;
            }
            ASSERT_EQ(plain.size(), static_cast<std::size_t>(section.NumKeys()));
        }
        for (std::size_t i = 0; i < plain.size(); ++i) {
            ASSERT_EQ(plain[i].first, section[static_cast<int>(i)].GetName().String());
            ASSERT_EQ(plain[i].second, section[static_cast<int>(i)].GetValue());
        }
    }
}
