// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/PanelInfo.h"

#include "tests/support/Records.h"

#include <gtest/gtest.h>

namespace {

PanelInfo Panel(double x, double y, float width, float height, bool locked, int justification) {
    PanelInfo panel;
    panel.posX = x;
    panel.posY = y;
    panel.width = width;
    panel.height = height;
    panel.lockPosSize = locked;
    panel.justification = justification;
    return panel;
}

// The setter of a public field.
template <typename Value> auto Set(Value PanelInfo::*field) {
    return [field](PanelInfo& panel, Value value) { panel.*field = value; };
}

} // namespace

TEST(PanelInfo, DefaultsAreZero) { EXPECT_EQ(Panel(0, 0, 0, 0, false, 0), PanelInfo()); }

TEST(PanelInfo, FieldsInASection) {
    ExpectFields<PanelInfo>({
        Field<PanelInfo>(L"Width", L"12.500000", Set(&PanelInfo::width), 12.5f, 0.0f, 0.0f),
        Field<PanelInfo>(L"Height", L"-7.000000", Set(&PanelInfo::height), -7.0f, 0.0f, 0.0f),
        Field<PanelInfo>(L"PosX", L"1.250000", Set(&PanelInfo::posX), 1.25, 0.0, 0.0, 0.0),
        Field<PanelInfo>(L"PosY", L"-2.500000", Set(&PanelInfo::posY), -2.5, 0.0, 0.0, 0.0),
        Field<PanelInfo>(L"LockPosSize", L"1", Set(&PanelInfo::lockPosSize), true, false, false),
        Field<PanelInfo>(L"Justification", L"5", Set(&PanelInfo::justification), 5, 0, 0, 0),
    });
}

TEST(PanelInfo, PrefixedKeysHaveNoPosition) {
    const PanelInfo panel = Panel(1, 2, 3, 4, true, 5);
    Section section;
    EXPECT_TRUE(panel.Write(L"Legend", section));
    ASSERT_EQ(4, section.NumKeys());
    const wchar_t* keys[] = {L"Legend.Width", L"Legend.Height", L"Legend.LockPosSize",
                             L"Legend.Justification"};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(keys[i], section[i].GetName().String());
    EXPECT_EQ(L"3.000000", section[0].GetValue());

    section[L"Legend.PosX"] << 77;
    PanelInfo other = Panel(8, 9, 0, 0, false, 0);
    EXPECT_TRUE(other.Read(L"Legend", section));
    EXPECT_EQ(other, Panel(8, 9, 3, 4, true, 5));
}

TEST(PanelInfo_Read, WithoutPrefixedKeysSizesStayAndTheJustificationIsZero) {
    PanelInfo panel = Panel(1, 2, 3, 4, true, 5);
    EXPECT_TRUE(panel.Read(L"Legend", SectionOf({{L"Width", L"9"}, {L"Legend2.Width", L"9"}})));
    EXPECT_EQ(panel, Panel(1, 2, 3, 4, true, 0));
}

TEST(PanelInfo, PrefixIsTakenAsItIs) {
    Section section;
    Panel(1, 2, 3, 4, true, 5).Write(L" a.b ", section);
    EXPECT_TRUE(section.HasKey(L" a.b .Width"));
    Section dotted;
    Panel(1, 2, 3, 4, true, 5).Write(L"", dotted);
    EXPECT_EQ(L".Width", dotted[0].GetName().String());
    EXPECT_EQ(4, dotted.NumKeys());
}

TEST(PanelInfo, SeveralPanelsShareASection) {
    Section section;
    for (int i = 0; i < 20; ++i)
        Panel(0, 0, static_cast<float>(i), 1, false, i).Write(L"P" + std::to_wstring(i), section);
    EXPECT_EQ(80, section.NumKeys());
    for (int i = 0; i < 20; ++i) {
        PanelInfo panel;
        panel.Read(L"p" + std::to_wstring(i), section);
        EXPECT_EQ(static_cast<float>(i), panel.width);
        EXPECT_EQ(i, panel.justification);
    }
}

TEST(PanelInfo, EqualityIsTolerantInPlaceAndSize) {
    const PanelInfo panel = Panel(1, 2, 3, 4, true, 5);
    EXPECT_EQ(panel, Panel(1 + 5e-10, 2 - 5e-10, 3, 4, true, 5));
    for (const PanelInfo& other :
         {Panel(1.1, 2, 3, 4, true, 5), Panel(1, 2.1, 3, 4, true, 5), Panel(1, 2, 3.1f, 4, true, 5),
          Panel(1, 2, 3, 4.1f, true, 5), Panel(1, 2, 3, 4, false, 5), Panel(1, 2, 3, 4, true, 6)})
        EXPECT_NE(panel, other);
}
