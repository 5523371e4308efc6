#include "lists/VirtualList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "VirtualListFixture.h"
#include "platform/Failure.h"
#include "support/Rounds.h"
#include "support/Seed.h"

namespace larder {
namespace {

using test::VirtualListTest;

// Add

TEST_F(VirtualListTest, AddKeepsEveryFieldAndGivesThePlace) {
    list.Add("Cod", "tag", 7, "key", 2, true);
    list.Add("Eel", "", 0, "other");
    const VirtualListItem* item = list.Peek(1);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->Text, "Cod");
    EXPECT_EQ(item->Tag, "tag");
    EXPECT_EQ(item->Num, 7);
    EXPECT_EQ(item->Key, "key");
    EXPECT_EQ(item->Icon, 2);
    EXPECT_TRUE(item->Bold);
    EXPECT_EQ(item->Index, 1);
    EXPECT_EQ(item->ForeColor, 0);
    EXPECT_EQ(list.Peek(2)->Index, 2);
    EXPECT_FALSE(list.Peek(2)->Bold);
}

TEST_F(VirtualListTest, AnEmptyKeyBecomesKAndTheNumberOrTheCountBeforeTheAddition) {
    list.Add("a", "", 12, "");
    list.Add("b", "", 0, "");
    EXPECT_EQ(list.Peek(1)->Key, "k12");
    EXPECT_EQ(list.Peek(2)->Key, "k1");
}

TEST_F(VirtualListTest, ASecondAddOfTheSameNumberIsDropped) {
    list.Add("first", "", 5, "");
    list.Add("second", "", 5, "");
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(list.Peek(1)->Text, "first");
    EXPECT_EQ(list.AllNums(), " 5 ");
}

TEST_F(VirtualListTest, ADuplicateEndsAddBeforeAnythingIsReported) {
    recorder.Lines = 1;
    list.Add("first", "", 5, "");
    ASSERT_EQ(recorder.Log, (std::vector<std::string>{"same", "wait ..."}));
    recorder.Log.clear();
    list.Add("second", "", 5, "");
    EXPECT_EQ(recorder.Log, std::vector<std::string>());
    for (std::int32_t num = 6; list.Count() < 200; ++num)
        list.Add("x", "", num, "");
    ASSERT_EQ(recorder.Log, (std::vector<std::string>{"scroll", "found ..."}));
    recorder.Log.clear();
    list.Add("second", "", 5, "");
    EXPECT_EQ(recorder.Log, std::vector<std::string>());
}

TEST_F(VirtualListTest, BeforeAndAfterAreIgnored) {
    list.Add("a", "", 1, "");
    list.Add("b", "", 2, "", 0, false, "k1", "");
    EXPECT_EQ(list.Peek(2)->Text, "b");
}

TEST_F(VirtualListTest, TheFirstScreenfulIsShownByEveryListAsSoonAsItIsThere) {
    recorder.Lines = 3;
    for (std::int32_t num = 1; num <= 5; ++num)
        list.Add("x", "", num, "");
    const std::vector<std::string> expected = {"same", "wait ..."};
    EXPECT_EQ(recorder.Log, expected);
}

TEST_F(VirtualListTest, TheCountIsReportedEvery200Items) {
    for (std::int32_t num = 1; num <= 400; ++num)
        list.Add("x", "", num, "");
    const std::vector<std::string> expected = {"scroll", "found ...", "scroll", "found ..."};
    EXPECT_EQ(recorder.Log, expected);
}

TEST_F(VirtualListTest, AFailureOfTheScreenEndsAddSilentlyAndTheItemStays) {
    recorder.Lines = 1;
    recorder.OnShowSame = [] { throw Failure(failure::InvalidArgument, "test"); };
    EXPECT_EQ(Ignoring([&] { list.Add("a", "", 1, ""); }), 0);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(Reports("wait ..."), 0) << "what follows the failure is not run";
}

TEST_F(VirtualListTest, AddRecipeTakesTitleAndPictureFromTheNumber) {
    recorder.Pictures = [](const std::string& num) { return num == "7"; };
    list.AddRecipe(7);
    list.AddRecipe(8);
    EXPECT_EQ(list.Peek(1)->Text, "Title 7");
    EXPECT_EQ(list.Peek(1)->Tag, "7");
    EXPECT_EQ(list.Peek(1)->Key, "k7");
    EXPECT_EQ(list.Peek(1)->Num, 7);
    EXPECT_EQ(list.Peek(1)->Icon, 2);
    EXPECT_TRUE(list.Peek(1)->Bold);
    EXPECT_EQ(list.Peek(2)->Icon, 0);
    EXPECT_FALSE(list.Peek(2)->Bold);
}

TEST_F(VirtualListTest, ADeletedRecipeStaysOut) {
    recorder.Titles = [](std::int32_t num) { return num == 8 ? "" : "Eel"; };
    EXPECT_TRUE(list.AddRecipe(7));
    EXPECT_FALSE(list.AddRecipe(8));
    EXPECT_EQ(list.AllNums(), " 7 ");
    Fill(" 9 8 7 ");
    EXPECT_EQ(list.AllNums(), " 9 7 ");
}

TEST_F(VirtualListTest, ARecipeThatTheBookDoesNotHaveStaysInUnlessToldOtherwise) {
    recorder.Titles = [](std::int32_t num) { return num == 8 ? "" : "Eel"; };
    recorder.WithoutTitleIsBlank = false;
    EXPECT_FALSE(list.AddRecipe(8, true));
    Fill(" 9 8 7 ");
    EXPECT_EQ(list.AllNums(), " 9 8 7 ");
    EXPECT_EQ(list.Peek(2)->Text, "");
}

TEST_F(VirtualListTest, ARecipeThatCannotBeReadStaysIn) {
    recorder.Titles = [](std::int32_t num) { return num == 8 ? "" : "Eel"; };
    recorder.WithoutTitleIsBlank = false;
    recorder.WithoutTitleIsGone = false;
    EXPECT_TRUE(list.AddRecipe(8));
    EXPECT_TRUE(list.AddRecipe(8, true)) << "a number that is there already is no failure";
    EXPECT_EQ(list.AllNums(), " 8 ");
}

// Item

TEST_F(VirtualListTest, ItemByPlaceMovesCurrentIndexAndPeekDoesNot) {
    Fill(" 4 5 6 ");
    EXPECT_EQ(list.Item(2)->Num, 5);
    EXPECT_EQ(list.CurrentIndex, 2);
    EXPECT_EQ(list.Item("3")->Num, 6);
    EXPECT_EQ(list.CurrentIndex, 3);
    EXPECT_EQ(list.Peek(1)->Num, 4);
    EXPECT_EQ(list.PeekKey("k4")->Num, 4);
    EXPECT_EQ(list.CurrentIndex, 3);
}

TEST_F(VirtualListTest, AKeyThatDoesNotExistGivesNothingAndNoFailure) {
    Fill(" 4 ");
    EXPECT_EQ(list.Item("k9"), nullptr);
    EXPECT_EQ(list.PeekKey("k9"), nullptr);
    EXPECT_EQ(list.Item(""), nullptr);
}

TEST_F(VirtualListTest, KeysAreComparedWithoutRegardToCaseAndOuterBlanks) {
    list.Add("     SHELLFISH", " 1 ", 0, "SHELLFISH");
    EXPECT_NE(list.Item("shellfish"), nullptr);
    EXPECT_NE(list.Item("     Shellfish"), nullptr);
    EXPECT_EQ(list.CurrentIndex, 0) << "a key moves nothing";
    list.Add("again", "", 0, " shellFISH ");
    EXPECT_EQ(list.Count(), 1);
}

TEST_F(VirtualListTest, APlaceOutsideTheListIsATypeMismatch) {
    Fill(" 4 5 ");
    for (const std::int32_t place : {0, -1, 3}) {
        EXPECT_EQ(Ignoring([&] { list.Item(place); }), failure::TypeMismatch);
        EXPECT_EQ(Ignoring([&] { list.Item(std::to_string(place)); }), failure::TypeMismatch);
        EXPECT_EQ(list.Peek(place), nullptr);
    }
    EXPECT_EQ(Ignoring([&] { list.Item("99999999999999999999"); }), failure::TypeMismatch);
    EXPECT_EQ(Ignoring([&] { list.Item("1e999"); }), failure::TypeMismatch);
}

TEST_F(VirtualListTest, AListWithoutItemsGivesNothingForAnyIndex) {
    EXPECT_EQ(list.Item(1), nullptr);
    EXPECT_EQ(list.Item("5"), nullptr);
    list.SetCount(100);
    EXPECT_EQ(list.Item(1), nullptr);
    EXPECT_EQ(list.Item("k1"), nullptr);
}

TEST_F(VirtualListTest, SetItemChangesAPlaceAndKeepsKeysUnique) {
    Fill(" 4 5 ");
    VirtualListItem other;
    other.Text = "changed";
    other.Num = 9;
    other.Key = "k9";
    list.SetItem(2, other);
    EXPECT_EQ(list.Item("k9")->Text, "changed");
    EXPECT_EQ(list.Item("k5"), nullptr);
    EXPECT_EQ(list.Peek(2)->Index, 2);
    EXPECT_EQ(list.CurrentIndex, 2);
    other.Key = "K9";
    list.SetItem(2, other);
    EXPECT_EQ(list.Item("k9")->Key, "K9") << "its own key is no duplicate";
    EXPECT_EQ(Ignoring([&] { list.SetItem(1, other); }), failure::KeyNotUnique);
    EXPECT_EQ(list.Peek(1)->Num, 4);
    EXPECT_EQ(Ignoring([&] { list.SetItem(3, other); }), failure::TypeMismatch);
}

TEST_F(VirtualListTest, GetNextWalksToTheEndAndThenGivesNothing) {
    Fill(" 4 5 ");
    EXPECT_EQ(list.GetNext()->Num, 4);
    EXPECT_EQ(list.GetNext()->Num, 5);
    EXPECT_EQ(list.GetNext(), nullptr);
    EXPECT_EQ(list.CurrentIndex, 2);
}

// Number strings

TEST_F(VirtualListTest, NumsToStringOfAnEmptyListIsAnEmptyString) {
    EXPECT_EQ(list.NumsToString(), "");
    EXPECT_EQ(list.AllNums(), " ");
    list.SetCount(5);
    EXPECT_EQ(list.NumsToString(), "") << "in virtual mode too";
}

TEST_F(VirtualListTest, AnEmptyStringLeavesAnEmptyListAndStillReportsTheWait) {
    for (const char* nums : {"", " ", "   "}) {
        recorder.Log.clear();
        list.StringToNums(nums);
        EXPECT_EQ(list.Count(), 0);
        EXPECT_FALSE(list.booSearching);
        const std::vector<std::string> expected = {"wait ", "done "};
        EXPECT_EQ(recorder.Log, expected);
    }
}

TEST_F(VirtualListTest, ANumberStringComesBackInItsOrderWithSingleBlanks) {
    list.StringToNums("12 4  7");
    EXPECT_EQ(list.NumsToString(), " 12 4 7 ");
    EXPECT_EQ(list.AllNums(), " 12 4 7 ");
    EXPECT_EQ(list.Count(), 3);
}

TEST_F(VirtualListTest, ATokenThatIsNoNumberIsSkipped) {
    list.StringToNums(" 4 x 99999999999 5 * ");
    EXPECT_EQ(list.NumsToString(), " 4 5 ");
    EXPECT_FALSE(list.booSearching);
}

TEST_F(VirtualListTest, AFailureOfThePictureSetCostsOneLineOnly) {
    recorder.Pictures = [](const std::string& num) -> bool {
        if (num == "5") throw Failure(failure::TypeMismatch, "test");
        return false;
    };
    list.StringToNums(" 4 5 6 ");
    EXPECT_EQ(list.NumsToString(), " 4 6 ");
}

TEST_F(VirtualListTest, EventsRunAfterEachNumberWhileTheListIsGrowing) {
    std::vector<std::int32_t> counts;
    recorder.OnEvents = [&] {
        EXPECT_TRUE(list.booSearching);
        counts.push_back(list.Count());
    };
    list.StringToNums(" 4 5 6 ");
    EXPECT_EQ(counts, (std::vector<std::int32_t>{1, 2, 3}));
}

TEST_F(VirtualListTest, ANewerFillInsideAFillWins) {
    bool first = true;
    recorder.OnEvents = [&] {
        if (list.Count() == 2 && std::exchange(first, false)) list.StringToNums(" 8 9 ");
    };
    list.StringToNums(" 4 5 6 7 ");
    EXPECT_EQ(list.NumsToString(), " 8 9 ");
    EXPECT_FALSE(list.booSearching);
    const std::vector<std::string> expected = {"wait ", "wait ", "done "};
    EXPECT_EQ(recorder.Log, expected) << "the older one touches nothing any more";
}

TEST_F(VirtualListTest, ANewerFillWinsThoughItsTicketIsThatOfTheOlderOne) {
    bool first = true;
    recorder.OnEvents = [&] {
        if (list.Count() != 2 || !std::exchange(first, false)) return;
        const std::int16_t before = ticket.Value();
        ticket.Cancel();
        list.StringToNums(" 8 9 ");
        ASSERT_EQ(ticket.Value(), before) << "or this would show nothing";
    };
    ticket.Cancel();
    EXPECT_FALSE(list.StringToNums(" 4 5 6 7 "));
    EXPECT_EQ(list.NumsToString(), " 8 9 ");
}

TEST_F(VirtualListTest, ACancelledFillLeavesWhatItHas) {
    recorder.OnEvents = [&] {
        if (list.Count() == 2) ticket.Cancel();
    };
    list.StringToNums(" 4 5 6 7 ");
    EXPECT_EQ(list.NumsToString(), " 4 5 ");
    EXPECT_TRUE(list.booSearching) << "belongs to who has cancelled";
    EXPECT_EQ(recorder.Log, std::vector<std::string>{"wait "});
}

TEST_F(VirtualListTest, ClearAllDuringAFillEndsTheGrowing) {
    recorder.OnEvents = [&] { list.ClearAll(); };
    list.StringToNums(" 4 5 6 ");
    EXPECT_EQ(list.Count(), 0);
    EXPECT_FALSE(list.booSearching);
}

TEST_F(VirtualListTest, TheTextOfAnItemThatAnEventRemovesMayBeTheSourceOfAFill) {
    VirtualList categories(recorder, ticket);
    categories.Add("FISH", " 4 5 6 ", 0, "FISH");
    recorder.OnEvents = [&] {
        if (categories.Count() == 0) return;
        const std::int16_t own = ticket.Value();
        categories.ClearAll();
        while (ticket.Value() != own)
            ticket.Next();
    };
    list.StringToNums(categories.Peek(1)->Tag);
    EXPECT_EQ(list.NumsToString(), " 4 5 6 ");
}

TEST_F(VirtualListTest, AFillShowsItsFirstLinesWhileItGrows) {
    recorder.Lines = 2;
    std::int32_t countWhenShown = 0;
    recorder.OnShowSame = [&] { countWhenShown = list.Count(); };
    list.StringToNums(" 4 5 6 ");
    EXPECT_EQ(countWhenShown, 2);
    const std::vector<std::string> expected = {"wait ", "same", "wait ...", "done "};
    EXPECT_EQ(recorder.Log, expected);
}

TEST_F(VirtualListTest, AScreenThatShrinksBelowWhatIsThereIsFullWithTheNextItem) {
    recorder.Lines = 10;
    recorder.OnEvents = [&] {
        if (list.Count() == 4) recorder.Lines = 2;
    };
    std::int32_t countWhenShown = 0;
    recorder.OnShowSame = [&] { countWhenShown = list.Count(); };
    list.StringToNums(" 1 2 3 4 5 6 7 8 ");
    EXPECT_EQ(countWhenShown, 5);
    EXPECT_EQ(Reports("same"), 1);
    EXPECT_EQ(Reports("wait ..."), 1);
    recorder.Log.clear();
    recorder.OnEvents = [&] {
        if (list.Count() == 6) recorder.Lines = 4;
    };
    list.StringToNums(" 1 2 3 4 5 6 7 8 ");
    EXPECT_EQ(Reports("same"), 1) << "once in a fill";
}

// States

TEST_F(VirtualListTest, ClearAllGivesAnEmptyRealListAndMovesTheTicket) {
    Fill(" 4 5 ");
    list.Item(2);
    list.SetCount(9);
    list.booSearching = true;
    const std::int16_t before = ticket.Value();
    list.ClearAll();
    EXPECT_EQ(ticket.Value(), before + 1);
    EXPECT_FALSE(list.VirtualMode);
    EXPECT_FALSE(list.booSearching);
    EXPECT_EQ(list.CurrentIndex, 0);
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.AllNums(), " ");
    EXPECT_EQ(list.PeekKey("k4"), nullptr);
    while (ticket.Value() != 1000)
        ticket.Next();
    list.ClearAll();
    EXPECT_EQ(ticket.Value(), 1);
}

TEST_F(VirtualListTest, WritingCountSwitchesToVirtualModeAndEndsTheWait) {
    list.SetCount(20000);
    EXPECT_TRUE(list.VirtualMode);
    EXPECT_EQ(list.Count(), 20000);
    EXPECT_EQ(recorder.Log, std::vector<std::string>{"done "});
}

TEST_F(VirtualListTest, RemovingFromAVirtualListMakesItShorterByOneWhateverTheNumber) {
    list.SetCount(10);
    list.CurrentIndex = 10;
    list.RemoveNum(99999, true);
    EXPECT_EQ(list.Count(), 9);
    EXPECT_TRUE(list.VirtualMode);
    EXPECT_EQ(list.CurrentIndex, 9) << "never behind the last place";
}

// Removing

TEST_F(VirtualListTest, RemoveNumRebuildsTheIndexAndStandsAtThePlace) {
    Fill(" 4 5 6 7 ");
    list.RemoveNum(5, true);
    EXPECT_EQ(list.NumsToString(), " 4 6 7 ");
    EXPECT_EQ(list.AllNums(), " 4 6 7 ");
    EXPECT_EQ(list.CurrentIndex, 2);
    EXPECT_EQ(list.Peek(2)->Index, 2);
    EXPECT_EQ(list.PeekKey("k5"), nullptr);
    list.RemoveNum(7, false);
    EXPECT_EQ(list.CurrentIndex, 2) << "pulled back to the last place";
    list.RemoveNum(99, true);
    EXPECT_EQ(list.Count(), 2);
    list.AddRecipe(5);
    EXPECT_EQ(list.NumsToString(), " 4 6 5 ") << "a removed number may come again";
}

TEST_F(VirtualListTest, RebuildIndexTakesTheNumbersAsTheyAre) {
    Fill(" 4 5 ");
    list.Item(1)->Num = 40;
    list.RebuildIndex();
    EXPECT_EQ(list.AllNums(), " 40 5 ");
}

TEST_F(VirtualListTest, TheSelfTestLeavesTheListAlone) {
    Fill(" 1 2 ");
    const std::int16_t before = ticket.Value();
    list.TestIt();
    EXPECT_EQ(list.NumsToString(), " 1 2 ");
    EXPECT_EQ(ticket.Value(), before + 1) << "one list was filled, another one";
    EXPECT_EQ(recorder.Log, (std::vector<std::string>{"wait ", "done "}));
}

// Against a model

TEST_F(VirtualListTest, RandomOperationsAgreeWithASimpleModel) {
    std::mt19937 random(test::Seed());
    const auto below = [&](std::int32_t limit) {
        return static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(limit));
    };
    std::vector<std::int32_t> model;
    for (int step = 0; step < test::Rounds(20000); ++step) {
        const std::int32_t num = below(80) + 1;
        const auto found = std::find(model.begin(), model.end(), num);
        const bool there = found != model.end();
        const auto place = static_cast<std::int32_t>(found - model.begin()) + 1;
        switch (below(4)) {
            case 0:
                list.AddRecipe(num);
                if (!there) model.push_back(num);
                break;
            case 1:
                list.RemoveNum(num, false);
                if (there) {
                    model.erase(found);
                    const auto last = static_cast<std::int32_t>(model.size());
                    EXPECT_EQ(list.CurrentIndex, std::min(place, last));
                }
                break;
            case 2:
                EXPECT_EQ(list.Find(num, false), there ? place : 0);
                EXPECT_EQ(list.PeekKey("k" + std::to_string(num)) != nullptr, there);
                break;
            default:
                if (below(100) == 0) {
                    list.ClearAll();
                    model.clear();
                }
        }
        std::string expected = " ";
        for (const std::int32_t each : model)
            expected += std::to_string(each) + " ";
        ASSERT_EQ(list.AllNums(), expected) << "step " << step;
        ASSERT_EQ(list.NumsToString(), model.empty() ? "" : expected) << "step " << step;
        for (std::size_t i = 0; i < model.size(); ++i) {
            const VirtualListItem* item = list.Peek(static_cast<std::int32_t>(i) + 1);
            ASSERT_EQ(item->Num, model[i]);
            ASSERT_EQ(item->Index, static_cast<std::int32_t>(i) + 1);
        }
    }
}

}  // namespace
}  // namespace larder
