// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/SectionKey.h"

#include "UtilityDLL/settings/Section.h"
#include "tests/support/CollidingNames.h"
#include "tests/support/Random.h"
#include "tests/support/SettingsPrinters.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>

namespace {

SectionKey KeyWithValue(const std::wstring& value) {
    SectionKey key(L"Key");
    key << value;
    return key;
}

template <typename T> std::wstring Stored(T value) {
    SectionKey key(L"Key");
    key << value;
    return key.GetValue();
}

template <typename T> T Extracted(const std::wstring& value, T start) {
    const SectionKey key = KeyWithValue(value);
    key >> start;
    return start;
}

template <typename T> std::wstring WrittenByStream(T value) {
    std::wostringstream stream;
    stream << std::fixed << value;
    return stream.str();
}

} // namespace

TEST(SectionKey, ANewKeyHasItsNameOnly) {
    for (const SectionKey& key : {SectionKey(L"Width"), SectionKey(std::wstring(L"Width"))}) {
        EXPECT_EQ(L"Width", key.GetName().String());
        EXPECT_EQ(HashedString<wchar_t>(L"WIDTH").Hash(), key.GetName().Hash());
        EXPECT_EQ(L"", key.GetValue());
        EXPECT_EQ(L"", key.GetComments());
        EXPECT_TRUE(key.IsValid());
    }
}

TEST(SectionKey, TheReadersConstructorStoresValueAndCommentAsGiven) {
    const SectionKey key(HashedString<wchar_t>(L"Name"), L" \t10 \n", L"  note ; ");
    EXPECT_EQ(L"Name", key.GetName().String());
    EXPECT_EQ(L" \t10 \n", key.GetValue());
    EXPECT_EQ(L"  note ; ", key.GetComments());
}

TEST(SectionKey, AnEmptyNameIsNotValid) {
    EXPECT_FALSE(SectionKey().IsValid());
    EXPECT_FALSE(SectionKey(L"").IsValid());
    EXPECT_FALSE(SectionKey(std::wstring()).IsValid());
    EXPECT_FALSE(SectionKey(static_cast<const wchar_t*>(nullptr)).IsValid());
    EXPECT_TRUE(SectionKey(L" ").IsValid());
    EXPECT_EQ(0u, SectionKey(L"").GetName().Hash());
}

TEST(SectionKey, TheErrorKeyIsNamelessAndEmpty) {
    EXPECT_FALSE(Section::m_ErrorKey.IsValid());
    EXPECT_EQ(L"", Section::m_ErrorKey.GetName().String());
    EXPECT_EQ(L"", Section::m_ErrorKey.GetValue());
    EXPECT_EQ(L"", Section::m_ErrorKey.GetComments());
}

TEST(SectionKey, CopiesAndMovesCarryEverything) {
    const SectionKey original(HashedString<wchar_t>(L"Name"), L"value", L"comment");
    const auto expectSame = [&](const SectionKey& key) {
        EXPECT_EQ(L"Name", key.GetName().String());
        EXPECT_EQ(original.GetName().Hash(), key.GetName().Hash());
        EXPECT_EQ(L"value", key.GetValue());
        EXPECT_EQ(L"comment", key.GetComments());
    };
    SectionKey copied(original);
    expectSame(copied);
    SectionKey moved(std::move(copied));
    expectSame(moved);
    SectionKey assigned(L"other");
    assigned << 5;
    assigned = original;
    expectSame(assigned);
    SectionKey moveAssigned(L"other");
    moveAssigned = std::move(assigned);
    expectSame(moveAssigned);
    expectSame(original);
    SectionKey& self = moveAssigned;
    moveAssigned = self;
    expectSame(moveAssigned);
}

TEST(SectionKey, CopiesAreIndependent) {
    SectionKey original(HashedString<wchar_t>(L"Name"), L"value", L"comment");
    const SectionKey copy(original);
    original << L"other";
    original.SetComments(L"changed");
    EXPECT_EQ(L"value", copy.GetValue());
    EXPECT_EQ(L"comment", copy.GetComments());
}

TEST(SectionKey, SetCommentsReplacesAndANullLeavesTheComment) {
    SectionKey key(L"Key");
    key.SetComments(L"first");
    EXPECT_EQ(L"first", key.GetComments());
    key.SetComments(static_cast<const wchar_t*>(nullptr));
    EXPECT_EQ(L"first", key.GetComments());
    key.SetComments(std::wstring(L"second"));
    EXPECT_EQ(L"second", key.GetComments());
    key.SetComments(std::wstring());
    EXPECT_EQ(L"", key.GetComments());
    key.SetComments(L"third");
    key.SetComments(L"");
    EXPECT_EQ(L"", key.GetComments());
}

TEST(SectionKey, NullTextsLeaveTheValue) {
    SectionKey key = KeyWithValue(L"old");
    key << static_cast<const wchar_t*>(nullptr);
    EXPECT_EQ(L"old", key.GetValue());
    key << static_cast<const char*>(nullptr);
    EXPECT_EQ(L"old", key.GetValue());
}

TEST(SectionKey, TextsReplaceTheWholeValue) {
    SectionKey key = KeyWithValue(L"a long old value");
    EXPECT_EQ(L"new", (key << L"new").GetValue());
    EXPECT_EQ(L"narrow", (key << "narrow").GetValue());
    EXPECT_EQ(L" kept \t", (key << std::wstring(L" kept \t")).GetValue());
    EXPECT_EQ(L"framework", (key << CString(L"framework")).GetValue());
    EXPECT_EQ(L"", (key << L"").GetValue());
    key << 5;
    EXPECT_EQ(L"", (key << "").GetValue());
    key << 5;
    EXPECT_EQ(L"", (key << CString()).GetValue());
}

TEST(SectionKey, NarrowTextConvertsAsTheFrameworksString) {
    const char* const text = "D\xC3\xA4mmerung";
    EXPECT_EQ(CString(text).String(), Stored(text));
}

TEST(SectionKey, TheKeysOwnTextsCanBeInserted) {
    SectionKey key(HashedString<wchar_t>(L"A name that is longer than any small buffer"), L"a value",
                   L"a comment");
    key << key.GetValue();
    EXPECT_EQ(L"a value", key.GetValue());
    key << key.GetValue().c_str() + 2;
    EXPECT_EQ(L"value", key.GetValue());
    key.SetComments(key.GetComments().c_str() + 2);
    EXPECT_EQ(L"comment", key.GetComments());
    key.SetComments(key.GetComments());
    EXPECT_EQ(L"comment", key.GetComments());
    key << key.GetName().String();
    EXPECT_EQ(key.GetName().String(), key.GetValue());
}

TEST(SectionKey, EveryInsertionReturnsTheKey) {
    SectionKey key(L"Key");
    EXPECT_EQ(&key, &(key << "a" << L"b" << std::wstring(L"c") << CString(L"d")));
    EXPECT_EQ(&key, &(key << short{1} << static_cast<unsigned short>(2) << 3 << 4u << 5L << 6UL << true
                          << 1.5f << 2.5));
    EXPECT_EQ(L"2.500000", key.GetValue());
    int number = 0;
    std::wstring text;
    EXPECT_EQ(&key, &(std::as_const(key) >> number >> text));
    EXPECT_EQ(2, number);
}

TEST(SectionKey, IntegersAreStoredAsDecimalDigits) {
    EXPECT_EQ(L"0", Stored(0));
    EXPECT_EQ(L"-2147483648", Stored(std::numeric_limits<int>::min()));
    EXPECT_EQ(L"2147483647", Stored(std::numeric_limits<int>::max()));
    EXPECT_EQ(L"4294967295", Stored(4294967295u));
    EXPECT_EQ(L"4294967295", Stored(4294967295ul));
    EXPECT_EQ(L"-32768", Stored(short{-32768}));
    EXPECT_EQ(L"65535", Stored(static_cast<unsigned short>(65535)));
    EXPECT_EQ(L"-2147483648", Stored(-2147483647L - 1));
    EXPECT_EQ(L"1", Stored(true));
    EXPECT_EQ(L"0", Stored(false));
}

TEST(SectionKey, FloatingPointNumbersHaveSixDigitsBehindThePoint) {
    struct Row {
        double value;
        const wchar_t* text;
    };
    for (const Row& row : {
             Row{2.5, L"2.500000"},
             Row{1e20, L"100000000000000000000.000000"},
             Row{0.0, L"0.000000"},
             Row{-0.0, L"-0.000000"},
             Row{-1.25, L"-1.250000"},
             Row{0.0000005, L"0.000000"}, // below the half: the double lies under it
             Row{0.00000051, L"0.000001"},
             Row{0.9999996, L"1.000000"},
             Row{9.9999996, L"10.000000"},
             Row{1e-300, L"0.000000"},
             Row{-1e-300, L"-0.000000"},
             Row{5e-7, L"0.000000"},
             Row{0.5, L"0.500000"},
             Row{123456789.123456789, L"123456789.123457"},
         })
        EXPECT_EQ(row.text, Stored(row.value)) << row.value;
    EXPECT_EQ(L"0.100000", Stored(0.1f));
    EXPECT_EQ(L"16777216.000000", Stored(16777217.0f));
    EXPECT_EQ(WrittenByStream(std::numeric_limits<double>::infinity()),
              Stored(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(WrittenByStream(-std::numeric_limits<double>::infinity()),
              Stored(-std::numeric_limits<double>::infinity()));
    EXPECT_EQ(WrittenByStream(std::numeric_limits<double>::quiet_NaN()),
              Stored(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(WrittenByStream(std::numeric_limits<double>::max()),
              Stored(std::numeric_limits<double>::max()));
    EXPECT_EQ(WrittenByStream(std::numeric_limits<float>::max()), Stored(std::numeric_limits<float>::max()));
}

TEST(SectionKey, NumbersAreStoredAsAWideStreamWritesThem) {
    Random random(1);
    std::wostringstream stream;
    stream << std::fixed;
    const auto written = [&](auto value) {
        stream.str(L"");
        stream << value;
        return stream.str();
    };
    SectionKey key(L"Key");
    for (int i = 0; i < 30000; ++i) {
        const std::uint64_t bits = random.Bits();
        double wide;
        float single;
        std::memcpy(&wide, &bits, sizeof wide);
        std::memcpy(&single, &bits, sizeof single);
        // Not every platform's streams show the sign of a NaN.
        if (std::isnan(wide)) wide = std::fabs(wide);
        if (std::isnan(single)) single = std::fabs(single);
        const double everyday = static_cast<double>(static_cast<std::int64_t>(bits)) / 0x1p45;
        ASSERT_EQ(written(wide), (key << wide).GetValue());
        ASSERT_EQ(written(single), (key << single).GetValue());
        ASSERT_EQ(written(everyday), (key << everyday).GetValue());
        ASSERT_EQ(written(static_cast<int>(bits)), (key << static_cast<int>(bits)).GetValue());
        ASSERT_EQ(written(static_cast<unsigned>(bits)), (key << static_cast<unsigned>(bits)).GetValue());
        ASSERT_EQ(written(static_cast<short>(bits)), (key << static_cast<short>(bits)).GetValue());
        ASSERT_EQ(written(static_cast<unsigned short>(bits)),
                  (key << static_cast<unsigned short>(bits)).GetValue());
        ASSERT_EQ(written(static_cast<long>(bits)), (key << static_cast<long>(bits)).GetValue());
        const auto color = static_cast<unsigned long>(bits & 0xFFFFFFFF);
        ASSERT_EQ(written(color), (key << color).GetValue());
    }
}

TEST(SectionKey, TextsComeOutAsTheyAre) {
    std::wstring text = L"before";
    CString framework(L"before");
    const SectionKey key = KeyWithValue(L" a;b=c \n");
    key >> text >> framework;
    EXPECT_EQ(L" a;b=c \n", text);
    EXPECT_EQ(L" a;b=c \n", framework.String());
    Section::m_ErrorKey >> text >> framework;
    EXPECT_EQ(L"", text);
    EXPECT_TRUE(framework.IsEmpty());
}

TEST(SectionKey, AnEmptyValueLeavesEveryNumberAlone) {
    for (const wchar_t* value : {L"", L"  ", L"\t\r\n\v\f"}) {
        EXPECT_EQ(7, Extracted<short>(value, 7));
        EXPECT_EQ(7, Extracted<unsigned short>(value, 7));
        EXPECT_EQ(7, Extracted<int>(value, 7));
        EXPECT_EQ(7u, Extracted<unsigned int>(value, 7));
        EXPECT_EQ(7, Extracted<long>(value, 7));
        EXPECT_EQ(7u, Extracted<unsigned long>(value, 7));
        EXPECT_EQ(7.5f, Extracted<float>(value, 7.5f));
        EXPECT_EQ(7.5, Extracted<double>(value, 7.5));
        EXPECT_TRUE(Extracted<bool>(value, true));
        EXPECT_FALSE(Extracted<bool>(value, false));
    }
}

TEST(SectionKey, AValueThatIsNoNumberGivesZero) {
    for (const wchar_t* value : {L"x", L"-", L"+", L".", L"e5", L"=", L"\u0663", L"--1"}) {
        EXPECT_EQ(0, Extracted<short>(value, 7));
        EXPECT_EQ(0, Extracted<unsigned short>(value, 7));
        EXPECT_EQ(0, Extracted<int>(value, 7));
        EXPECT_EQ(0u, Extracted<unsigned int>(value, 7));
        EXPECT_EQ(0, Extracted<long>(value, 7));
        EXPECT_EQ(0u, Extracted<unsigned long>(value, 7));
        EXPECT_EQ(0.0f, Extracted<float>(value, 7.5f));
        EXPECT_EQ(0.0, Extracted<double>(value, 7.5));
        EXPECT_FALSE(Extracted<bool>(value, true));
    }
}

TEST(SectionKey, NumbersAreReadUpToTheFirstForeignCharacter) {
    EXPECT_EQ(10, Extracted<int>(L"  10mm", 7));
    EXPECT_EQ(1, Extracted<int>(L"1,5", 7));
    EXPECT_EQ(1, Extracted<int>(L"1.9", 7));
    EXPECT_EQ(0, Extracted<int>(L"0x10", 7));
    EXPECT_EQ(1.5, Extracted<double>(L"1.5,7", 7));
    EXPECT_EQ(1.0, Extracted<double>(L"1,5", 7));
    EXPECT_EQ(-0.25, Extracted<double>(L"-.25", 7));
}

TEST(SectionKey, NumbersOutOfRangeGiveTheNearestLimit) {
    EXPECT_EQ(2147483647, Extracted<int>(L"99999999999", 7));
    EXPECT_EQ(-2147483647 - 1, Extracted<int>(L"-99999999999", 7));
    EXPECT_EQ(32767, Extracted<short>(L"40000", 7));
    EXPECT_EQ(-32768, Extracted<short>(L"-40000", 7));
    EXPECT_EQ(65535, Extracted<unsigned short>(L"70000", 7));
    EXPECT_EQ(4294967295u, Extracted<unsigned int>(L"4294967296", 7));
    EXPECT_EQ(4294967295u, Extracted<unsigned int>(L"-1", 7));
    EXPECT_TRUE(Extracted<bool>(L"2", false));
    EXPECT_FALSE(Extracted<bool>(L"true", true));
    EXPECT_EQ(std::numeric_limits<double>::max(), Extracted<double>(L"1e999", 7));
}

TEST(SectionKey, AnUnsignedLongIsReadAs32BitsOnEveryPlatform) {
    EXPECT_EQ(4294967295ul, Extracted<unsigned long>(L"4294967295", 7));
    EXPECT_EQ(4294967295ul, Extracted<unsigned long>(L"4294967296", 7));
    EXPECT_EQ(4294967295ul, Extracted<unsigned long>(L"99999999999999999999999", 7));
    EXPECT_EQ(4294967295ul, Extracted<unsigned long>(L"-1", 7));
    EXPECT_EQ(4294967294ul, Extracted<unsigned long>(L"-2", 7));
    EXPECT_EQ(16777215ul, Extracted<unsigned long>(L"16777215", 7));
}

TEST(SectionKey, EveryTypeComesBackFromItsText) {
    Random random(2);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random.Bits();
        ASSERT_EQ(static_cast<short>(bits), Extracted<short>(Stored(static_cast<short>(bits)), 7));
        ASSERT_EQ(static_cast<unsigned short>(bits),
                  Extracted<unsigned short>(Stored(static_cast<unsigned short>(bits)), 7));
        ASSERT_EQ(static_cast<int>(bits), Extracted<int>(Stored(static_cast<int>(bits)), 7));
        ASSERT_EQ(static_cast<unsigned>(bits), Extracted<unsigned>(Stored(static_cast<unsigned>(bits)), 7));
        ASSERT_EQ(static_cast<long>(bits), Extracted<long>(Stored(static_cast<long>(bits)), 7));
        const auto color = static_cast<unsigned long>(bits & 0xFFFFFFFF);
        ASSERT_EQ(color, Extracted<unsigned long>(Stored(color), 7));
        const double millionths = static_cast<double>(static_cast<int>(bits)) / 64.0; // six digits are enough
        ASSERT_EQ(millionths, Extracted<double>(Stored(millionths), 7));
    }
}

TEST(SectionKey, EqualityIsByNameWithoutLetterCase) {
    const SectionKey depth(HashedString<wchar_t>(L"Depth"), L"1", L"a");
    for (const wchar_t* name : {L"DEPTH", L"depth", L"dEpTh"}) {
        EXPECT_EQ(depth, SectionKey(name));
        EXPECT_FALSE(depth < SectionKey(name));
        EXPECT_FALSE(depth > SectionKey(name));
    }
    EXPECT_NE(depth, SectionKey(L"Depths"));
    EXPECT_NE(depth, SectionKey(L""));
    EXPECT_EQ(SectionKey(), SectionKey(L""));
}

TEST(SectionKey, LetterCaseIsThatOfLatin1) {
    EXPECT_EQ(SectionKey(L"gr\u00FC\u00DF\u00E9"), SectionKey(L"GR\u00DC\u00DF\u00C9"));
    EXPECT_NE(SectionKey(L"\u00FF"), SectionKey(L"\u0178"));
    EXPECT_NE(SectionKey(L"\u00B5"), SectionKey(L"\u039C"));
    EXPECT_NE(SectionKey(L"\u00F7"), SectionKey(L"\u00D7")); // division and multiplication are no letters
    EXPECT_NE(SectionKey(L"\u03C9"), SectionKey(L"\u03A9")); // beyond Latin-1 every character is itself
}

TEST(SectionKey, OrderIsByHashWhateverTheSpelling) {
    Random random(3);
    for (int i = 0; i < 100000; ++i) {
        const SectionKey left(random.Text(L"aAbByY\u00FF", 4)), right(random.Text(L"aAbByY\u00FF", 4));
        const unsigned l = left.GetName().Hash(), r = right.GetName().Hash();
        if (l == r) continue;
        ASSERT_EQ(l < r, left < right);
        ASSERT_EQ(l > r, left > right);
        ASSERT_FALSE(left == right);
    }
}

TEST(SectionKey, EqualHashesAreOrderedByName) {
    ASSERT_FALSE(CollidingNames().empty());
    for (const auto& [first, second] : CollidingNames()) {
        ASSERT_EQ(SectionKey(first).GetName().Hash(), SectionKey(second).GetName().Hash());
        EXPECT_NE(SectionKey(first), SectionKey(second));
        EXPECT_EQ(first < second, SectionKey(first) < SectionKey(second));
        EXPECT_EQ(first > second, SectionKey(first) > SectionKey(second));
        EXPECT_EQ(first > second, SectionKey(second) < SectionKey(first));
    }
}

TEST(SectionKey, AnUnsignedLongAboveHalfItsRangeIsWrittenWithoutASign) {
    constexpr unsigned long kMost = std::numeric_limits<unsigned long>::max();
    SectionKey key(L"k");
    for (const unsigned long value : {kMost, kMost / 2 + 1, kMost / 2}) {
        key << value;
        EXPECT_EQ(std::to_wstring(value), key.GetValue());
    }
}

namespace {

template <typename Value>
concept CanBeInserted = requires(SectionKey key, Value value) {
    key << value;
};
template <typename... Values> constexpr bool allCanBeInserted = (CanBeInserted<Values> && ...);
template <typename... Values> constexpr bool noneCanBeInserted = (!CanBeInserted<Values> && ...);

enum Numbered { ONE = 1 };

} // namespace

TEST(SectionKey, TextsAndNumbersCanBeInsertedAndPointersCannot) {
    static_assert(allCanBeInserted<char*, const char*, wchar_t*, const wchar_t*, std::wstring, CString>);
    static_assert(allCanBeInserted<bool, const bool, short, unsigned short, int, unsigned int, long,
                                   unsigned long, float, double, Numbered, std::vector<bool>::reference>);
    static_assert(noneCanBeInserted<void*, const void*, int*, const double*, SectionKey*, const SectionKey*,
                                    std::wstring*, std::nullptr_t, void (*)(), int SectionKey::*>);
    std::vector<bool> flags{true, false};
    EXPECT_EQ(L"1", (SectionKey(L"k") << flags[0]).GetValue());
    EXPECT_EQ(L"0", (SectionKey(L"k") << flags[1]).GetValue());
    EXPECT_EQ(L"1", (SectionKey(L"k") << ONE).GetValue());
}

TEST(SectionKey, ItsMovesCannotFailAndLeaveAKeyThatCanBeUsed) {
    static_assert(std::is_nothrow_move_constructible_v<SectionKey> &&
                  std::is_nothrow_move_assignable_v<SectionKey>);
    SectionKey key(L"Name", L"a value that is longer than a small buffer", std::wstring(L"comment"));
    const SectionKey taken(std::move(key));
    EXPECT_EQ(L"Name", key.GetName().String()); // NOLINT(bugprone-use-after-move): that is the point
    key << L"again";
    key.SetComments(L"new");
    EXPECT_EQ(L"again", key.GetValue());
    EXPECT_EQ(L"new", key.GetComments());
    EXPECT_EQ(L"comment", taken.GetComments());
    SectionKey& self = key;
    key = std::move(self);
    key << 1;
    EXPECT_EQ(L"1", key.GetValue());
}
