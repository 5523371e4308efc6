#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "VirtualListFixture.h"
#include "platform/Failure.h"
#include "support/Seed.h"

namespace larder {
namespace {

using VirtualListSearch = test::VirtualListTest;

TEST_F(VirtualListSearch, BinarySearchGivesThePlaceOrMinusThePlaceToInsertAt) {
    Fill(" 4 5 6 7 9 10 12 ");
    EXPECT_EQ(list.BinarySearch(8, 1, 7), -5);
    EXPECT_EQ(list.BinarySearch(13, 1, 7), -8);
    EXPECT_EQ(list.BinarySearch(1, 1, 7), -1);
    EXPECT_EQ(list.BinarySearch(12, 1, 7), 7);
    EXPECT_EQ(list.BinarySearch(9, 2, 4), -5) << "within the bounds alone";
}

TEST_F(VirtualListSearch, TheMiddleIsRoundedWithHalvesToTheEvenNeighbour) {
    for (const std::int32_t num : {1, 2, 5, 5, 8, 9})
        list.Add("", "", num, "at " + std::to_string(list.Count()));
    EXPECT_EQ(list.BinarySearch(5, 1, 6), 3) << "2.5 gives 2";
    list.ClearAll();
    for (const std::int32_t num : {1, 2, 3, 5, 5, 8, 9, 10})
        list.Add("", "", num, "at " + std::to_string(list.Count()));
    EXPECT_EQ(list.BinarySearch(5, 1, 8), 5) << "3.5 gives 4";
}

TEST_F(VirtualListSearch, BinarySearchOnAnEmptyListIsMinusOne) {
    EXPECT_EQ(list.BinarySearch(5, 1, 0), -1);
    EXPECT_EQ(list.BinarySearch(5, 0, 0), -1);
}

TEST_F(VirtualListSearch, OtherBoundsBelow1GiveNought) {
    Fill(" 4 5 6 ");
    EXPECT_EQ(list.BinarySearch(5, 0, 3), 0);
    EXPECT_EQ(list.BinarySearch(5, -1, 3), 0);
    EXPECT_EQ(list.BinarySearch(5, 1, -1), 0);
    EXPECT_EQ(list.BinarySearch(5, 1, 99), 0) << "a place without an item";
}

TEST_F(VirtualListSearch, ADistanceFrom65535OnMakesTheSearchFailWithNought) {
    for (std::int32_t num = 1; num <= 65536; ++num)
        list.Add("", "", num, "");
    EXPECT_EQ(list.BinarySearch(1, 1, 65535), 1) << "65,534 apart";
    EXPECT_EQ(list.BinarySearch(65535, 1, 65535), 65535);
    EXPECT_EQ(list.BinarySearch(1, 1, 65536), 0) << "65,535 apart";
}

TEST_F(VirtualListSearch, IsInNeedsANumberThatIsThere) {
    Fill(" 4 5 6 ");
    EXPECT_TRUE(list.IsIn(6));
    EXPECT_EQ(list.CurrentIndex, 3);
    EXPECT_EQ(Ignoring([&] { list.IsIn(7); }), failure::TypeMismatch);
    list.ClearAll();
    EXPECT_EQ(Ignoring([&] { list.IsIn(7); }), failure::TypeMismatch);
}

TEST_F(VirtualListSearch, FindWalksAnUnsortedListAndSearchesASortedOne) {
    Fill(" 9 4 7 ");
    EXPECT_EQ(list.Find(7, false), 3);
    EXPECT_EQ(list.Find(5, false), 0);
    Fill(" 4 7 9 ");
    EXPECT_EQ(list.Find(7, true), 2);
    EXPECT_EQ(list.Find(8, true), -3);
}

TEST_F(VirtualListSearch, OfTwoPlacesLeftTheLowerIsLookedAtFirst) {
    Fill(" 4 5 6 ");
    EXPECT_EQ(list.BinarySearch(6, 3, 4), 3) << "there is no fourth place, and no need of it";
    EXPECT_EQ(list.BinarySearch(5, 3, 4), 0);
}

// NextCustomRecipeNum

TEST_F(VirtualListSearch, NextCustomRecipeNumWithoutCustomNumbersIsMinusOneAtTheFirstCall) {
    recorder.Original = 10;
    Fill(" 4 9 ");
    EXPECT_EQ(list.NextCustomRecipeNum(false), -1);
    EXPECT_EQ(list.NextCustomRecipeNum(false), -1);
    Fill("");
    EXPECT_EQ(list.NextCustomRecipeNum(true), -1);
    Fill(" 4 10 ");
    EXPECT_EQ(list.NextCustomRecipeNum(true), -1) << "the last stock number is none of them";
}

TEST_F(VirtualListSearch, NextCustomRecipeNumStartsBehindTheLastStockNumber) {
    recorder.Original = 10;
    Fill(" 4 10 11 12 ");
    EXPECT_EQ(list.NextCustomRecipeNum(true), 11);
    EXPECT_EQ(list.NextCustomRecipeNum(false), 12);
    EXPECT_EQ(list.NextCustomRecipeNum(false), -1);
    EXPECT_EQ(list.NextCustomRecipeNum(false), -1) << "and again, until it is reset";
    EXPECT_EQ(list.NextCustomRecipeNum(true), 11);
}

TEST_F(VirtualListSearch, NextCustomRecipeNumStartsAtTheFirstGreaterNumber) {
    recorder.Original = 10;
    Fill(" 11 12 ");
    EXPECT_EQ(list.NextCustomRecipeNum(false), 11);
    EXPECT_EQ(list.NextCustomRecipeNum(false), 12);
    Fill(" 4 15 ");
    EXPECT_EQ(list.NextCustomRecipeNum(true), 15);
}

TEST_F(VirtualListSearch, NextCustomRecipeNumOfAVirtualListIsMinusOne) {
    list.SetCount(500);
    EXPECT_EQ(list.NextCustomRecipeNum(true), -1);
}

// Against a model

TEST_F(VirtualListSearch, BinarySearchAgreesWithALowerBoundOnRandomLists) {
    std::mt19937 random(test::Seed());
    for (int round = 0; round < 300; ++round) {
        list.ClearAll();
        std::vector<std::int32_t> sorted;
        for (std::int32_t num = 1; num < 120; ++num) {
            if (random() % 3 == 0) sorted.push_back(num);
        }
        for (const std::int32_t num : sorted)
            list.Add("", "", num, "");
        const auto count = static_cast<std::int32_t>(sorted.size());
        for (std::int32_t num = 0; num <= 120; ++num) {
            const auto at = std::lower_bound(sorted.begin(), sorted.end(), num);
            const auto place = static_cast<std::int32_t>(at - sorted.begin()) + 1;
            const bool there = at != sorted.end() && *at == num;
            ASSERT_EQ(list.BinarySearch(num, 1, count), there ? place : -place)
                << num << " in" << list.NumsToString();
        }
    }
}

}  // namespace
}  // namespace larder
