// SPDX-License-Identifier: MIT
// Faces of font files: what they take from others, and that damage of every kind does no harm.

#include "Framework/device/freetype/module/private/Installed.h"
#include "Framework/device/freetype/module/private/OutlineFace.h"
#include "tests/Framework/posix/DeviceTestFont.h"
#include "tests/support/TestFiles.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <utility>
#include <vector>

namespace {

// All kinds of text that a face can be asked for. True when it was a face.
bool IsUsed(const std::string& bytes, int index = 0, const std::string& variations = {}) {
    const auto face = OutlineFace::Open(bytes, {{}, index, variations});
    if (!face) return false;
    const OUTLINETEXTMETRICW& metrics = face->Metrics();
    EXPECT_GT(metrics.otmEMSquare, 0u);
    EXPECT_GT(metrics.otmTextMetrics.tmHeight, 0);
    EXPECT_EQ(metrics.otmTextMetrics.tmHeight,
              metrics.otmTextMetrics.tmAscent + metrics.otmTextMetrics.tmDescent);
    for (const wchar_t* const text : {L"ABC xyz \n\u00E9\u03A9\u6D77\U0001F6A2", L"e\u0301\u200D\u20DD",
                                      L"\u0644\u0627 \u0938\u094D\u0924\u0947 \u0E01\u0E33"})
        EXPECT_TRUE(std::isfinite(face->Advance(text).units) && face->Advance(text).units >= 0);
    return true;
}

std::string VariableFont() {
    TestFont font;
    font.boldAdvance = 700;
    return font.Bytes();
}

using FacePointer = std::shared_ptr<const OutlineFace>;

/// Each character comes from the first face that has it.
class Helpers final : public HelpingFaces {
public:
    Helpers(std::vector<std::pair<int, FacePointer>> faces, int* calls)
        : m_faces(std::move(faces)), m_calls(calls) {}
    std::optional<FacePointer> FaceWith(char32_t character) const override {
        if (m_calls) ++*m_calls;
        for (const auto& [first, face] : m_faces)
            if (character >= char32_t(first) && character < char32_t(first) + 26) return face;
        return nullptr;
    }

private:
    std::vector<std::pair<int, FacePointer>> m_faces;
    int* m_calls;
};

constexpr int kOwn = 500; // the advance of the face that is asked

struct Letters {
    int first;
    int advance;
    int firstSaid = first; ///< what is known of the face may be wrong
};

/// A face with 26 characters, which others help out; how often it asks for them is counted in `calls`.
FacePointer Helped(int first, const std::vector<Letters>& others, int* calls = nullptr) {
    const auto bytes = [](const Letters& letters) {
        TestFont font;
        font.first = letters.first;
        font.hasDottedCircle = true;
        font.advance = letters.advance;
        return font.Bytes();
    };
    std::vector<std::pair<int, FacePointer>> faces;
    faces.reserve(others.size());
    for (const Letters& each : others) faces.emplace_back(each.firstSaid, OutlineFace::Open(bytes(each), {}));
    return OutlineFace::Open(bytes({first, kOwn}), {}, std::make_unique<Helpers>(std::move(faces), calls));
}

} // namespace

TEST(DeviceFace, MarkThatTheFaceLacksLeavesItsLetterTheWidthThatItHas) {
    const FacePointer face = Helped('A', {{0x300, 300}, {'A', 7}});
    for (const wchar_t* const text : {L"Q", L"Q\u0301", L"Q\u0301\u0302\u0303", L"Q\u0301\u200D"}) {
        EXPECT_EQ(kOwn, face->Advance(text).units);
        EXPECT_EQ(1u, face->Advance(text).characters);
    }
    EXPECT_EQ(3 * kOwn, face->Advance(L"AQ\u0301B").units);
    EXPECT_EQ(2 * kOwn, face->Advance(L"Q\u0301Q\u0302").units);
}

TEST(DeviceFace, LettersThatJoinComeFromAnotherFaceOnlyWhereTheFaceLacksThem) {
    // Alef, beh and their like in the one, feh, qaf and theirs in the other.
    for (const std::vector<Letters>& others :
         {std::vector<Letters>{{0x641, 300}}, std::vector<Letters>{{0x641, 300}, {0x627, 7}}}) {
        const FacePointer face = Helped(0x627, others);
        EXPECT_EQ(2 * kOwn, face->Advance(L"\u0627\u0628").units);
        EXPECT_EQ(300, face->Advance(L"\u0642").units);
        EXPECT_EQ(2 * kOwn + 300, face->Advance(L"\u0627\u0628\u0642").units);
        EXPECT_EQ(2 * kOwn + 300, face->Advance(L"\u0627\u0642\u0628").units);
        EXPECT_EQ(kOwn + 2 * 300, face->Advance(L"\u0642\u0628\u0641").units);
        EXPECT_EQ(3u, face->Advance(L"\u0642\u0628\u0641").characters);
    }
}

TEST(DeviceFace, VowelSignOfAnotherFaceGetsNoDottedCircle) {
    EXPECT_EQ(2 * kOwn, Helped(0x93A, {})->Advance(L"\u0940").units); // which it has where there is no letter
    EXPECT_EQ(kOwn + 300, Helped(0x915, {{0x93A, 300}})->Advance(L"\u0915\u0940").units);
}

TEST(DeviceFace, WhatOneOtherFaceLacksComesFromTheNext) {
    const FacePointer face = Helped('A', {{0x627, 300}, {0x641, 200}});
    EXPECT_EQ(300 + 200 + 300, face->Advance(L"\u0627\u0642\u0628").units);
    EXPECT_EQ(kOwn + 200 + 300 + 200, face->Advance(L"Q\u0641\u0627\u0642").units);
}

TEST(DeviceFace, CharacterThatNoFaceHasIsTheSignOfTheFaceItself) {
    const FacePointer face = Helped('A', {{0x627, 300}});
    EXPECT_EQ(kOwn, face->Advance(L"\u06CC").units);
    EXPECT_EQ(300 + kOwn + 300, face->Advance(L"\u0627\u06CC\u0628").units);
    EXPECT_EQ(2 * kOwn + 300, face->Advance(L"\u06CC\u06CC\u0628").units);
    EXPECT_EQ(kOwn, Helped('A', {{0x1, 300}})->Advance(L"\u200D\n").units); // controls are looked for nowhere
    // A mark of the face itself, on a letter that another has.
    EXPECT_EQ(300, Helped(0x300, {{0x627, 300}})->Advance(L"\u0627\u0301").units);
}

TEST(DeviceFace, FaceThatLacksWhatItIsSaidToHaveLeavesTheSignForThatAlone) {
    EXPECT_EQ(kOwn, Helped('A', {{'A', 300, 0x627}})->Advance(L"\u0628").units);
    EXPECT_EQ(kOwn + 200, Helped('A', {{'A', 300, 0x627}, {0x641, 200}})->Advance(L"\u0628\u0642").units);
}

TEST(DeviceFace, TextThatGoesFromFaceToFaceAsksNoMoreOftenThanItIsLong) {
    int calls = 0;
    const FacePointer face = Helped('A', {{0x627, 300}, {0x641, 200}}, &calls);
    const auto callsFor = [&](int length) {
        std::wstring text;
        for (int i = 0; i < length; ++i) text += i % 2 == 0 ? L"\u0628\u200D" : L"\u0642\u200D";
        calls = 0;
        const double units = face->Advance(text).units;
        EXPECT_GT(units, length * 200);
        EXPECT_LT(units, length * kOwn);
        return calls;
    };
    EXPECT_EQ(300 + 200 + 300, face->Advance(L"\u0628\u200D\u0642\u200D\u0628\u200D").units);
    const int few = callsFor(20'000);
    EXPECT_GT(few, 0);
    EXPECT_LE(callsFor(200'000), 10 * few);
    EXPECT_LE(few, 3 * 20'000);
}

TEST(DeviceFace, TextIsNotNarrowerThanNothingWhateverTheFontSays) {
    for (const int difference : {200, -200, -32768}) {
        TestFont font;
        font.first = 0x627;
        font.shapedDifference = difference;
        const auto face = OutlineFace::Open(font.Bytes(), {});
        ASSERT_NE(nullptr, face);
        EXPECT_EQ(std::max(kOwn + difference, 0), face->Advance(L"\u0628").units);
        EXPECT_EQ(std::max(2 * (kOwn + difference), 0), face->Advance(L"\u0628\u0627").units);
        EXPECT_EQ(std::max(2 * kOwn + difference, 0), face->Advance(L"!\u0628").units);
    }
}

TEST(DeviceFace, WholeFileIsAFace) {
    EXPECT_TRUE(IsUsed(TestFont().Bytes()));
    EXPECT_TRUE(IsUsed(VariableFont(), 0, "wght=550"));
    EXPECT_TRUE(IsUsed(TestFont::Collection({}, {}), 1));
    EXPECT_FALSE(IsUsed({}));
    EXPECT_FALSE(IsUsed("no font"));
}

TEST(DeviceFace, OtherFacesAndVariationsThanTheFileHasDoNoHarm) {
    for (const int index : {-1, 1, 0x10000, 0x30000, 0x7FFFFFFF, -2147483647 - 1})
        IsUsed(VariableFont(), index);
    for (const char* const variations :
         {"wght=1e999", "wght=nan", "wght=", "=", ",", "wght", "wght=-1e9,wdth=7"})
        EXPECT_TRUE(IsUsed(VariableFont(), 0, variations)) << variations;
}

TEST(DeviceFace, VariationsSetTheWidths) {
    const auto width = [](const char* variations) {
        return OutlineFace::Open(VariableFont(), {{}, 0, variations})->Advance(L"A").units;
    };
    EXPECT_EQ(500, width(""));
    EXPECT_EQ(600, width("wght=550"));
    EXPECT_EQ(700, width("wdth=3,wght=700"));
    EXPECT_EQ(700, width("wght=9000")); // beyond its end
}

TEST(DeviceFace, FileCutAtAnyLengthDoesNoHarm) {
    for (const std::string& whole : {VariableFont(), TestFont::Collection({}, {})})
        for (std::size_t length = 0; length < whole.size(); ++length) IsUsed(whole.substr(0, length));
}

TEST(DeviceFace, FileWithChangedBytesDoesNoHarm) {
    const std::string whole = VariableFont();
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string damaged = whole;
        for (const char value : {'\x00', '\x7F', '\x80', '\xFF'}) {
            damaged[i] = value;
            IsUsed(damaged);
        }
    }
}

TEST(DeviceFace, InstalledFontThatIsDamagedDoesNoHarm) {
    const std::string whole = ReadBytes(FromUtf8(FindInstalled(L"Liberation Sans", false, false).file.path));
    ASSERT_FALSE(whole.empty());
    EXPECT_TRUE(IsUsed(whole));
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        IsUsed(whole.substr(0, random() % whole.size()));
        std::string damaged = whole;
        // Most of the tables that are read are near the beginning or hold few bytes.
        for (int n = 0; n < 20; ++n)
            damaged[random() % (n % 2 == 0 ? 500 : whole.size())] ^= static_cast<char>(random());
        IsUsed(damaged);
    }
}
