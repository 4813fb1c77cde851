// SPDX-License-Identifier: MIT
#include "apps/chartutil/help/Prose.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

Block Paragraph(const char* text) { return {Block::Kind::PARAGRAPH, "", text}; }
Block Item(const char* term, const char* text) { return {Block::Kind::ITEM, term, text}; }
Block Lines(const char* text) { return {Block::Kind::LINES, "", text}; }

} // namespace

TEST(Prose, JoinsTheLinesOfAParagraph) {
    EXPECT_THAT(ReadProse("One\ntwo.\n\n\nThree"), ElementsAre(Paragraph("One two."), Paragraph("Three")));
}

TEST(Prose, KeepsIndentedLinesAsTheyStand) {
    EXPECT_THAT(ReadProse("Examples:\n  a   b \\\n      c\n\n  d\nText"),
                ElementsAre(Paragraph("Examples:"), Lines("a   b \\\n    c"), Lines("d"), Paragraph("Text")));
}

TEST(Prose, ReadsItemsWithTheirTerms) {
    EXPECT_THAT(ReadProse("  a b :: what it is\n  c :: one :: two\n"),
                ElementsAre(Item("a b", "what it is"), Item("c", "one :: two")));
}

TEST(Prose, OfNothingIsNothing) {
    EXPECT_THAT(ReadProse(""), ElementsAre());
    EXPECT_THAT(ReadProse(" \n\n"), ElementsAre());
    EXPECT_EQ("", ProseText({}));
}

TEST(Prose, KnowsExamplesFromTheRest) {
    const ProseParts parts = WithoutExamples(
        ReadProse("One\n\nExamples:\n  a\n\n  b\n\nTwo:\n  c\n\nExample of it:\n  d\n\nExample\n  e"));
    EXPECT_THAT(parts.text, ElementsAre(Paragraph("One"), Paragraph("Two:"), Lines("c"), Paragraph("Example"),
                                        Lines("e")));
    EXPECT_THAT(parts.examples, ElementsAre(Lines("a"), Lines("b"), Lines("d")));
}

TEST(Prose, WrapsBetweenWordsAtEightyCharacters) {
    const std::string forty(40, 'x');
    const std::string ofUmlauts = "\xC3\xBC" + std::string(38, 'x'); // 39 characters in 40 bytes
    EXPECT_EQ(forty + "\n" + forty + "\n", Wrapped(forty + " " + forty));
    EXPECT_EQ(forty + " " + ofUmlauts + "\n", Wrapped(forty + " " + ofUmlauts));
    EXPECT_EQ(" " + forty + "\n " + ofUmlauts + "\n", Wrapped(forty + " " + ofUmlauts, 1));
    EXPECT_EQ("a b c\n", Wrapped("  a \n b   c "));
    EXPECT_EQ("", Wrapped(" "));
}

TEST(Prose, LeavesAWordWhole) {
    const std::string word(100, 'x');
    EXPECT_EQ("  a\n  " + word + "\n  b\n", Wrapped("a " + word + " b", 2));
}

TEST(Prose, BreaksAListThatFitsNoLineBehindAComma) {
    const std::string item(30, 'x');
    const std::string list = item + ',' + item + ',' + item;
    EXPECT_EQ("a " + item + ',' + item + ",\n" + item + " b\n", Wrapped("a " + list + " b"));
}

TEST(Prose, PutsLongTermsOnLinesOfTheirOwn) {
    EXPECT_EQ(10U, ItemColumn({"a", "abcdef", std::string(25, 'x')}));
    EXPECT_EQ("  abcdef  one\n", ItemText("abcdef", "one", 10));
    EXPECT_EQ("  abcdefg\n          one\n", ItemText("abcdefg", "one", 10));
    EXPECT_EQ("  a\n", ItemText("a", "", 10));
    EXPECT_EQ("  \xC3\xBC       one\n", ItemText("\xC3\xBC", "one", 10));
}

TEST(Prose, SetsBlankLinesAroundLists) {
    EXPECT_EQ("One\n\nList:\n  a   1\n  bc  2\n\nExamples:\n  x\n    y\n\nTwo\n",
              ProseText(ReadProse("One\n\nList:\n\n  a :: 1\n  bc :: 2\n\nExamples:\n  x\n    y\nTwo")));
}
