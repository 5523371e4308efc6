#include "platform/rtf/TextSearch.h"

#include <gtest/gtest.h>

#include <string>

namespace larder {
namespace {

constexpr std::size_t kEnd = static_cast<std::size_t>(-1);
const std::string kText = "Cod and codfish, cod.\r\nCr\xe8me BR\xdbL\xc9 \x8a";

std::ptrdiff_t Find(const std::string& what, int options = 0, std::size_t from = 0,
                    std::size_t to = kEnd) {
    return FindInText(kText, what, from, to, options);
}

TEST(FindInText, FindsTheFirstPlace) {
    EXPECT_EQ(Find("cod"), 0);
    EXPECT_EQ(Find("cod", 0, 1), 8);
    EXPECT_EQ(Find("cod", 0, 9), 17);
    EXPECT_EQ(Find("cod", 0, 18), -1);
    EXPECT_EQ(Find("\r\n"), 21);
}

TEST(FindInText, ThePlaceLiesWithinTheRange) {
    EXPECT_EQ(Find("cod", 0, 1, 11), 8);
    EXPECT_EQ(Find("cod", 0, 1, 10), -1);
    EXPECT_EQ(Find("Cod", 0, 0, 3), 0);
    EXPECT_EQ(Find("cod", 0, 9, 3), -1);
    EXPECT_EQ(Find("cod", 0, kEnd), -1);
}

TEST(FindInText, MatchesCaseWhenAsked) {
    EXPECT_EQ(Find("cod", kFindMatchCase), 8);
    EXPECT_EQ(Find("COD", kFindMatchCase), -1);
    EXPECT_EQ(Find("COD"), 0);
}

TEST(FindInText, FoldsTheCaseOfAccentedLetters) {
    EXPECT_EQ(Find("br\xfbl\xe9"), 29);
    EXPECT_EQ(Find("CR\xc8ME"), 23);
    EXPECT_EQ(Find("\x9a"), 35);
    EXPECT_EQ(Find("brule"), -1);
}

TEST(FindInText, FindsWholeWords) {
    EXPECT_EQ(Find("cod", kFindWholeWord, 1), 17);
    EXPECT_EQ(Find("codfish", kFindWholeWord), 8);
    EXPECT_EQ(Find("cod", kFindWholeWord | kFindMatchCase), 17);
    EXPECT_EQ(Find("me", kFindWholeWord), -1);
    EXPECT_EQ(Find("fish", kFindWholeWord), -1);
}

TEST(FindInText, AWordEndsInTheTextNotAtTheEndOfTheRange) {
    EXPECT_EQ(Find("cod", kFindWholeWord, 8, 11), -1);
}

TEST(FindInText, NothingIsFoundNowhere) {
    EXPECT_EQ(Find(""), -1);
    EXPECT_EQ(FindInText("", "a", 0, kEnd, 0), -1);
}

TEST(SpanOf, RunsForwardOverTheCharactersOfTheSet) {
    const TextRange blanks = SpanOf("a \t\r\nb", 1, " \t\r\n", true, false);
    EXPECT_EQ(blanks.from, 1u);
    EXPECT_EQ(blanks.to, 5u);
}

TEST(SpanOf, RunsForwardToTheCharactersOfTheSet) {
    const TextRange line = SpanOf("title\r\nbody", 0, "\r\n\t", true, true);
    EXPECT_EQ(line.from, 0u);
    EXPECT_EQ(line.to, 5u);
}

TEST(SpanOf, RunsBackward) {
    const TextRange word = SpanOf("one two", 7, " ", false, true);
    EXPECT_EQ(word.from, 4u);
    EXPECT_EQ(word.to, 7u);
}

TEST(SpanOf, IsEmptyWhereNothingBelongs) {
    const TextRange none = SpanOf("abc", 99, " ", true, false);
    EXPECT_EQ(none.from, 3u);
    EXPECT_EQ(none.to, 3u);
}

}  // namespace
}  // namespace larder
