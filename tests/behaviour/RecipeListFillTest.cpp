#include <gtest/gtest.h>

#include <QCursor>
#include <QWidget>
#include <new>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MeasuredLists.h"
#include "platform/Failure.h"

namespace larder::test {
namespace {

constexpr std::int32_t Navy = 0x800000;
constexpr std::int32_t Blue = 0xFF0000;

class Fill : public MeasuredLists {
  protected:
    void Show(const std::string& numbers, std::int32_t start, bool force) {
        Main().recipes.ShowRecipesIn_lvwX2(numbers, start, false, force);
    }
    VirtualList& Recipes() { return Main().VList[1]; }
    void Scribble() { List(2).Item(1).SetSubItems(2, "scribble"); }
    bool Rewritten() { return List(2).Item(1).SubItems(2) != "scribble"; }
};

TEST_F(Fill, ALineTellsItsRecipe) {
    ClickCategory("SHORT");
    const ListItem& line = List(2).Item(3);
    EXPECT_EQ(line.Key(), "k3");
    EXPECT_EQ(line.Tag, "3");
    EXPECT_EQ(line.SubItems(1), "3");
    EXPECT_EQ(line.SubItems(2), "Stock recipe 3");
}

TEST_F(Fill, ARecipeWithAPictureHasTheCamera) {
    for (const char* category : {"SHORT", "LONG", "ALL RECIPES"}) {
        ClickCategory(category);
        EXPECT_EQ(List(2).Item(1).SmallIcon(), 0) << category;
        EXPECT_EQ(List(2).Item(2).SmallIcon(), 2) << category;
        EXPECT_EQ(List(2).Item(4).SmallIcon(), 2) << category;
    }
}

TEST_F(Fill, TheTitleOfARecipeWithAPictureIsBlueInAListOfNumbersOnly) {
    ClickCategory("SHORT");
    EXPECT_EQ(List(2).Item(2).SubForeColor(2), Blue);
    EXPECT_EQ(List(2).Item(3).SubForeColor(2), List(2).ForeColor());
    ClickCategory("ALL RECIPES");
    EXPECT_EQ(List(2).Item(2).SubForeColor(2), List(2).ForeColor());
}

TEST_F(Fill, TheNumberOfAnOwnRecipeIsNavyInEveryList) {
    Book.Numbers("MINE") = " 199 200 201 204 ";
    ASSERT_TRUE(Start());
    ClickCategory("MINE");
    EXPECT_EQ(List(2).Item(2).SubForeColor(1), 0);
    EXPECT_EQ(List(2).Item(3).SubForeColor(1), Navy);
    EXPECT_EQ(List(2).Item(4).SubForeColor(1), Navy);
    ClickCategory("ALL RECIPES");
    Main().lists.ShowListItems(2, 199, false);
    for (int line = 1; line <= List(2).Count(); ++line) {
        const ListItem& item = List(2).Item(line);
        EXPECT_EQ(item.SubForeColor(1), std::stoi(item.Tag) > 200 ? Navy : 0) << item.Tag;
    }
}

TEST_F(Fill, AReusedLineKeepsNothingOfTheRecipeBefore) {
    ClickCategory("SHORT");
    ASSERT_EQ(List(2).Item(2).SmallIcon(), 2);
    Show(" 1 3 ", 1, true);
    EXPECT_EQ(List(2).Item(2).SmallIcon(), 0);
    EXPECT_EQ(List(2).Item(2).SubForeColor(2), List(2).ForeColor());
    EXPECT_EQ(List(2).Item(2).Key(), "k3");
}

TEST_F(Fill, AShortListHasOnlyItsOwnLines) {
    ClickCategory("LONG");
    ClickCategory("SHORT");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2 - 2));
}

TEST_F(Fill, AListThatJustFitsIsWritten) {
    ClickCategory("EXACT");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(List(2).Tag, NumbersFrom(1, Fit2));
    EXPECT_EQ(Main().ui.lblFound.Caption(), std::to_string(Fit2) + " recipes found ");
}

TEST_F(Fill, AListOneLongerIsWritten) {
    ClickCategory("ONE MORE");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
    EXPECT_EQ(Recipes().Count(), Fit2 + 1);
    EXPECT_EQ(List(2).Tag, NumbersFrom(1, Fit2 + 1));
}

TEST_F(Fill, TheTagIsTheWholeListWhenTheFillHasEnded) {
    for (const char* category : {"SHORT", "LONG", "ONE"}) {
        ClickCategory(category);
        EXPECT_EQ(List(2).Tag, Book.Numbers(category)) << category;
    }
    ClickCategory("ALL RECIPES");
    EXPECT_EQ(List(2).Tag, "*");
    ClickCategory("NONE");
    EXPECT_EQ(List(2).Tag, "");
}

TEST_F(Fill, TheTagIsTheWholeListThoughNothingIsForced) {
    ClickCategory("NONE");
    Show(NumbersFrom(1, 2 * Fit2), 1, false);
    EXPECT_EQ(List(2).Tag, NumbersFrom(1, 2 * Fit2));
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
    Show(" 7 8 ", 1, false);
    EXPECT_EQ(List(2).Tag, " 7 8 ");
    EXPECT_EQ(ShownNumbers(), Range(7, 8));
}

TEST_F(Fill, OfTwoEqualNumbersTheFirstIsShown) {
    Show(" 5 6 5 7 ", 1, true);
    EXPECT_EQ(ShownNumbers(), Range(5, 7));
}

TEST_F(Fill, ATokenThatIsNoNumberIsLeftOut) {
    Show(" 5 x 6 ", 1, true);
    EXPECT_EQ(ShownNumbers(), Range(5, 6));
}

TEST_F(Fill, RunsOfBlanksDoNoHarm) {
    Show("  5   6  ", 1, true);
    EXPECT_EQ(ShownNumbers(), Range(5, 6));
    EXPECT_EQ(List(2).Tag, " 5 6 ");
}

TEST_F(Fill, ARecipeThatTheBookDoesNotHaveCostsNoOther) {
    Show(" 5 9999 6 ", 1, true);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{5, 9999, 6}));
    EXPECT_EQ(List(2).Item(3).SubItems(2), "Stock recipe 6");
    EXPECT_EQ(List(2).Item(2).SubItems(2), "");
}

TEST_F(Fill, ADeletedRecipeIsLeftOut) {
    Show(" 5 203 6 ", 1, true);
    EXPECT_EQ(ShownNumbers(), Range(5, 6));
    EXPECT_EQ(Main().ui.lblFound.Caption(), "2 recipes found ");
}

// When nothing is to be done.

TEST_F(Fill, TheSameFromTheSamePlaceReturnsAtOnce) {
    ClickCategory("LONG");
    Show("same", 1, false);  // remembers the key of the line that has the bar by now
    Scribble();
    Show("same", 1, false);
    Show("same", 0, false);
    EXPECT_FALSE(Rewritten());
    Show("same", 0, true);
    EXPECT_TRUE(Rewritten());
}

TEST_F(Fill, AnotherRememberedKeyIsAReasonToFill) {
    ClickCategory("LONG");
    Show("same", 1, false);
    Scribble();
    Main().strSelectedKey[1] = "k3";
    Show("same", 1, false);
    EXPECT_TRUE(Rewritten());
    EXPECT_EQ(SelectedLine(2), 3);
}

TEST_F(Fill, AnotherNumberOfLinesIsAReasonToFill) {
    ClickCategory("LONG");
    Main().LinesInList[1] = 3;
    Show("same", 1, false);
    EXPECT_EQ(List(2).Count(), 3);
}

TEST_F(Fill, AGrowingListIsAReasonToFill) {
    ClickCategory("LONG");
    Scribble();
    Recipes().booSearching = true;
    Show("same", 1, false);
    EXPECT_TRUE(Rewritten());
}

TEST_F(Fill, TheSameNumbersAgainAreTheSame) {
    ClickCategory("SHORT");
    Show("same", 1, false);
    Show(" 7 8 ", 1, true);
    Recipes().Peek(1)->Text = "kept";
    Show(" 7 8 ", 1, true);
    EXPECT_EQ(List(2).Item(1).SubItems(2), "kept");
}

TEST_F(Fill, TheSameNumbersBehindAnotherListAreReadAgain) {
    Show(" 7 8 ", 1, true);
    Recipes().Peek(1)->Text = "old";
    Show("same", 1, true);
    Show(" 7 8 ", 1, true);
    EXPECT_EQ(List(2).Item(1).SubItems(2), "Stock recipe 7");
}

TEST_F(Fill, AListEmptiedByOthersIsReadAgain) {
    Show(" 7 8 ", 1, true);
    Recipes().ClearAll();
    Show(" 7 8 ", 1, true);
    EXPECT_EQ(ShownNumbers(), Range(7, 8));
    ClickCategory("ALL RECIPES");
    Recipes().ClearAll();
    ClickCategory("ALL RECIPES");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
    EXPECT_EQ(Recipes().Count(), 205);
}

// The start.

TEST_F(Fill, AStartOfZeroIsTheCurrentOne) {
    ClickCategory("LONG");
    Show("same", 3, false);
    Show("same", 0, true);
    EXPECT_EQ(ShownNumbers(), Range(3, Fit2 + 2));
}

TEST_F(Fill, MinusTwoLeavesTheStartAlone) {
    ClickCategory("LONG");
    Show("same", 3, false);
    Show("same", -2, true);
    EXPECT_EQ(ShownNumbers(), Range(3, Fit2 + 2));
}

TEST_F(Fill, AnotherStartBelowOneIsTheFirstLine) {
    ClickCategory("LONG");
    Show("same", 3, false);
    Show("same", -1, true);
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
    EXPECT_EQ(Recipes().CurrentIndex, 1);
}

TEST_F(Fill, AStartBeyondTheEndIsPulledBack) {
    ClickCategory("LONG");
    Show("same", 10000, false);
    EXPECT_EQ(ShownNumbers(), Range(2 * Fit2 + 2, 3 * Fit2 + 1));
    EXPECT_EQ(Recipes().CurrentIndex, 2 * Fit2 + 2);
    ClickCategory("SHORT");
    Show("same", 10000, true);
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2 - 2));
}

TEST_F(Fill, ReadingEntriesForDisplayLeavesTheCurrentIndexAtTheStart) {
    ClickCategory("LONG");
    EXPECT_EQ(Recipes().CurrentIndex, 1);
    Show("same", 4, false);
    EXPECT_EQ(Recipes().CurrentIndex, 4);
}

TEST_F(Fill, RemembersForOthersHowManyLinesItShowed) {
    ClickCategory("LONG");
    EXPECT_EQ(Main().recipes.intLinesShown, Fit2);
}

// Lists that others have built.

TEST_F(Fill, AListBuiltByOthersIsOnlyShown) {
    Recipes().ClearAll();
    for (int i = 1; i <= Fit2 + 4; ++i) {
        Recipes().Add("Chapter " + std::to_string(i), "t" + std::to_string(i), i,
                      "c" + std::to_string(i));
    }
    for (const char* name : {"VIDEO", "KNOTS", "TIPS"}) {
        Show(name, 2, true);
        EXPECT_EQ(List(2).Item(1).SubItems(2), "Chapter 2") << name;
        EXPECT_EQ(List(2).Item(1).Tag, "t2");
        EXPECT_EQ(List(2).Count(), Fit2);
    }
}

TEST_F(Fill, AListBuiltByOthersEndsTheVirtualMode) {
    ClickCategory("ALL RECIPES");
    Recipes().ClearAll();
    Recipes().Add("Chapter", "t", 1, "c1");
    Show("VIDEO", 1, true);
    EXPECT_FALSE(Recipes().VirtualMode);
    EXPECT_EQ(List(2).Count(), 1);
    ClickCategory("SHORT");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2 - 2));
}

// Virtual mode.

TEST_F(Fill, AllRecipesKnowOnlyTheirLength) {
    ClickCategory("ALL RECIPES");
    EXPECT_TRUE(Recipes().VirtualMode);
    EXPECT_EQ(Recipes().Count(), 205);
    EXPECT_EQ(Recipes().NumsToString(), "");
    EXPECT_EQ(Recipes().CurrentIndex, 1);
}

TEST_F(Fill, AllRecipesReadNoMoreTitlesThanFit) {
    int titles = 0;
    Main().files.Watch([&](const NumberedFiles::Access& access) {
        const bool text = access.Number == 1 || access.Number == 21;
        if (access.Kind == "read" && text) ++titles;
    });
    ClickCategory("ALL RECIPES");
    EXPECT_GT(titles, 0);
    EXPECT_LE(titles, Fit2);
}

TEST_F(Fill, DeletedRecipesLeaveNoGapsAmongAllRecipes) {
    ClickCategory("ALL RECIPES");
    const int start = 205 - Fit2 + 1;
    Main().lists.ShowListItems(2, 10000, false);
    EXPECT_EQ(Recipes().CurrentIndex, start);
    std::vector<int> expected;
    for (int n = start; static_cast<int>(expected.size()) < Fit2; ++n) {
        if (n != 203) expected.push_back(n);
    }
    EXPECT_EQ(ShownNumbers(), expected);
}

TEST_F(Fill, TheNeighbourOfADeletedRecipeIsRepeatedWhenTheWindowMovesOn) {
    Book = CookBook();
    Book.AddManyStock(2);
    Book.AddOwn("");
    Book.AddManyOwn(2 * Fit2);
    ASSERT_TRUE(Start());
    ClickCategory("ALL RECIPES");
    Main().lists.ShowListItems(2, 2, false);
    EXPECT_EQ(ShownNumbers().at(0), 2);
    EXPECT_EQ(ShownNumbers().at(1), 4);
    Main().steps.ScrollListDown(2);
    EXPECT_EQ(Recipes().CurrentIndex, 3);
    EXPECT_EQ(ShownNumbers().at(0), 4);
    Main().steps.ScrollListDown(2);
    EXPECT_EQ(Recipes().CurrentIndex, 4);
    EXPECT_EQ(ShownNumbers().at(0), 4);
    EXPECT_EQ(ShownNumbers().at(1), 5);
}

TEST_F(Fill, WhenAllRecipesEndBeforeTheWindowNoStaleLinesStay) {
    Book = CookBook();
    Book.AddManyStock(2);
    Book.AddStock("");
    Book.AddStock("");
    ASSERT_TRUE(Start());
    ClickCategory("ALL RECIPES");
    EXPECT_EQ(ShownNumbers(), Range(1, 2));
}

TEST_F(Fill, AVirtualListScrollsFromAnyPlace) {
    ClickCategory("ALL RECIPES");
    Main().lists.ShowListItems(2, 100, false);
    EXPECT_EQ(ShownNumbers(), Range(100, 99 + Fit2));
    EXPECT_EQ(List(2).Tag, "*");
    EXPECT_TRUE(List(2).HideSelection());
}

TEST_F(Fill, AllRecipesCanBeOpenedAtAnyPlace) {
    ClickCategory("LONG");
    Show("*", 7, true);
    EXPECT_EQ(Recipes().CurrentIndex, 7);
    EXPECT_EQ(ShownNumbers(), Range(7, 6 + Fit2));
}

TEST_F(Fill, AfterAllRecipesAnOrdinaryCategoryIsAListAgain) {
    ClickCategory("ALL RECIPES");
    ClickCategory("ONE");
    EXPECT_FALSE(Recipes().VirtualMode);
    EXPECT_EQ(ShownNumbers(), Range(5, 5));
}

TEST_F(Fill, AllRecipesAfterLongCategoryStartAtTheFirst) {
    ClickCategory("LONG");
    Wheel(2, 3);
    ClickCategory("ALL RECIPES");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
}

// The question about pictures.

TEST_F(Fill, AnEmptyNewListWithOnlyPicturesAskedForIsAQuestion) {
    Main().ui.chkJustWithPictures.SetValue(1);
    Boxes.Then(Dialogs::Answer::Yes);
    ClickCategory("NONE");
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text,
              "No recipes with pictures found in this set.\n"
              "Do you want to see the recipes without pictures?");
    EXPECT_EQ(Boxes.Shown[0].Title, "The Galley Almanac");
    EXPECT_EQ(Boxes.Shown[0].Buttons, Dialogs::Buttons::YesNo);
    EXPECT_EQ(Main().ui.chkJustWithPictures.Value(), 0);
}

TEST_F(Fill, OnNoTheBoxStaysTicked) {
    Main().ui.chkJustWithPictures.SetValue(1);
    Boxes.Then(Dialogs::Answer::No);
    ClickCategory("NONE");
    EXPECT_EQ(Main().ui.chkJustWithPictures.Value(), 1);
}

TEST_F(Fill, TheQuestionIsAskedOnceForOneFill) {
    Main().ui.chkJustWithPictures.SetValue(1);
    ClickCategory("NONE");
    Main().lists.ShowListItems(2, 0, true);
    Main().lists.ShowListItems(2, 1, false);
    Focus(2);
    EXPECT_EQ(Boxes.Shown.size(), 1U);
}

TEST_F(Fill, WithRecipesOrWithoutTheTickThereIsNoQuestion) {
    ClickCategory("NONE");
    Main().ui.chkJustWithPictures.SetValue(1);
    ClickCategory("ONE");
    ClickCategory("ALL RECIPES");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(Fill, AnEmptySetOfAllRecipesIsAskedAboutToo) {
    Book = CookBook();
    ASSERT_TRUE(Start());
    Main().ui.chkJustWithPictures.SetValue(1);
    ClickCategory("ALL RECIPES");
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_EQ(Main().ui.lblFound.Caption(), "0 recipes found ");
}

// Whatever happens on the way.

TEST_F(Fill, ANewListThatEndsEmptyLeavesNoLinesOfTheListBefore) {
    ClickCategory("SHORT");
    Show(" ", 1, false);
    EXPECT_EQ(Recipes().Count(), 0);
    EXPECT_EQ(List(2).Count(), 0);
    ClickCategory("SHORT");
    Show(" none of these ", 1, false);
    EXPECT_EQ(List(2).Count(), 0);
    ClickCategory("SHORT");
    Show("", 1, false);
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(List(2).Tag, "");
}

TEST_F(Fill, ANewListIsWrittenThoughAFillWasUnderWayWhenItWasAskedFor) {
    ClickCategory("SHORT");
    List(2).Tag = " ";
    Show(" 7 8 ", 1, false);
    EXPECT_EQ(ShownNumbers(), Range(7, 8));
    EXPECT_EQ(List(2).Tag, " 7 8 ");
}

TEST_F(Fill, AQuestionThatFailsLeavesTheListVisible) {
    Main().ui.chkJustWithPictures.SetValue(1);
    Boxes.Then(Dialogs::Answer::No, [] { throw Failure(failure::InvalidArgument, "test"); });
    Show(" ", 1, true);
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_TRUE(List(2).Visible());
    EXPECT_EQ(List(2).Count(), 0);
}

TEST_F(Fill, WhatInterruptsAFillLeavesTheListVisibleWithTheNormalPointer) {
    ClickCategory("SHORT");
    for (const char* numbers : {"*", " 7 8 9 "}) {
        int reads = 0;
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            if (access.Kind == "read" && ++reads == 2) throw std::bad_alloc();
        });
        EXPECT_THROW(Show(numbers, 1, true), std::bad_alloc) << numbers;
        Main().files.Watch({});
        EXPECT_TRUE(List(2).Visible()) << numbers;
        EXPECT_NE(Main().ui.window.Native()->cursor().shape(), Qt::WaitCursor) << numbers;
        EXPECT_FALSE(Recipes().booSearching) << numbers;
        ClickCategory("SHORT");
        EXPECT_EQ(ShownNumbers(), Range(1, Fit2 - 2)) << "the next fill is a whole one";
    }
}

}  // namespace
}  // namespace larder::test
