// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/LabColor.h"

#include <gtest/gtest.h>

// Given by the formula's authors, among them pairs on both sides of each jump.
TEST(ColorDifference, HasTheValuesOfItsAuthors) {
    struct Row {
        LabColor a, b;
        double difference;
    };
    const Row rows[] = {Row{{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425},
                        Row{{50, 3.1571, -77.2803}, {50, 0, -82.7485}, 2.8615},
                        Row{{50, 2.8361, -74.02}, {50, 0, -82.7485}, 3.4412},
                        Row{{50, -1.3802, -84.2814}, {50, 0, -82.7485}, 1},
                        Row{{50, -1.1848, -84.8006}, {50, 0, -82.7485}, 1},
                        Row{{50, -0.9009, -85.5211}, {50, 0, -82.7485}, 1},
                        Row{{50, 0, 0}, {50, -1, 2}, 2.3669},
                        Row{{50, -1, 2}, {50, 0, 0}, 2.3669},
                        Row{{50, 2.49, -0.001}, {50, -2.49, 0.0009}, 7.1792},
                        Row{{50, 2.49, -0.001}, {50, -2.49, 0.001}, 7.1792},
                        Row{{50, 2.49, -0.001}, {50, -2.49, 0.0011}, 7.2195},
                        Row{{50, 2.49, -0.001}, {50, -2.49, 0.0012}, 7.2195},
                        Row{{50, -0.001, 2.49}, {50, 0.0009, -2.49}, 4.8045},
                        Row{{50, -0.001, 2.49}, {50, 0.001, -2.49}, 4.8045},
                        Row{{50, -0.001, 2.49}, {50, 0.0011, -2.49}, 4.7461},
                        Row{{50, 2.5, 0}, {50, 0, -2.5}, 4.3065},
                        Row{{50, 2.5, 0}, {73, 25, -18}, 27.1492},
                        Row{{50, 2.5, 0}, {61, -5, 29}, 22.8977},
                        Row{{50, 2.5, 0}, {56, -27, -3}, 31.903},
                        Row{{50, 2.5, 0}, {58, 24, 15}, 19.4535},
                        Row{{50, 2.5, 0}, {50, 3.1736, 0.5854}, 1},
                        Row{{50, 2.5, 0}, {50, 3.2972, 0}, 1},
                        Row{{50, 2.5, 0}, {50, 1.8634, 0.5757}, 1},
                        Row{{50, 2.5, 0}, {50, 3.2592, 0.335}, 1},
                        Row{{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644},
                        Row{{63.0109, -31.0961, -5.8663}, {62.8187, -29.7946, -4.0864}, 1.263},
                        Row{{61.2901, 3.7196, -5.3901}, {61.4292, 2.248, -4.962}, 1.8731},
                        Row{{35.0831, -44.1164, 3.7933}, {35.0232, -40.0716, 1.5901}, 1.8645},
                        Row{{22.7233, 20.0904, -46.694}, {23.0331, 14.973, -42.5619}, 2.0373},
                        Row{{36.4612, 47.858, 18.3852}, {36.2715, 50.5065, 21.2231}, 1.4146},
                        Row{{90.8027, -2.0831, 1.441}, {91.1528, -1.6435, 0.0447}, 1.4441},
                        Row{{90.9257, -0.5406, -0.9208}, {88.6381, -0.8985, -0.7239}, 1.5381},
                        Row{{6.7747, -0.2908, -2.4247}, {5.8714, -0.0985, -2.2286}, 0.6377},
                        Row{{2.0776, 0.0795, -1.135}, {0.9033, -0.0636, -0.5514}, 0.9082}};
    for (const Row& row : rows) {
        EXPECT_NEAR(row.difference, ColorDifference(row.a, row.b), 0.00005) << row.difference;
        EXPECT_NEAR(row.difference, ColorDifference(row.b, row.a), 0.00005) << row.difference;
    }
}

TEST(ColorDifference, IsNothingForEqualColoursAndHundredFromBlackToWhite) {
    for (int red = 0; red < 256; red += 15)
        for (int green = 0; green < 256; green += 15)
            for (int blue = 0; blue < 256; blue += 15) {
                const LabColor color(RGBColor(red, green, blue));
                ASSERT_EQ(0, ColorDifference(color, color)) << red << ' ' << green << ' ' << blue;
            }
    EXPECT_NEAR(100, ColorDifference(LabColor(RGBColor(0, 0, 0)), LabColor(RGBColor(255, 255, 255))), 1e-9);
}

TEST(ColorDifference, IsTheSameBothWaysAndNeverNegative) {
    for (int i = 0; i < 3000; ++i) {
        const LabColor a(RGBColor(i * 7919)), b(RGBColor(i * 104729 + 12345));
        const double difference = ColorDifference(a, b);
        ASSERT_GE(difference, 0) << i;
        ASSERT_NEAR(difference, ColorDifference(b, a), 1e-9) << i;
    }
}

TEST(LabColor, GreysHaveNoHue) {
    double darker = -1;
    for (int grey = 0; grey < 256; ++grey) {
        const LabColor color(RGBColor(grey, grey, grey));
        EXPECT_NEAR(0, color.greenRed, 1e-9) << grey;
        EXPECT_NEAR(0, color.blueYellow, 1e-9) << grey;
        EXPECT_GT(color.lightness, darker) << grey;
        darker = color.lightness;
    }
    EXPECT_NEAR(100, darker, 1e-9);
}

// By the definitions of sRGB and CIELAB, to the decimals that tables of them print.
TEST(LabColor, OfTheScreensOwnColours) {
    struct Row {
        RGBColor color;
        LabColor lab;
    };
    for (const Row& row :
         {Row{{255, 0, 0}, {53.24, 80.09, 67.20}}, Row{{0, 255, 0}, {87.73, -86.18, 83.18}},
          Row{{0, 0, 255}, {32.30, 79.19, -107.86}}, Row{{255, 255, 0}, {97.14, -21.55, 94.48}}}) {
        const LabColor lab(row.color);
        EXPECT_NEAR(row.lab.lightness, lab.lightness, 0.01);
        EXPECT_NEAR(row.lab.greenRed, lab.greenRed, 0.01);
        EXPECT_NEAR(row.lab.blueYellow, lab.blueYellow, 0.01);
    }
}
