#include "lists/YStrings.h"

#include <gtest/gtest.h>

#include "platform/Failure.h"

namespace larder {
namespace {

class YStringsTest : public ::testing::Test {
  protected:
    YStrings YS;
    std::int32_t start = 1;
};

// GetToken

TEST_F(YStringsTest, AnEmptyTextHasNoToken) {
    EXPECT_EQ(YS.GetToken("", start, " "), "");
    EXPECT_EQ(start, 1) << "stays where it was";
}

TEST_F(YStringsTest, ATextOfDelimitersOnlyGivesAnEmptyTokenWithStartBehindTheEnd) {
    EXPECT_EQ(YS.GetToken("   ", start, " "), "");
    EXPECT_EQ(start, 4);
}

TEST_F(YStringsTest, ANumberListGivesItsNumbersAndThenAnEmptyText) {
    const std::string list = " 4 5 ";
    EXPECT_EQ(YS.GetToken(list, start, " "), "4");
    EXPECT_EQ(start, 4);
    EXPECT_EQ(YS.GetToken(list, start, " "), "5");
    EXPECT_EQ(start, 6);
    EXPECT_EQ(YS.GetToken(list, start, " "), "");
    EXPECT_EQ(start, 6);
}

TEST_F(YStringsTest, RunsOfDelimitersCountAsOneAndTheEndClosesTheLastToken) {
    const std::string list = ",,a,,,b";
    EXPECT_EQ(YS.GetToken(list, start, ","), "a");
    EXPECT_EQ(YS.GetToken(list, start, ","), "b");
    EXPECT_EQ(start, 8);
}

TEST_F(YStringsTest, ADelimiterMayBeLongerThanOneCharacter) {
    const std::string list = "::a:::b";
    EXPECT_EQ(YS.GetToken(list, start, "::"), "a");
    EXPECT_EQ(start, 6);
    EXPECT_EQ(YS.GetToken(list, start, "::"), ":b");
}

TEST_F(YStringsTest, TokensAreComparedByteByByte) {
    EXPECT_EQ(YS.GetToken("aXbxc", start, "x"), "aXb");
}

TEST_F(YStringsTest, AStartOutsideTheTextGivesNothingAndStays) {
    start = -3;
    EXPECT_EQ(YS.GetToken("a b", start, " "), "");
    EXPECT_EQ(start, -3);
    start = 9;
    EXPECT_EQ(YS.GetToken("a b", start, " "), "");
    EXPECT_EQ(start, 9);
}

TEST_F(YStringsTest, AStartOfNoughtGoesOnWhereTheLastCallEnded) {
    for (const char* expected : {"a", "b", "c", "", ""}) {
        start = 0;
        EXPECT_EQ(YS.GetToken("a b c", start, " "), expected);
    }
}

TEST_F(YStringsTest, AfterAWalkAStartOfNoughtGivesNothingOnTheSameTextForEver) {
    while (!YS.GetToken(" 4 5 ", start, " ").empty()) {
    }
    for (int i = 0; i < 3; ++i) {
        start = 0;
        EXPECT_EQ(YS.GetToken(" 4 5 ", start, " "), "");
    }
    start = 0;
    EXPECT_EQ(YS.GetToken(" 6 7 ", start, " "), "6") << "another text starts at 1";
}

TEST_F(YStringsTest, TheTextIsRememberedEvenWhenNoTokenIsFound) {
    YS.GetToken("a b c", start, " ");
    start = 99;
    YS.GetToken("x y", start, " ");
    start = 0;
    EXPECT_EQ(YS.GetToken("x y", start, " "), "y") << "the position of the walk before is kept";
}

TEST_F(YStringsTest, TokenFromWalksAsGetTokenDoes) {
    for (const std::string text : {"", " ", " 4 5 ", "4  5", "   4", "45", " 4 "}) {
        std::int32_t other = 1;
        start = 1;
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(YStrings::TokenFrom(text, other, " "), YS.GetToken(text, start, " ")) << text;
            EXPECT_EQ(other, start) << text;
        }
    }
}

// GetTokenAfter

TEST_F(YStringsTest, GetTokenAfterReadsTheTokenBehindTheMarkerAndThenTheFollowing) {
    const std::string text = "x SIZE 10 20 30";
    EXPECT_EQ(YS.GetTokenAfter(text, "SIZE", " ", true), "10");
    EXPECT_EQ(YS.GetTokenAfter(text, "SIZE", " ", true), "20");
    EXPECT_EQ(YS.GetTokenAfter(text, "SIZE", " ", false), "10");
    EXPECT_EQ(YS.GetTokenAfter(text, "x", " ", true), "SIZE") << "another marker begins anew";
}

TEST_F(YStringsTest, GetTokenAfterGoesOnInTheSameTextWithTheSameDelimiterOnly) {
    const std::string text = "SIZE 10 20 30";
    EXPECT_EQ(YS.GetTokenAfter(text, "SIZE", " ", true), "10");
    EXPECT_EQ(YS.GetTokenAfter("SIZE 11 21 31", "SIZE", " ", true), "11") << "another text";
    EXPECT_EQ(YS.GetTokenAfter(text, "SIZE", " ", true), "10") << "and back";
    EXPECT_EQ(YS.GetTokenAfter(text, "SIZE", "2", true), " 10 ") << "another delimiter";
    EXPECT_EQ(YS.GetTokenAfter(text, "SIZE", "2", true), "0 30");
}

TEST_F(YStringsTest, GetTokenAfterAnUnknownMarkerIsTheText0) {
    EXPECT_EQ(YS.GetTokenAfter("a b c", "SIZE", " ", false), "0");
}

TEST_F(YStringsTest, AFailedGetTokenAfterKeepsTheTextsButMovesThePosition) {
    const std::string text = "SIZE 10 20 30";
    EXPECT_EQ(YS.GetTokenAfter(text, "SIZE", " ", false), "10");
    EXPECT_EQ(YS.GetTokenAfter(text, "NONE5678901", " ", false), "0");
    EXPECT_EQ(YS.GetTokenAfter(text, "SIZE", " ", true), "30")
        << "goes on at the length of the unknown marker";
}

TEST_F(YStringsTest, GetTokenAfterAtTheEndOfTheTextIsEmpty) {
    EXPECT_EQ(YS.GetTokenAfter("a SIZE", "SIZE", " ", false), "");
}

// DelTokens

TEST_F(YStringsTest, DelTokensDeletesThroughTheDelimiterBehindTheTokens) {
    std::string text = "a b c d e";
    EXPECT_EQ(YS.DelTokens(text, "b", 1, " "), "a d e");
    EXPECT_EQ(text, "a d e");
    EXPECT_EQ(YS.DelTokens(text, "d", 0, " "), "a e");
}

TEST_F(YStringsTest, DelTokensCountsADelimiterThatBeginsTheMarker) {
    std::string text = "a b c d e";
    EXPECT_EQ(YS.DelTokens(text, " b", 1, " "), "ac d e");
}

TEST_F(YStringsTest, DelTokensWithoutTheMarkerReturnsNothingAndLeavesTheText) {
    std::string text = "a b";
    EXPECT_EQ(YS.DelTokens(text, "z", 1, " "), "");
    EXPECT_EQ(text, "a b");
}

TEST_F(YStringsTest, DelTokensLeavesTheTailOfALongDelimiter) {
    std::string text = "a--b--c--d";
    EXPECT_EQ(YS.DelTokens(text, "b", 0, "--"), "a---c--d");
}

TEST_F(YStringsTest, DelTokensFailsWhenDelimitersAreLackingAndChangesNothing) {
    std::string text = "a b c";
    EXPECT_EQ(Ignoring([&] { YS.DelTokens(text, "b", 1, " "); }), failure::InvalidArgument);
    EXPECT_EQ(text, "a b c");
}

TEST_F(YStringsTest, DelTokensFailsOnPositionsBeyondSixteenBits) {
    std::string text(32768, 'x');
    text[0] = 'b';
    EXPECT_EQ(Ignoring([&] { YS.DelTokens(text, "b", 1, " "); }), failure::Overflow);
    text = "b c " + std::string(32763, 'x');
    EXPECT_EQ(YS.DelTokens(text, "b", 1, " ").size(), 32763u) << "32767 positions still fit";
}

// DelStrFromTo

TEST_F(YStringsTest, DelStrFromToKeepsTheFirstCharacterOfTheOneAndTheRestOfTheOther) {
    std::string text = "ab<<cut>>cd";
    YS.DelStrFromTo(text, "<<", ">>");
    EXPECT_EQ(text, "ab<>cd");
}

TEST_F(YStringsTest, DelStrFromToWithoutTheFirstKeepsNothingInFront) {
    std::string text = "ab>cd";
    YS.DelStrFromTo(text, "<", ">");
    EXPECT_EQ(text, "cd");
}

TEST_F(YStringsTest, DelStrFromToWithoutTheSecondLetsTheWholeTextFollow) {
    std::string text = "ab<cd";
    YS.DelStrFromTo(text, "<", ">");
    EXPECT_EQ(text, "ab<ab<cd");
    text = "ab";
    YS.DelStrFromTo(text, "<", ">");
    EXPECT_EQ(text, "ab");
    text.clear();
    YS.DelStrFromTo(text, "<", ">");
    EXPECT_EQ(text, "");
}

// ReplaceStr

TEST_F(YStringsTest, ReplaceStrReplacesEveryOccurrenceInTheCallersTextToo) {
    std::string text = "say \"cod\" now";
    EXPECT_EQ(YS.ReplaceStr(text, "\"", ""), "say cod now");
    EXPECT_EQ(text, "say cod now");
    EXPECT_EQ(YS.ReplaceStr(text, "COD", "x"), "say cod now") << "case matters";
}

TEST_F(YStringsTest, ReplaceStrCatchesAnOverlap) {
    std::string text = " 5 5 ";
    EXPECT_EQ(YS.ReplaceStr(text, " 5 ", " "), " ");
    text = "aabb";
    EXPECT_EQ(YS.ReplaceStr(text, "ab", ""), "ab") << "it does not look back";
}

// StrAnd

TEST_F(YStringsTest, StrAndKeepsBothDelimitersOfEachHit) {
    std::string a = " 1 2 3 ";
    std::string b = " 2 3 4 ";
    EXPECT_EQ(YS.StrAnd(a, b, " "), " 2  3 ");
    EXPECT_EQ(a, " 1 2 3 ");
    EXPECT_EQ(b, "  2 3 4  ");
}

TEST_F(YStringsTest, StrAndSwapsTheCallersTextsWhenTheSecondIsShorter) {
    std::string a = " 1 2 3 ";
    std::string b = "3 1";
    EXPECT_EQ(YS.StrAnd(a, b, " "), " 3  1 ") << "the order is that of the shorter text";
    EXPECT_EQ(a, "3 1");
    EXPECT_EQ(b, "  1 2 3  ");
}

TEST_F(YStringsTest, APartOfALongerTokenIsNoHitOfStrAnd) {
    std::string a = "5";
    std::string b = " 15 55 ";
    EXPECT_EQ(YS.StrAnd(a, b, " "), "");
}

TEST_F(YStringsTest, StrAndOfEmptyListsIsEmpty) {
    std::string a;
    std::string b;
    EXPECT_EQ(YS.StrAnd(a, b, " "), "");
    EXPECT_EQ(b, "  ");
}

TEST_F(YStringsTest, TheResultOfStrAndReadsAsAListOfTokens) {
    std::string a = " 1 2 3 ";
    std::string b = " 2 3 4 ";
    const std::string both = YS.StrAnd(a, b, " ");
    EXPECT_EQ(YS.GetToken(both, start, " "), "2");
    EXPECT_EQ(YS.GetToken(both, start, " "), "3");
    EXPECT_EQ(YS.GetToken(both, start, " "), "");
}

// CountTokens

TEST_F(YStringsTest, CountTokensCountsANewTextFromItsBeginning) {
    EXPECT_EQ(YS.CountTokens(" 4 5 6 ", " "), 3);
    EXPECT_EQ(YS.CountTokens("a,b", ","), 2);
    EXPECT_EQ(YS.CountTokens("", " "), 0);
}

TEST_F(YStringsTest, CountTokensIsNoughtTheSecondTimeAndRightAfterAWalk) {
    EXPECT_EQ(YS.CountTokens(" 4 5 6 ", " "), 3);
    EXPECT_EQ(YS.CountTokens(" 4 5 6 ", " "), 0);
    while (!YS.GetToken("a b", start, " ").empty()) {
    }
    EXPECT_EQ(YS.CountTokens("a b", " "), 0);
}

TEST_F(YStringsTest, CountTokensGoesOnInTheMiddleOfAWalk) {
    YS.GetToken("a b c", start, " ");
    EXPECT_EQ(YS.CountTokens("a b c", " "), 2);
}

// TrimSpaces

TEST_F(YStringsTest, TrimSpacesTakesBlanksOfBothEndsAlone) {
    const std::string text = "  a b \t ";
    EXPECT_EQ(YS.TrimSpaces(text), "a b \t");
    EXPECT_EQ(text, "  a b \t ");
    EXPECT_EQ(YS.TrimSpaces(""), "");
    EXPECT_EQ(YS.TrimSpaces("    "), "");
}

}  // namespace
}  // namespace larder
