// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "apps/chartutil/drawing/PictureFile.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/UserText.h"

#include <optional>
#include <string>
#include <vector>

// The commands that measure texts, each with its options.

/// A text style as it is given: a one-line form, and single fields that go over it.
struct StyleOptions {
    UserText line;
    std::optional<UserText> font;
    std::string size;
    bool isBold = false, isItalic = false, isUnderlined = false;
    std::string rotation, justification;
};

struct MeasureText : StyleOptions {
    UserText text; // "-" for standard input
    std::string width;
    bool isMultiLine = false;
    PictureTarget picture;
    bool json = false;

    bool IsLong() const { return picture.IsAsked() || text.Utf8() == "-" || text.Utf8().size() > 100'000; }
};
void Run(const MeasureText& options);

struct MeasureSounding : StyleOptions {
    std::vector<std::string> values;
    std::optional<int> precision;
    std::string presentation, placement;
    bool hasNoDecimalZeros = false, isSignInverted = false, isDryingUnderlined = false;
    bool isEach = false; // every presentation and placement
    PictureTarget picture;
    bool json = false;

    bool IsLong() const { return picture.IsAsked(); }
};
void Run(const MeasureSounding& options);

struct DrawJustifications : StyleOptions {
    PictureTarget picture;
    std::vector<UserText> samples; // as FACE=TEXT
    std::string rotations = "0,30,90,200";

    bool IsLong() const { return true; }
};
void Run(const DrawJustifications& options);
