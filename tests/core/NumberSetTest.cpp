#include "lists/NumberSet.h"

#include <gtest/gtest.h>

#include <random>

namespace larder {
namespace {

NumberSet Of(const std::string& numbers) {
    NumberSet set;
    set.Assign(numbers);
    return set;
}

TEST(NumberSetTest, HoldsWhatHasABlankOnBothSides) {
    const NumberSet set = Of(" 4 15 6 ");
    EXPECT_TRUE(set.Holds("4"));
    EXPECT_TRUE(set.Holds("15"));
    EXPECT_TRUE(set.Holds("6"));
    EXPECT_FALSE(set.Holds("5"));
    EXPECT_FALSE(set.Holds("1"));
    EXPECT_FALSE(Of("4 15 6").Holds("4"));
    EXPECT_TRUE(Of("4 15 6").Holds("15"));
    EXPECT_FALSE(Of("4 15 6").Holds("6"));
}

TEST(NumberSetTest, AnEmptyStringHoldsNothing) {
    EXPECT_FALSE(NumberSet().Holds("1"));
    EXPECT_FALSE(Of(" ").Holds("1"));
    EXPECT_FALSE(Of(" ").Holds(""));
}

TEST(NumberSetTest, ANumberWrittenInAnotherWayIsFoundOnlyWrittenSo) {
    const NumberSet set = Of(" 7 007 -3 99999999999 x ");
    EXPECT_TRUE(set.Holds("007"));
    EXPECT_FALSE(set.Holds("07"));
    EXPECT_TRUE(set.Holds("-3"));
    EXPECT_TRUE(set.Holds("99999999999"));
    EXPECT_TRUE(set.Holds("x"));
    EXPECT_TRUE(set.Holds("7 007"));
    EXPECT_FALSE(Of(" 007 ").Holds("7"));
}

TEST(NumberSetTest, AnotherStringIsAnotherSet) {
    NumberSet set = Of(" 1 2 ");
    EXPECT_TRUE(set.Holds("2"));
    set.Assign(" 3 ");
    EXPECT_FALSE(set.Holds("2"));
    EXPECT_TRUE(set.Holds("3"));
    EXPECT_EQ(set.Text(), " 3 ");
}

TEST(NumberSetTest, AnswersAsASearchInTheStringDoes) {
    std::mt19937 random(20);
    const std::string letters = "0123 9-x";
    for (int round = 0; round < 300; ++round) {
        std::string numbers;
        for (int i = 0; i < 40; ++i)
            numbers += letters[random() % letters.size()];
        const NumberSet set = Of(numbers);
        for (int number = 0; number < 200; ++number) {
            const std::string text = std::to_string(number);
            EXPECT_EQ(set.Holds(text), numbers.find(" " + text + " ") != std::string::npos)
                << '"' << numbers << "\" " << text;
        }
    }
}

}  // namespace
}  // namespace larder
