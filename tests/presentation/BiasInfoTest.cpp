// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/BiasInfo.h"

#include "tests/support/Records.h"

#include <gtest/gtest.h>

TEST(BiasInfo, ModeIsZeroByDefault) { EXPECT_EQ(0, BiasInfo().Mode()); }

TEST(BiasInfo, FieldsInASection) {
    const auto set = [](BiasInfo& info, int mode) { info.Mode(mode); };
    ExpectFields<BiasInfo>({Field<BiasInfo>(L"BiasMode", L"-5", set, -5, 0, 0)});
}

TEST(BiasInfo, PrefixedKeyIsFoundUnderItsOwnPrefixAlone) {
    BiasInfo info;
    info.Mode(3);
    Section section;
    EXPECT_TRUE(info.Write(L"P1", section));
    ASSERT_EQ(1, section.NumKeys());
    EXPECT_EQ(L"P1.BiasMode", section[0].GetName().String());

    BiasInfo other;
    other.Mode(8);
    EXPECT_TRUE(other.Read(L"P2", section));
    EXPECT_EQ(8, other.Mode());
    EXPECT_TRUE(other.Read(section));
    EXPECT_EQ(8, other.Mode());
    EXPECT_TRUE(other.Read(L"P1", section));
    EXPECT_EQ(3, other.Mode());
    EXPECT_EQ(info, other);
}
