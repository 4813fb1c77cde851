// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/scene/Degrees.h"

#include "VelmBase/NumberText.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

// The numbers of degrees, minutes and seconds that a reader takes from the text.
std::vector<double> PartsOf(const std::wstring& text) {
    std::vector<double> parts;
    std::wstring digits;
    for (const wchar_t c : text + L' ') {
        if ((c >= L'0' && c <= L'9') || c == L'.') {
            digits += c;
        } else if (!digits.empty()) {
            parts.push_back(NumberText::LeadingDecimal(digits));
            digits.clear();
        }
    }
    return parts;
}

double ValueOf(const std::wstring& text) {
    double value = 0, unit = 1;
    for (const double part : PartsOf(text)) {
        value += part / unit;
        unit *= 60;
    }
    return text.find_first_of(L"SW") == std::wstring::npos ? value : -value;
}

double UnitOf(const DegreeFormat& format) {
    const double parts = format.parts == DegreeFormat::DEGREES   ? 1
                         : format.parts == DegreeFormat::MINUTES ? 60
                                                                 : 3600;
    return 1 / parts / std::pow(10, format.decimals);
}

} // namespace

TEST(DegreeText, IsWrittenAsTheFormatSays) {
    struct Row {
        double degrees;
        bool isLatitude;
        DegreeFormat format;
        const wchar_t* text;
    };
    for (const Row& row : {
             Row{30.5, true, {}, L"30\u00B030\u2032N"},
             Row{-87.25, false, {}, L"87\u00B015\u2032W"},
             Row{-87.25, false, {DegreeFormat::MINUTES, 1, true, false}, L"W87\u00B015.0\u2032"},
             Row{5.05, false, {}, L"5\u00B003\u2032E"},
             Row{-5.05, true, {DegreeFormat::SECONDS, 0, true, true}, L"5\u00B003\u203200\u2033S"},
             Row{5.05, true, {DegreeFormat::SECONDS, 1, false, true}, L"5 03 00.0 N"},
             Row{5.05, true, {DegreeFormat::SECONDS, 0, false, false}, L"N 5 03 00"},
             Row{12.345, true, {DegreeFormat::DEGREES, 2, true, true}, L"12.35\u00B0N"}, // halves away from 0
             Row{29.99999, true, {}, L"30\u00B000\u2032N"},
             Row{59.0 / 60 + 59.96 / 3600,
                 true,
                 {DegreeFormat::SECONDS, 1, true, true},
                 L"1\u00B000\u203200.0\u2033N"},
             Row{0, true, {}, L"0\u00B000\u2032"},
             Row{-0.001, true, {}, L"0\u00B000\u2032"}, // no hemisphere that the text does not show
             Row{180, false, {}, L"180\u00B000\u2032"},
             Row{-180, false, {}, L"180\u00B000\u2032"},
             Row{190, false, {}, L"170\u00B000\u2032W"},
             Row{-272, false, {}, L"88\u00B000\u2032E"},
             Row{std::numeric_limits<double>::quiet_NaN(), false, {}, L""},
             Row{std::numeric_limits<double>::infinity(), true, {}, L""},
             Row{1e300, false, {}, L""},
         })
        EXPECT_EQ(row.text, DegreeText(row.degrees, row.isLatitude, row.format)) << row.degrees;
}

TEST(DegreeText, IsWithinHalfAUnitOfTheValueAndHasNever60) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> anywhere(-180, 180), near(-2e-3, 2e-3);
    for (int i = 0; i < 20'000; ++i) {
        // Half of them about a full minute, where rounding carries.
        const double degrees =
            i % 2 == 0 ? anywhere(random) : std::round(anywhere(random) * 60) / 60 + near(random);
        for (const DegreeFormat::Parts parts :
             {DegreeFormat::DEGREES, DegreeFormat::MINUTES, DegreeFormat::SECONDS}) {
            for (const int decimals : {0, 1, 3}) {
                const DegreeFormat format{parts, decimals, i % 3 != 0, i % 5 != 0};
                const std::wstring text = DegreeText(degrees, false, format);
                const double apart = std::remainder(ValueOf(text) - degrees, 360.0);
                ASSERT_LE(std::fabs(apart), UnitOf(format) * 0.5 + 1e-9) << degrees;
                const std::vector<double> shown = PartsOf(text);
                ASSERT_EQ(static_cast<std::size_t>(parts) + 1, shown.size());
                for (std::size_t part = 1; part < shown.size(); ++part) ASSERT_LT(shown[part], 60) << degrees;
            }
        }
    }
}

TEST(MinuteText, LeavesOutDegreesAndHemisphere) {
    EXPECT_EQ(L"25\u2032", MinuteText(30 + 25.0 / 60, true, {}));
    EXPECT_EQ(L"05\u203230\u2033", MinuteText(-(5.5 / 60), false, {DegreeFormat::SECONDS, 0, true, true}));
    EXPECT_EQ(L"0.5\u00B0N", MinuteText(0.5, true, {DegreeFormat::DEGREES, 1, true, true}));
}

TEST(Shortened, HasTheDecimalsThatTheValueNeeds) {
    const DegreeFormat format{DegreeFormat::MINUTES, 2, true, true};
    EXPECT_EQ(0, Shortened(30.5, format).decimals);
    EXPECT_EQ(1, Shortened(30 + 25.5 / 60, format).decimals);
    EXPECT_EQ(2, Shortened(30 + 25.25 / 60, format).decimals);
    EXPECT_EQ(2, Shortened(1.0 / 7, format).decimals);
    EXPECT_EQ(2, Shortened(std::numeric_limits<double>::quiet_NaN(), format).decimals);
}

TEST(IsWrittenExactly, IsFalseWhereTheTextIsRounded) {
    EXPECT_TRUE(IsWrittenExactly(30 + 25.0 / 60, {}));
    EXPECT_FALSE(IsWrittenExactly(30 + 25.5 / 60, {}));
    EXPECT_TRUE(IsWrittenExactly(30 + 25.5 / 60, {DegreeFormat::SECONDS, 0, true, true}));
    EXPECT_TRUE(IsWrittenExactly(-87 - 5 * 0.083333333333, {})); // as files have a twelfth of a degree
    EXPECT_FALSE(IsWrittenExactly(std::numeric_limits<double>::quiet_NaN(), {}));
}

TEST(DegreeFormat, IsThatOfTheRecord) {
    GeoGridInfo info;
    info.LatLonDecimals(1000);
    EXPECT_EQ(9, DegreeFormat::Of(info).decimals);
    info.LatLonDecimals(-4);
    EXPECT_EQ(0, DegreeFormat::Of(info).decimals);
    for (const auto& [style, parts] :
         {std::pair(0, DegreeFormat::MINUTES), std::pair(1, DegreeFormat::SECONDS),
          std::pair(2, DegreeFormat::DEGREES), std::pair(-1, DegreeFormat::MINUTES),
          std::pair(99, DegreeFormat::MINUTES)}) {
        info.LatLonStyle(style);
        EXPECT_EQ(parts, DegreeFormat::Of(info).parts) << style;
    }
    info.TrailingHemisphereIndicator(true);
    info.DegMinSecSymbols(true);
    EXPECT_TRUE(DegreeFormat::Of(info).isHemisphereLast);
    EXPECT_TRUE(DegreeFormat::Of(info).hasSymbols);
}
