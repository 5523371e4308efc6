#include "lists/NumsClass.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "ListRecorder.h"
#include "platform/Failure.h"
#include "support/Rounds.h"
#include "support/Seed.h"

namespace larder {
namespace {

class NumsClassTest : public ::testing::Test {
  protected:
    void Fill(const std::string& nums) {
        list.StringToNums(nums);
        recorder.Log.clear();
    }
    std::vector<std::string> WithoutWait() const {
        std::vector<std::string> log(recorder.Log.begin() + 1, recorder.Log.end() - 1);
        return log;
    }

    test::ListRecorder recorder;
    ListTicket ticket;
    NumsClass list{recorder, ticket};
};

TEST_F(NumsClassTest, AnEmptyListGivesAnEmptyString) {
    EXPECT_EQ(list.NumsToString(), "");
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(Ignoring([&] { list.LastNumber(); }), failure::OutOfRange);
}

TEST_F(NumsClassTest, AddPutsANumberAtTheEndAndGrowsBeyondItsFirstRoom) {
    for (std::int32_t num = 1; num <= 100; ++num) {
        list.Add(num * 3);
        EXPECT_EQ(list.Count(), num);
        EXPECT_EQ(list.CurrentIndex, num);
        EXPECT_EQ(list.LastNumber(), num * 3);
    }
    EXPECT_EQ(list.Item(1), 3);
    EXPECT_EQ(list.Item(36), 108);
}

TEST_F(NumsClassTest, NumbersMayRepeat) {
    Fill(" 4 4 ");
    EXPECT_EQ(list.NumsToString(), " 4 4 ");
}

TEST_F(NumsClassTest, ItemMovesCurrentIndexWhenReadAndWhenWritten) {
    Fill(" 4 5 6 ");
    EXPECT_EQ(list.Item(2), 5);
    EXPECT_EQ(list.CurrentIndex, 2);
    list.SetItem(3, 9);
    EXPECT_EQ(list.CurrentIndex, 3);
    EXPECT_EQ(list.NumsToString(), " 4 5 9 ");
}

TEST_F(NumsClassTest, APlaceOutsideTheListIs13) {
    Fill(" 4 5 6 ");
    for (const std::int32_t place : {0, -1, 4}) {
        EXPECT_EQ(Ignoring([&] { list.Item(place); }), failure::TypeMismatch);
        EXPECT_EQ(Ignoring([&] { list.SetItem(place, 1); }), failure::TypeMismatch);
    }
    EXPECT_EQ(list.CurrentIndex, 3);
}

TEST_F(NumsClassTest, StringToNumsMovesTheTicketAndReportsTheWait) {
    const std::int16_t before = ticket.Value();
    list.StringToNums(" 4  5 6");
    EXPECT_EQ(ticket.Value(), before + 1);
    EXPECT_EQ(list.NumsToString(), " 4 5 6 ");
    EXPECT_FALSE(list.booSearching);
    const std::vector<std::string> expected = {"wait ", "done "};
    EXPECT_EQ(recorder.Log, expected);
}

TEST_F(NumsClassTest, TheTicketGoesFrom1000BackTo1) {
    while (ticket.Value() != 1000)
        ticket.Next();
    list.StringToNums("");
    EXPECT_EQ(ticket.Value(), 1);
}

TEST_F(NumsClassTest, ATextThatIsNoNumberIsLeftOutButCountsAsRead) {
    recorder.Lines = 3;
    list.StringToNums(" 4 x 99999999999 6 ");
    EXPECT_EQ(list.NumsToString(), " 4 6 ");
    EXPECT_EQ(WithoutWait(), (std::vector<std::string>{"same", "wait ..."}));
}

TEST_F(NumsClassTest, TheFirstScreenfulIsShownAndTheCountReportedEvery500Numbers) {
    recorder.Lines = 3;
    std::string nums = " ";
    for (int num = 1; num <= 1000; ++num)
        nums += std::to_string(num) + " ";
    list.StringToNums(nums);
    const std::vector<std::string> expected = {"same",      "wait ...", "scroll",
                                               "found ...", "scroll",   "found ..."};
    EXPECT_EQ(WithoutWait(), expected);
}

TEST_F(NumsClassTest, AFailureOfTheScreenCostsNothingThatFollows) {
    recorder.Lines = 500;
    recorder.OnShowSame = [] { throw Failure(failure::InvalidArgument, "test"); };
    std::string nums = " ";
    for (int num = 1; num <= 500; ++num)
        nums += std::to_string(num) + " ";
    list.StringToNums(nums);
    EXPECT_EQ(WithoutWait(), (std::vector<std::string>{"same", "wait ...", "scroll", "found ..."}));
}

TEST_F(NumsClassTest, AFillWhoseTicketHasMovedLeavesAtOnceTouchingNothing) {
    recorder.OnEvents = [&] {
        if (list.Count() == 2) ticket.Cancel();
    };
    list.StringToNums(" 4 5 6 7 ");
    EXPECT_EQ(list.NumsToString(), " 4 5 ");
    EXPECT_TRUE(list.booSearching) << "belongs to whoever moved the ticket";
    EXPECT_EQ(recorder.Log, std::vector<std::string>{"wait "});
}

TEST_F(NumsClassTest, ClearAllEmptiesTheListAndLeavesTheTicket) {
    Fill(" 4 5 6 ");
    list.SetCount(8);
    const std::int16_t before = ticket.Value();
    list.ClearAll();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.CurrentIndex, 0);
    EXPECT_FALSE(list.VirtualMode);
    EXPECT_EQ(ticket.Value(), before);
}

TEST_F(NumsClassTest, WritingCountMakesTheListVirtual) {
    list.SetCount(20000);
    EXPECT_TRUE(list.VirtualMode);
    EXPECT_EQ(list.Count(), 20000);
    EXPECT_EQ(recorder.Log, std::vector<std::string>{"done "});
    EXPECT_EQ(list.NumsToString(), "");
    EXPECT_EQ(list.BinarySearch(5, 1, 20000), 0) << "there are no numbers to search";
    EXPECT_EQ(Ignoring([&] { list.Item(1); }), failure::TypeMismatch);
    EXPECT_EQ(list.NextCustomRecipeNum(true), -1);
}

TEST_F(NumsClassTest, GetNextWalksToTheEndAndThenGivesNothing) {
    Fill(" 4 5 ");
    list.CurrentIndex = 0;
    EXPECT_EQ(list.GetNext(), 4);
    EXPECT_EQ(list.GetNext(), 5);
    EXPECT_EQ(list.GetNext(), 0);
    EXPECT_EQ(list.CurrentIndex, 2);
}

TEST_F(NumsClassTest, BinarySearchGivesThePlaceOrMinusThePlaceToInsertAt) {
    Fill(" 4 5 6 7 9 10 12 ");
    EXPECT_EQ(list.BinarySearch(8, 1, 7), -5);
    EXPECT_EQ(list.BinarySearch(13, 1, 7), -8);
    EXPECT_EQ(list.BinarySearch(1, 1, 7), -1);
    EXPECT_EQ(list.BinarySearch(12, 1, 7), 7);
    EXPECT_EQ(list.BinarySearch(4, 1, 7), 1);
}

TEST_F(NumsClassTest, TheMiddleIsRoundedWithHalvesToTheEvenNeighbour) {
    Fill(" 1 2 5 5 8 9 ");
    EXPECT_EQ(list.BinarySearch(5, 1, 6), 3) << "2.5 gives 2";
    Fill(" 1 2 3 5 5 8 9 10 ");
    EXPECT_EQ(list.BinarySearch(5, 1, 8), 5) << "3.5 gives 4";
}

TEST_F(NumsClassTest, BinarySearchOnAnEmptyListIsMinusOne) {
    EXPECT_EQ(list.BinarySearch(5, 1, 0), -1);
    EXPECT_EQ(list.Find(5, true), -1);
}

TEST_F(NumsClassTest, OfTwoPlacesLeftTheLowerIsLookedAtFirst) {
    Fill(" 4 5 6 ");
    EXPECT_EQ(list.BinarySearch(6, 3, 4), 3) << "there is no fourth place, and no need of it";
    EXPECT_EQ(list.BinarySearch(5, 3, 4), 0);
}

TEST_F(NumsClassTest, IsInFailsForANumberThatIsNotThere) {
    Fill(" 4 5 6 ");
    EXPECT_TRUE(list.IsIn(5));
    EXPECT_EQ(Ignoring([&] { list.IsIn(7); }), failure::TypeMismatch);
}

TEST_F(NumsClassTest, FindWalksAnUnsortedList) {
    Fill(" 9 4 7 4 ");
    EXPECT_EQ(list.Find(4, false), 2);
    EXPECT_EQ(list.Find(5, false), 0);
}

TEST_F(NumsClassTest, RemoveNumClosesTheGapAndStandsAtThePlace) {
    Fill(" 4 5 6 7 9 10 12 ");
    list.RemoveNum(7, true);
    EXPECT_EQ(list.NumsToString(), " 4 5 6 9 10 12 ");
    EXPECT_EQ(list.CurrentIndex, 4);
    list.RemoveNum(1, true);
    EXPECT_EQ(list.Count(), 6);
    list.RemoveNum(12, true);
    EXPECT_EQ(list.NumsToString(), " 4 5 6 9 10 ");
    EXPECT_EQ(list.CurrentIndex, 6) << "this class does not pull it back";
}

TEST_F(NumsClassTest, NextCustomRecipeNumWalksTheNumbersAboveTheStock) {
    recorder.Original = 10;
    Fill(" 4 9 11 15 ");
    EXPECT_EQ(list.NextCustomRecipeNum(true), 11);
    EXPECT_EQ(list.NextCustomRecipeNum(false), 15);
    EXPECT_EQ(list.NextCustomRecipeNum(false), -1);
    EXPECT_EQ(list.NextCustomRecipeNum(false), -1);
    EXPECT_EQ(list.NextCustomRecipeNum(true), 11);
}

TEST_F(NumsClassTest, NextCustomRecipeNumWithoutCustomNumbersIsMinusOne) {
    recorder.Original = 10;
    Fill(" 4 9 10 ");
    EXPECT_EQ(list.NextCustomRecipeNum(false), -1);
    Fill(" 4 9 ");
    EXPECT_EQ(list.NextCustomRecipeNum(true), -1);
    Fill(" 9 10 11 ");
    EXPECT_EQ(list.NextCustomRecipeNum(true), 11) << "starts behind the last stock number";
}

TEST_F(NumsClassTest, TheSelfTestLeavesTheListAlone) {
    Fill(" 1 2 ");
    const std::int16_t before = ticket.Value();
    list.TestIt();
    EXPECT_EQ(list.NumsToString(), " 1 2 ");
    EXPECT_EQ(ticket.Value(), before + 1) << "one list was filled, another one";
    EXPECT_EQ(recorder.Log, (std::vector<std::string>{"wait ", "done "}));
}

TEST_F(NumsClassTest, RandomOperationsAgreeWithASimpleModel) {
    std::mt19937 random(test::Seed());
    const auto below = [&](std::int32_t limit) {
        return static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(limit));
    };
    std::vector<std::int32_t> model;
    for (int step = 0; step < test::Rounds(20000); ++step) {
        const std::int32_t num = below(60) + 1;
        const auto found = std::find(model.begin(), model.end(), num);
        switch (model.size() < 100 ? below(4) : 1) {
            case 0:
                list.Add(num);
                model.push_back(num);
                break;
            case 1:
                list.RemoveNum(num, false);
                if (found != model.end()) model.erase(found);
                break;
            case 2:
                EXPECT_EQ(list.Find(num, false),
                          found == model.end() ? 0 : found - model.begin() + 1);
                break;
            default:
                if (below(200) == 0) {
                    list.ClearAll();
                    model.clear();
                } else if (!model.empty()) {
                    const std::int32_t place = below(static_cast<std::int32_t>(model.size()));
                    EXPECT_EQ(list.Item(place + 1), model[static_cast<std::size_t>(place)]);
                }
        }
        std::string expected = model.empty() ? "" : " ";
        for (const std::int32_t each : model)
            expected += std::to_string(each) + " ";
        ASSERT_EQ(list.NumsToString(), expected) << "step " << step;
    }
}

}  // namespace
}  // namespace larder
