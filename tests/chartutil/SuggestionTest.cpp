// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Suggestion.h"

#include <gtest/gtest.h>

TEST(Suggestion, NamesTheNearestWithinAThirdOfTheLetters) {
    struct Row {
        const char* typed;
        std::vector<std::string> names;
        const char* nearest;
    };
    const Row rows[] = {
        {"setings", {"units", "settings", "style"}, "settings"}, // a letter is missing
        {"settingss", {"settings"}, "settings"},
        {"shwo", {"show", "set"}, "show"}, // an exchange is one step
        {"shaw", {"show"}, "show"},
        {"SCALE", {"scale"}, "scale"},
        {"Scalle", {"Scales", "Scale"}, "Scale"}, // one step is nearer than two
        {"get", {"set", "let"}, "set"},           // of equal ones the first
        {"abc", {"axy"}, ""},                     // two of three letters
        {"abcdef", {"abcdxy"}, "abcdxy"},         // two of six
        {"abcdef", {"abcxyz"}, ""},
        {"ab", {"ax", "a"}, ""}, // no third of two letters is a letter
        {"", {"a", ""}, ""},
        {"no-such-command", {"settings", "colors"}, ""},
        {"T\u00EFdes", {"Tides"}, "Tides"}, // letters, not bytes
        {"\u00C4nderung", {"\u00E4nderun"}, "\u00E4nderun"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        EXPECT_EQ(row.nearest, NearestName(row.typed, row.names));
    }
}

TEST(Suggestion, GivesUpWhatNobodyTypes) {
    EXPECT_EQ(std::string(200, 'a'), NearestName(std::string(199, 'a'), {std::string(200, 'a')}));
    EXPECT_EQ("", NearestName(std::string(201, 'a'), {std::string(200, 'a')}));
}

TEST(Suggestion, IsHalfASentence) {
    EXPECT_EQ("; did you mean [Tides]?", DidYouMean("Tdies", {"Tides"}, '[', ']'));
    EXPECT_EQ("", DidYouMean("Gauges", {"Tides"}, '[', ']'));
}
