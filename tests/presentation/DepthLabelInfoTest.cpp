// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/DepthLabelInfo.h"

#include "tests/support/Random.h"
#include "tests/support/RecordPrinters.h"

#include <functional>
#include <gtest/gtest.h>
#include <type_traits>

namespace {

DepthLabelInfo FromLine(const std::wstring& line) {
    DepthLabelInfo label;
    label.SetFont(L"Left over");
    label.SetPrecision(9);
    label.SetPresentation(DepthLabelInfo::SMALL_DECIMALS);
    label.SetPlacement(DepthLabelInfo::WHOLE_PART);
    label.UseTextColor(false);
    label.AutoTextRotation(false);
    label.SetUnderlineDryingHeights(true);
    label.SetNoDecimalZeros(true);
    label.SetSignIsInverted(true);
    label.FromString(line);
    return label;
}

} // namespace

TEST(DepthLabelInfo, Defaults) {
    const DepthLabelInfo label;
    EXPECT_EQ(static_cast<const TextInfo&>(label), TextInfo());
    EXPECT_EQ(2, label.Precision());
    EXPECT_EQ(0, label.Presentation());
    EXPECT_EQ(0, label.Placement());
    EXPECT_TRUE(label.UseTextColor());
    EXPECT_TRUE(label.AutoTextRotation());
    EXPECT_FALSE(label.GetUnderlineDryingHeights());
    EXPECT_FALSE(label.GetNoDecimalZeros());
    EXPECT_FALSE(label.GetSignIsInverted());
}

TEST(DepthLabelInfo, TakesATextStyleAndDefaultsForTheRest) {
    TextInfo text;
    text.SetFont(L"Times");
    text.SetColor(0x123456);
    text.SetJustification(TextInfo::BASELINE_LEFT);
    const DepthLabelInfo label(text);
    EXPECT_EQ(static_cast<const TextInfo&>(label), text);
    EXPECT_EQ(2, label.Precision());
    EXPECT_TRUE(label.AutoTextRotation());
}

TEST(DepthLabelInfo, EveryFieldButTheInvertedSignCountsForEquality) {
    const DepthLabelInfo label;
    const auto changed = [](auto change) {
        DepthLabelInfo other;
        change(other);
        return other;
    };
    for (const DepthLabelInfo& other :
         {changed([](auto& l) { l.SetSize(7); }), changed([](auto& l) { l.SetPrecision(3); }),
          changed([](auto& l) { l.SetPresentation(DepthLabelInfo::LOWERED_DECIMALS); }),
          changed([](auto& l) { l.SetPlacement(DepthLabelInfo::WHOLE_LABEL); }),
          changed([](auto& l) { l.UseTextColor(false); }),
          changed([](auto& l) { l.AutoTextRotation(false); }),
          changed([](auto& l) { l.SetUnderlineDryingHeights(true); }),
          changed([](auto& l) { l.SetNoDecimalZeros(true); })}) {
        EXPECT_NE(label, other);
        EXPECT_FALSE(label == other);
        EXPECT_EQ(DepthLabelInfo(other), other);
    }
    const DepthLabelInfo inverted = changed([](auto& l) { l.SetSignIsInverted(true); });
    EXPECT_EQ(label, inverted);
    EXPECT_FALSE(label != inverted);
}

TEST(DepthLabelInfo, ComparesWithATextStyleAsATextStyle) {
    struct HostText : TextInfo {};
    TextInfo text;
    text.SetFont(L"Times");
    DepthLabelInfo label(text);
    label.SetPrecision(7);
    EXPECT_TRUE(text == label);
    EXPECT_TRUE(label == text);
    EXPECT_FALSE(text != label);
    EXPECT_FALSE(label != text);
    EXPECT_TRUE(label != TextInfo());
    EXPECT_TRUE(TextInfo() != label);
    HostText host;
    EXPECT_TRUE(host != label);
    EXPECT_TRUE(label != host);
    static_cast<TextInfo&>(host) = text;
    EXPECT_TRUE(host == label);
    EXPECT_TRUE(label == host);
    EXPECT_TRUE(host == text);
    EXPECT_TRUE(text == host);
}

TEST(DepthLabelInfo, IsMadeOfATextStyleOnlyWhereItIsSaid) {
    static_assert(std::is_constructible_v<DepthLabelInfo, const TextInfo&>);
    static_assert(!std::is_convertible_v<const TextInfo&, DepthLabelInfo>);
    static_assert(!std::is_assignable_v<DepthLabelInfo&, const TextInfo&>);

    DepthLabelInfo label;
    label.SetPrecision(7);
    TextInfo text;
    text.SetFont(L"Times");
    static_cast<TextInfo&>(label) = text;
    EXPECT_EQ(text, label);
    EXPECT_EQ(7, label.Precision());
    label = DepthLabelInfo(text);
    EXPECT_EQ(2, label.Precision());
}

TEST(DepthLabelInfo, NamesTheItemsOfItsLine) {
    std::vector<std::wstring> names = TextInfo::OneLineItems();
    for (const wchar_t* own : {L"Precision", L"Presentation", L"Placement", L"UseTextColor",
                               L"AutoTextRotation", L"UnderlineDryingHeights", L"NoDecimalZeros"})
        names.emplace_back(own);
    EXPECT_EQ(names, DepthLabelInfo::OneLineItems());
    ASSERT_EQ(17u, names.size());

    // Each of the label's fields alone, given a value that is not its default.
    const std::function<void(DepthLabelInfo&)> changes[] = {
        [](DepthLabelInfo& label) { label.SetPrecision(7); },
        [](DepthLabelInfo& label) { label.SetPresentation(DepthLabelInfo::SMALL_DECIMALS); },
        [](DepthLabelInfo& label) { label.SetPlacement(DepthLabelInfo::WHOLE_PART); },
        [](DepthLabelInfo& label) { label.UseTextColor(false); },
        [](DepthLabelInfo& label) { label.AutoTextRotation(false); },
        [](DepthLabelInfo& label) { label.SetUnderlineDryingHeights(true); },
        [](DepthLabelInfo& label) { label.SetNoDecimalZeros(true); },
    };
    const FormatString initial(DepthLabelInfo().ToString(), L',');
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        DepthLabelInfo label;
        changes[i](label);
        const FormatString items(label.ToString(), L',');
        for (std::size_t item = 0; item < names.size(); ++item)
            EXPECT_EQ(item == 10 + i, items[static_cast<int>(item)] != initial[static_cast<int>(item)])
                << testing::PrintToString(names[item]);
    }
}

TEST(DepthLabelInfo, CopiesKeepTheInvertedSign) {
    DepthLabelInfo label;
    label.SetSignIsInverted(true);
    DepthLabelInfo copy, moved;
    copy = label;
    EXPECT_TRUE(copy.GetSignIsInverted());
    moved = std::move(label);
    EXPECT_TRUE(moved.GetSignIsInverted());
}

TEST(DepthLabelInfo, HasItsOneLineFormOnly) {
    static_assert(IsKeptInSections<TextInfo>);
    static_assert(!IsKeptInSections<DepthLabelInfo>);
    static_assert(std::has_virtual_destructor_v<DepthLabelInfo>);
}

TEST(DepthLabelInfo_ToString, SeventeenItems) {
    EXPECT_EQ(L"Arial,2.5,0,0,0,0,0,0,0,0,2,0,0,1,1,0,0", DepthLabelInfo().ToString());
    DepthLabelInfo label;
    label.SetPrecision(-1);
    label.SetPresentation(DepthLabelInfo::SMALL_DECIMALS);
    label.SetPlacement(DepthLabelInfo::WHOLE_LABEL);
    label.UseTextColor(false);
    label.SetUnderlineDryingHeights(true);
    label.SetNoDecimalZeros(true);
    label.SetSignIsInverted(true);
    EXPECT_EQ(L"Arial,2.5,0,0,0,0,0,0,0,0,-1,1,2,0,1,1,1", label.ToString());
}

TEST(DepthLabelInfo_FromString, ItemsByPosition) {
    struct Row {
        const wchar_t* line;
        const wchar_t* result; // as ToString() has it
    };
    for (const Row& row : {
             Row{L"", L"Arial,2.5,0,0,0,0,0,0,0,0,2,0,0,1,1,0,0"},
             Row{L"a,1,0,0,0,0,0,0,0,255", L"a,1,0,0,10,0,0,0,0,255,2,0,0,1,1,0,0"},
             Row{L"a,1,0,0,0,0,0,0,0,0,3,1,2,0,0,1,1", L"a,1,0,0,0,0,0,0,0,0,3,1,2,0,0,1,1"},
             Row{L"a,1,0,0,0,0,0,0,0,0,3", L"a,1,0,0,0,0,0,0,0,0,3,0,0,1,1,0,0"},
             Row{L"a,1,0,0,0,0,0,0,0,0,3,1", L"a,1,0,0,0,0,0,0,0,0,3,1,0,1,1,0,0"},
             // fourteen items: item 9 is the precision, and the colour is the index's
             Row{L"a,1,0,0,5,0,0,0,0,3,1,2,0,0", L"a,1,0,0,170,0,0,0,0,16711680,3,1,2,0,0,0,0"},
             Row{L"a,1,0,0,5,0,0,0,0,3,1,2,0", L"a,1,0,0,18,0,0,0,0,3,1,2,0,1,1,0,0"},     // thirteen
             Row{L"a,1,0,0,5,0,0,0,0,3,1,2,0,0,7", L"a,1,0,0,18,0,0,0,0,3,1,2,0,0,1,0,0"}, // fifteen
             // numbers out of range keep the default
             Row{L"a,1,0,0,0,0,0,0,0,0,-7,3,3,2,x", L"a,1,0,0,0,0,0,0,0,0,-7,0,0,1,0,0,0"},
             Row{L"a,1,0,0,0,0,0,0,0,0,9,-1,-1", L"a,1,0,0,0,0,0,0,0,0,9,0,0,1,1,0,0"},
             Row{L"a,1,0,0,0,0,0,0,0,0,,,,,,,,,,,", L"a,1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0"},
         }) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.line)));
        EXPECT_EQ(row.result, FromLine(row.line).ToString());
        EXPECT_FALSE(FromLine(row.line).GetSignIsInverted());
    }
}

TEST(DepthLabelInfo_FromString, ReadsBackWhatToStringWrote) {
    Random random(8);
    const auto number = [&](unsigned range) { return static_cast<int>(random() % range); };
    for (int i = 0; i < 100'000; ++i) {
        DepthLabelInfo label;
        label.SetSize(static_cast<float>(number(4000)) / 8.0f);
        label.SetColor(random() & 0xFFFFFF);
        label.SetPrecision(number(100) - 50);
        label.SetPresentation(static_cast<DepthLabelInfo::PRESENTATION>(number(3)));
        label.SetPlacement(static_cast<DepthLabelInfo::PLACEMENT>(number(3)));
        label.UseTextColor(number(2) == 1);
        label.AutoTextRotation(number(2) == 1);
        label.SetUnderlineDryingHeights(number(2) == 1);
        label.SetNoDecimalZeros(number(2) == 1);
        label.SetSignIsInverted(number(2) == 1); // lost, and not part of equality
        ASSERT_EQ(label, FromLine(label.ToString()));
    }
}

TEST(DepthLabelInfo_FromString, HostileLinesGiveARecord) {
    EXPECT_EQ(L",0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0",
              FromLine(std::wstring().append(10'000'000, L',')).ToString());
    EXPECT_EQ(2147483647,
              FromLine(L"a,1,0,0,0,0,0,0,0,0," + std::wstring().append(1'000'000, L'9')).Precision());
}

TEST(DepthLabelInfo, FromStringOfTheBaseLeavesTheLabelAlone) {
    DepthLabelInfo label;
    label.SetPrecision(7);
    label.SetSignIsInverted(true);
    static_cast<TextInfo&>(label).FromString(L"Times,3");
    EXPECT_EQ(L"Times", label.Font());
    EXPECT_EQ(7, label.Precision());
    EXPECT_TRUE(label.GetSignIsInverted());
}
