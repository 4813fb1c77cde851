// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/ContourInfo.h"

#include "tests/support/Records.h"

#include <cmath>
#include <gtest/gtest.h>

TEST(ContourInfo, Defaults) {
    const ContourInfo info;
    EXPECT_TRUE(info.GetEnableContouring());
    EXPECT_EQ(20.0f, info.GetLabelSpacing());
    EXPECT_EQ(0.0, info.GetSuppressionLength());
    EXPECT_EQ(0, info.GetSmoothingWindow());
    EXPECT_EQ(1, info.GetSmoothingPasses());
    EXPECT_EQ(ContourInfo::OPTIMUM_TEXT_ANGLE, info.GetLabelOrientation());
}

TEST(ContourInfo, FieldsInASection) {
    ExpectFields<ContourInfo>({
        Field<ContourInfo>(L"SmoothingWindow", L"12", &ContourInfo::SetSmoothingWindow, 12, 0, 0),
        Field<ContourInfo>(L"ContourLabelSpacing", L"35.500000", &ContourInfo::SetLabelSpacing, 35.5f, 20.0f,
                           0.0f),
        Field<ContourInfo>(L"SuppressionLength", L"-0.250000", &ContourInfo::SetSuppressionLength, -0.25, 0.0,
                           0.0),
        Field<ContourInfo>(L"SmoothingPasses", L"3", &ContourInfo::SetSmoothingPasses, 3, 1, 0),
        Field<ContourInfo>(L"EnableContouring", L"0", &ContourInfo::SetEnableContouring, false, true, false),
        Field<ContourInfo>(L"LabelOrientation", L"HighToLow", &ContourInfo::SetLabelOrientation,
                           ContourInfo::HIGH_TO_LOW, ContourInfo::OPTIMUM_TEXT_ANGLE,
                           ContourInfo::OPTIMUM_TEXT_ANGLE, ContourInfo::OPTIMUM_TEXT_ANGLE),
    });
}

TEST(ContourInfo_Write, CommentsForWhoeverReadsTheFile) {
    const Section section = Written(ContourInfo());
    EXPECT_EQ(L"Values between 0 and 8", section[L"SmoothingWindow"].GetComments());
    EXPECT_EQ(L"A value of 0 disables suppresion", section[L"SuppressionLength"].GetComments());
    for (const wchar_t* key :
         {L"ContourLabelSpacing", L"SmoothingPasses", L"EnableContouring", L"LabelOrientation"})
        EXPECT_EQ(L"", section[key].GetComments());
    EXPECT_EQ(L"Values between 0 and 8", ThroughAFile(section)[L"SmoothingWindow"].GetComments());
}

TEST(ContourInfo_Read, OlderSpacingKeyIsReadAndTheNewerOneWins) {
    EXPECT_EQ(35.0f, ReadFrom<ContourInfo>(SectionOf({{L"LabelSpacing", L"35"}})).GetLabelSpacing());
    EXPECT_EQ(7.0f,
              ReadFrom<ContourInfo>(SectionOf({{L"ContourLabelSpacing", L"7"}, {L"LabelSpacing", L"35"}}))
                  .GetLabelSpacing());
    EXPECT_FALSE(Written(ContourInfo()).HasKey(L"LabelSpacing"));
}

TEST(ContourInfo_Read, OrientationCountsInItsExactLetterCase) {
    struct Row {
        const wchar_t* text;
        ContourInfo::label_orientation orientation;
    };
    for (const Row& row :
         {Row{L"LowToHigh", ContourInfo::LOW_TO_HIGH}, Row{L"HighToLow", ContourInfo::HIGH_TO_LOW},
          Row{L"OptimumTextAngle", ContourInfo::OPTIMUM_TEXT_ANGLE},
          Row{L"lowtohigh", ContourInfo::OPTIMUM_TEXT_ANGLE}, Row{L"2", ContourInfo::OPTIMUM_TEXT_ANGLE},
          Row{L"", ContourInfo::OPTIMUM_TEXT_ANGLE}}) {
        ContourInfo before;
        before.SetLabelOrientation(ContourInfo::LOW_TO_HIGH);
        EXPECT_EQ(row.orientation,
                  ReadFrom(SectionOf({{L"LabelOrientation", row.text}}), before).GetLabelOrientation())
            << ::testing::PrintToString(std::wstring(row.text));
    }
}

TEST(ContourInfo, OrientationWithoutANameIsWrittenEmpty) {
    for (const int number : {7, 3, -1, 2147483647}) {
        ContourInfo info;
        info.SetLabelOrientation(static_cast<ContourInfo::label_orientation>(number));
        const Section section = Written(info);
        EXPECT_TRUE(section.HasKey(L"LabelOrientation"));
        EXPECT_EQ(L"", section[L"LabelOrientation"].GetValue());
        EXPECT_EQ(ContourInfo::OPTIMUM_TEXT_ANGLE, ReadFrom<ContourInfo>(section).GetLabelOrientation());
    }
}

TEST(ContourInfo, ReadIsFalseEvenWhenAllWasReadAndWriteIsTrue) {
    Section section;
    EXPECT_TRUE(ContourInfo().Write(section));
    ContourInfo info;
    EXPECT_FALSE(info.Read(section));
    EXPECT_FALSE(info.Read(Section()));
}

TEST(ContourInfo, EqualityIsTolerantInSpacingAndLength) {
    ContourInfo info, near;
    info.SetLabelSpacing(1.0f);
    near.SetLabelSpacing(std::nextafter(1.0f, 2.0f)); // a float's step is beyond the tolerance
    EXPECT_NE(info, near);
    near.SetLabelSpacing(1.0f);
    near.SetSuppressionLength(5e-10);
    EXPECT_EQ(info, near);
    info.SetLabelSpacing(1e-10f);
    near.SetLabelSpacing(2e-10f);
    EXPECT_EQ(info, near);
}

TEST(ContourInfo_Read, OlderSpacingWithWrongTextAndBesideAnEmptyNewerOne) {
    EXPECT_EQ(0.0f, ReadFrom<ContourInfo>(SectionOf({{L"LabelSpacing", L"x"}})).GetLabelSpacing());
    EXPECT_EQ(35.0f,
              ReadFrom<ContourInfo>(SectionOf({{L"LabelSpacing", L"35"}, {L"ContourLabelSpacing", L""}}))
                  .GetLabelSpacing());
}

TEST(ContourInfo_Write, CommentOfAKeyThatIsThereIsReplaced) {
    Section section(L"C");
    section[L"SmoothingWindow"].SetComments(L"mine");
    section[L"SmoothingPasses"].SetComments(L"mine");
    ContourInfo().Write(section);
    EXPECT_EQ(L"Values between 0 and 8", section[L"SmoothingWindow"].GetComments());
    EXPECT_EQ(L"mine", section[L"SmoothingPasses"].GetComments());
}
