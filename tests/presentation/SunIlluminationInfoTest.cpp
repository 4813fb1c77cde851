// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/SunIlluminationInfo.h"

#include "tests/support/Records.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using SetNumber = void (SunIlluminationInfo::*)(double);
using SetFlag = void (SunIlluminationInfo::*)(bool);

} // namespace

TEST(SunIlluminationInfo, Defaults) {
    const SunIlluminationInfo info;
    EXPECT_FALSE(info.Enable());
    EXPECT_EQ(290.0, info.Azimuth());
    EXPECT_EQ(30.0, info.Elevation());
    EXPECT_EQ(1.0, info.Contrast());
}

TEST(SunIlluminationInfo, FieldsInASection) {
    ExpectFields<SunIlluminationInfo>({
        Field<SunIlluminationInfo>(L"SunIllumunationEnable", L"1",
                                   static_cast<SetFlag>(&SunIlluminationInfo::Enable), true, false, false),
        Field<SunIlluminationInfo>(L"SunIllumunationAzimuth", L"-45.500000",
                                   static_cast<SetNumber>(&SunIlluminationInfo::Azimuth), -45.5, 290.0, 0.0),
        Field<SunIlluminationInfo>(L"SunIllumunationElevation", L"400.000000",
                                   static_cast<SetNumber>(&SunIlluminationInfo::Elevation), 400.0, 30.0, 0.0),
        Field<SunIlluminationInfo>(L"SunIllumunationContrast", L"0.125000",
                                   static_cast<SetNumber>(&SunIlluminationInfo::Contrast), 0.125, 1.0, 0.0),
    });
}

TEST(SunIlluminationInfo, DefaultsInASection) {
    const Section section = Written(SunIlluminationInfo());
    EXPECT_EQ(L"0", section[L"SunIllumunationEnable"].GetValue());
    EXPECT_EQ(L"290.000000", section[L"SunIllumunationAzimuth"].GetValue());
    EXPECT_EQ(L"30.000000", section[L"SunIllumunationElevation"].GetValue());
    EXPECT_EQ(L"1.000000", section[L"SunIllumunationContrast"].GetValue());
}

TEST(SunIlluminationInfo, PrefixedKeys) {
    SunIlluminationInfo info;
    info.Enable(true);
    info.Azimuth(1);
    info.Elevation(2);
    info.Contrast(3);
    Section section;
    EXPECT_TRUE(info.Write(L"Chart", section));
    const wchar_t* keys[] = {L"Chart.SunIllumunationEnable", L"Chart.SunIllumunationAzimuth",
                             L"Chart.SunIllumunationElevation", L"Chart.SunIllumunationContrast"};
    ASSERT_EQ(4, section.NumKeys());
    for (int i = 0; i < 4; ++i) EXPECT_EQ(keys[i], section[i].GetName().String());

    SunIlluminationInfo back;
    EXPECT_TRUE(back.Read(L"Chart", section));
    EXPECT_EQ(info, back);
    EXPECT_TRUE(back.Read(L"Other", section)); // nothing there
    EXPECT_EQ(info, back);
    EXPECT_EQ(ReadFrom<SunIlluminationInfo>(section), SunIlluminationInfo());
}

TEST(SunIlluminationInfo, EqualityIsExact) {
    const SunIlluminationInfo info;
    SunIlluminationInfo other;
    other.Azimuth(std::nextafter(290.0, 300.0));
    EXPECT_NE(info, other);
    EXPECT_FALSE(info == other);
}
