// SPDX-License-Identifier: MIT
#include "UtilityDLL/keywords/detail/TextIndex.h"

#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

namespace {

// An owner of texts, as the keyword classes are.
struct Owner {
    std::vector<std::wstring> texts;
    TextIndex index;

    std::uint32_t Find(std::wstring_view text) const {
        return index.Find(text, [this](std::uint32_t i) -> std::wstring_view { return texts[i]; });
    }
    void Add(const std::wstring& text) {
        index.MakeRoomForOne();
        texts.push_back(text);
        index.Add(text, static_cast<std::uint32_t>(texts.size() - 1));
    }
};

TEST(TextIndex, FindsEveryTextAndNothingElse) {
    Owner owner;
    EXPECT_EQ(TextIndex::kNone, owner.Find(L""));
    constexpr std::uint32_t kTexts = 100000;
    for (std::uint32_t i = 0; i < kTexts; ++i) owner.Add(std::wstring(i % 7, L'\xE9') + std::to_wstring(i));
    for (std::uint32_t i = 0; i < kTexts; ++i) {
        ASSERT_EQ(i, owner.Find(owner.texts[i]));
        ASSERT_EQ(TextIndex::kNone, owner.Find(owner.texts[i] + L"x"));
    }
}

TEST(TextIndex, TellsTextsApartThatDifferInLengthCaseOrNulOnly) {
    Owner owner;
    const std::wstring texts[] = {L"",
                                  std::wstring(1, L'\0'),
                                  std::wstring(2, L'\0'),
                                  std::wstring(3, L'\0'),
                                  L"a",
                                  L"A",
                                  L"aa",
                                  L"aaa",
                                  L"aaaa",
                                  L"aaaaa"};
    for (const std::wstring& text : texts) owner.Add(text);
    for (std::uint32_t i = 0; i < std::size(texts); ++i) EXPECT_EQ(i, owner.Find(texts[i])) << i;
}

TEST(TextIndex, ClearForgetsEverything) {
    Owner owner;
    for (int i = 0; i < 100; ++i) owner.Add(std::to_wstring(i));
    owner.index.Clear();
    EXPECT_EQ(TextIndex::kNone, owner.Find(L"7"));
    owner.index.MakeRoomForOne();
    owner.index.Add(L"7", 7);
    EXPECT_EQ(7u, owner.Find(L"7"));
}

TEST(TextIndex, AMovedFromIndexCanBeUsedAgain) {
    Owner owner;
    for (int i = 0; i < 100; ++i) owner.Add(std::to_wstring(i));
    const TextIndex taken = std::move(owner.index);
    EXPECT_EQ(TextIndex::kNone, owner.Find(L"7")); // NOLINT(bugprone-use-after-move): that is the point
    for (std::uint32_t i = 0; i < 100; ++i) {
        owner.index.MakeRoomForOne();
        owner.index.Add(owner.texts[i], i);
    }
    for (std::uint32_t i = 0; i < 100; ++i) EXPECT_EQ(i, owner.Find(owner.texts[i]));
}

} // namespace
