#include "lists/CategoryList.h"

#include <gtest/gtest.h>

#include <QWidget>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MeasuredLists.h"
#include "platform/Text.h"

namespace larder::test {
namespace {

class CategoryScreen : public MeasuredLists {
  protected:
    // Whether a line was written since Scribble.
    void Scribble(int list) { List(list).Item(1).SetText("scribble"); }
    bool Rewritten(int list) { return List(list).Item(1).Text() != "scribble"; }
    std::int32_t Start1() { return Main().VList[0].CurrentIndex; }
    std::string NameAt(int place) {
        return Book.Categories[static_cast<std::size_t>(place - 1)].first;
    }
    std::string ShownName(int line) { return std::string(TrimBlanks(List(1).Item(line).Text())); }
};

TEST_F(CategoryScreen, AFillThatChangesNothingReturnsAtOnce) {
    Scribble(1);
    Main().lists.ShowListItems(1, Start1(), false);
    EXPECT_FALSE(Rewritten(1));
    Main().lists.ShowListItems(1, Start1(), true);
    EXPECT_TRUE(Rewritten(1));
}

TEST_F(CategoryScreen, AFillForAnotherNumberOfLinesIsDone) {
    Main().LinesInList[0] = 4;
    Main().lists.ShowListItems(1, Start1(), false);
    EXPECT_EQ(List(1).Count(), 4);
}

TEST_F(CategoryScreen, AStartBeyondTheEndPutsTheLastEntryOnTheLastLine) {
    Main().lists.ShowListItems(1, 10000, false);
    EXPECT_EQ(List(1).Count(), Fit1);
    EXPECT_EQ(ShownName(Fit1), NameAt(Categories()));
    EXPECT_EQ(Start1(), Categories() - Fit1 + 1);
}

TEST_F(CategoryScreen, TheStartIsClampedBeforeItIsRemembered) {
    Main().lists.ShowListItems(1, 10000, false);
    Scribble(1);
    Main().lists.ShowListItems(1, Categories() - Fit1 + 1, false);
    EXPECT_FALSE(Rewritten(1));
    Main().lists.ShowListItems(1, 10001, false);
    EXPECT_FALSE(Rewritten(1));
}

TEST_F(CategoryScreen, AStartBelowOneIsTheFirstEntry) {
    Main().lists.ShowListItems(1, 5, false);
    Main().lists.ShowListItems(1, -3, false);
    EXPECT_EQ(Start1(), 1);
    EXPECT_EQ(ShownName(1), "MY FAVORITES");
}

TEST_F(CategoryScreen, AStartOfZeroIsWhereTheListStands) {
    Main().lists.ShowListItems(1, 3, false);
    Scribble(1);
    Main().lists.ShowListItems(1, 0, true);
    EXPECT_EQ(Start1(), 3);
    EXPECT_EQ(ShownName(1), NameAt(3));
}

TEST_F(CategoryScreen, AListShorterThanTheWindowStartsAtItsFirstEntryWhateverIsAsked) {
    Book.Categories.resize(6);
    ASSERT_TRUE(Start());
    ASSERT_GT(Fit(1), 6);
    Main().lists.ShowListItems(1, 4, true);
    EXPECT_EQ(Start1(), 1);
    EXPECT_EQ(List(1).Count(), 6);
    EXPECT_EQ(ShownName(6), "ALL RECIPES");
}

TEST_F(CategoryScreen, AnEmptyListLeavesTheControlAsItIs) {
    const auto before = Shown(1);
    Main().VList[0].ClearAll();
    Main().lists.ShowListItems(1, 1, true);
    EXPECT_EQ(Shown(1), before);
}

TEST_F(CategoryScreen, ShowingAnyOtherListNumberDoesNothing) {
    const auto before1 = Shown(1);
    const auto before2 = Shown(2);
    Main().lists.ShowListItems(0, 3, true);
    Main().lists.ShowListItems(3, 3, true);
    EXPECT_EQ(Shown(1), before1);
    EXPECT_EQ(Shown(2), before2);
}

TEST_F(CategoryScreen, ReadingEntriesForDisplayLeavesTheCurrentIndexAtTheStart) {
    Main().lists.ShowListItems(1, 2, false);
    EXPECT_EQ(Start1(), 2);
}

TEST_F(CategoryScreen, AllRecipesStandsFlushLeftAndTheEntriesBehindItAreIndented) {
    ASSERT_GE(Fit1, 8);
    const auto shown = Shown(1);
    EXPECT_EQ(shown[0], "MY FAVORITES");
    EXPECT_EQ(shown[5], "ALL RECIPES");
    EXPECT_EQ(shown[6], "     SHORT");
    EXPECT_EQ(shown[7], "     EXACT");
}

TEST_F(CategoryScreen, TheKeyOfALineIsItsTextAndItsTagTheNumberString) {
    EXPECT_EQ(List(1).Item(7).Key(), "     SHORT");
    EXPECT_EQ(List(1).Item(7).Tag, NumbersFrom(1, Fit2 - 2));
    EXPECT_EQ(List(1).Item(6).Tag, "*");
    EXPECT_EQ(Main().VList[0].Peek(7)->Key, "SHORT");
}

TEST_F(CategoryScreen, TheFirstFiveEntriesHaveTheirColourAndTheFirstSixTheirFlag) {
    for (int i = 1; i <= 7; ++i) {
        EXPECT_EQ(List(1).Item(i).ForeColor(), i <= 5 ? 0x714B28 : 0) << i;
        EXPECT_EQ(Main().VList[0].Peek(i)->Bold, i <= 6) << i;
    }
}

TEST_F(CategoryScreen, ColoursGoToTheEntriesThatExist) {
    Book.Categories = {{"MY FAVORITES", " "}, {"ALL RECIPES WITH PICTURES", " "}};
    ASSERT_TRUE(Start());
    ASSERT_EQ(List(1).Count(), 2);
    EXPECT_EQ(List(1).Item(2).ForeColor(), 0x714B28);
}

TEST_F(CategoryScreen, TheFirstScreenIsTheFavourites) {
    EXPECT_EQ(SelectedLine(1), 1);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "MY FAVORITES");
    EXPECT_EQ(FocusedName(), "lvwX_1");
}

TEST_F(CategoryScreen, AClickTellsTheCategoryEverywhere) {
    ClickCategory("EXACT");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     EXACT");
    EXPECT_EQ(Main().strLastRecipeCategory, "     EXACT");
    EXPECT_EQ(Main().strSelectedKey[0], "     EXACT");
    EXPECT_EQ(ShownName(SelectedLine(1)), "EXACT");
    EXPECT_EQ(FocusedName(), "lvwX_1");
}

TEST_F(CategoryScreen, AClickFillsTheListAndMakesItsFirstRecipeCurrentWithoutShowingIt) {
    ClickCategory("ONE");
    EXPECT_EQ(ShownNumbers(), Range(5, 5));
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Main().strSelectedKey[1], "k5");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 5);
    EXPECT_EQ(Main().ui.lblRecipeNum.Caption(), "# 5");
    EXPECT_TRUE(Main().screen.EncyclopediaMode());
    EXPECT_FALSE(Main().ui.rtbSee.Visible());
    EXPECT_FALSE(List(2).HideSelection());
    EXPECT_TRUE(List(2).Visible());
}

TEST_F(CategoryScreen, AClickTakesTheRecipeListToItsFirstLine) {
    ClickCategory("LONG");
    Wheel(2, 2);
    ClickCategory("ONE MORE");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
    EXPECT_EQ(SelectedLine(2), 1);
}

TEST_F(CategoryScreen, AClickClearsTheWordsOfTheLastSearch) {
    Main().strLastSearchWords = "salt";
    ClickCategory("ONE");
    EXPECT_EQ(Main().strLastSearchWords, "");
}

TEST_F(CategoryScreen, AClickForgetsThatTheLastPressWasWithTheRightButton) {
    Main().listInput.booRightClick = true;
    Main().categories.SimulateCategoryClick("ONE");
    EXPECT_FALSE(Main().listInput.booRightClick);
}

TEST_F(CategoryScreen, ACategoryWithoutNumbersGivesAnEmptyListAndNoCurrentRecipe) {
    ClickCategory("LONG");
    ClickCategory("NONE");
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(List(2).Tag, "");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_EQ(Main().ui.lblRecipeNum.Caption(), "");
    EXPECT_EQ(Main().ui.lblFound.Caption(), "0 recipes found ");
    EXPECT_TRUE(List(2).Visible());
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(CategoryScreen, AnEmptyLineAsNumberStringIsAnEmptyCategoryToo) {
    Book.Numbers("NONE") = "";
    ASSERT_TRUE(Start());
    ClickCategory("LONG");
    ClickCategory("NONE");
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
}

TEST_F(CategoryScreen, ClickingACategoryTwiceFillsTheListAgain) {
    for (const char* category : {"SHORT", "EXACT", "LONG", "ALL RECIPES"}) {
        ClickCategory(category);
        List(2).Item(1).SetSubItems(2, "scribble");
        ClickCategory(category);
        EXPECT_EQ(List(2).Item(1).SubItems(2), "Stock recipe 1") << category;
    }
}

TEST_F(CategoryScreen, ACategoryThatWasShownBeforeAnotherEmptiedTheListIsFilledAfresh) {
    ClickCategory("SHORT");
    Main().VList[1].ClearAll();
    ClickCategory("SHORT");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2 - 2));
    EXPECT_EQ(Main().VList[1].Count(), Fit2 - 2);
}

TEST_F(CategoryScreen, TheTagOfAllRecipesStandsForAllOfThem) {
    ClickCategory("ALL RECIPES");
    EXPECT_TRUE(Main().VList[1].VirtualMode);
    EXPECT_EQ(Main().ui.lblFound.Caption(), "205 recipes found ");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
}

TEST_F(CategoryScreen, AllRecipesWithPicturesOpensOnItsFirstRecipe) {
    ClickCategory("ALL RECIPES WITH PICTURES");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
    EXPECT_FALSE(Main().screen.EncyclopediaMode());
    EXPECT_TRUE(Main().ui.rtbSee.Visible());
    EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 14), "Stock recipe 2");
}

TEST_F(CategoryScreen, AllRecipesWithPicturesWithoutAnyShowsNone) {
    Book.Numbers("ALL RECIPES WITH PICTURES") = " ";
    ASSERT_TRUE(Start());
    ClickCategory("ALL RECIPES WITH PICTURES");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_EQ(List(2).Count(), 0);
}

TEST_F(CategoryScreen, TheGuidesAndTheVideoLeaveTheRecipeListAsItIs) {
    ClickCategory("SHORT");
    for (const char* name : {"BUYING AND PREPARATION TIPS", "VIDEO", "KNOTS"}) {
        ClickCategory(name);
        EXPECT_EQ(Main().ui.lblCategory.Caption(), name);
        EXPECT_EQ(Main().strLastRecipeCategory, name);
        EXPECT_EQ(ShownNumbers(), Range(1, Fit2 - 2));
    }
}

TEST_F(CategoryScreen, AGuideBelowAllRecipesIsAnOrdinaryCategory) {
    Book.Categories = {{"MY FAVORITES", " "},
                       {"ALL RECIPES WITH PICTURES", " 2 "},
                       {"ALL RECIPES", "*"},
                       {"KNOTS", " 7 8 "}};
    ASSERT_TRUE(Start());
    ClickCategory("KNOTS");
    EXPECT_EQ(ShownNumbers(), Range(7, 8));
}

TEST_F(CategoryScreen, AKeyInLowerCaseFindsItsCategory) {
    Main().categories.SimulateCategoryClick("one more");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     ONE MORE");
    EXPECT_EQ(ShownName(SelectedLine(1)), "ONE MORE");
}

TEST_F(CategoryScreen, ACategoryWhoseNameIsNotInCapitalsIsFoundToo) {
    Book.Numbers("Grandma's Soups") = " 9 ";
    ASSERT_TRUE(Start());
    Main().categories.SimulateCategoryClick("grandma's soups");
    EXPECT_EQ(ShownNumbers(), Range(9, 9));
}

TEST_F(CategoryScreen, AKeyIsFoundWithAndWithoutTheIndentation) {
    Main().categories.SimulateCategoryClick("     EXACT");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     EXACT");
    Main().categories.SimulateCategoryClick("SHORT");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     SHORT");
}

TEST_F(CategoryScreen, SelectingByProgramBringsTheLineIntoView) {
    const std::string last = NameAt(Categories());
    Main().categories.SimulateCategoryClick(last);
    EXPECT_EQ(ShownName(SelectedLine(1)), last);
    EXPECT_EQ(ShownName(Fit1), last);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     " + last);
    Main().categories.SimulateCategoryClick("MY FAVORITES");
    EXPECT_EQ(ShownName(SelectedLine(1)), "MY FAVORITES");
    EXPECT_EQ(Start1(), 1);
}

TEST_F(CategoryScreen, AnEmptyKeyIsTheSelectedLine) {
    ClickCategory("EXACT");
    List(2).Item(1).SetSubItems(2, "scribble");
    Main().categories.SimulateCategoryClick("");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     EXACT");
    EXPECT_EQ(List(2).Item(1).SubItems(2), "Stock recipe 1");
}

TEST_F(CategoryScreen, AnUnknownKeyEndsSilently) {
    ClickCategory("EXACT");
    Main().categories.SimulateCategoryClick("NO SUCH THING");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     EXACT");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(CategoryScreen, ChoosingARecipeByNumberSelectsAndOpensIt) {
    ClickCategory("LONG");
    Main().categories.SimulateChoiceClick(std::to_string(2 * Fit2));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 2 * Fit2);
    EXPECT_EQ(List(2).SelectedItem()->Tag, std::to_string(2 * Fit2));
    EXPECT_TRUE(Main().ui.rtbSee.Visible());
}

TEST_F(CategoryScreen, ChoosingWithoutANumberOpensTheSelectedLine) {
    ClickCategory("LONG");
    Focus(2);
    Key(Qt::Key_Down);
    Main().categories.SimulateChoiceClick("");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
}

TEST_F(CategoryScreen, ChoosingInAnEmptyListIsIgnored) {
    ClickCategory("NONE");
    Main().categories.SimulateChoiceClick("");
    Main().categories.SimulateChoiceClick("5");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
}

// A category whose fill takes long enough for the user to do something meanwhile.
class CategoriesBeingFilled : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(600);
        Book.Numbers("ALL RECIPES WITH PICTURES") = NumbersFrom(3, 600);
        Book.Numbers("BIG") = NumbersFrom(1, 600);
        Book.Numbers("BIGGER") = NumbersFrom(2, 600);
        Book.Numbers("SMALL") = " 7 8 ";
        Book.Numbers("NONE") = " ";
        ASSERT_TRUE(Start());
    }
    std::string Title(int line) { return List(2).Item(line).SubItems(2); }
};

TEST_F(CategoriesBeingFilled, ANewerClickOwnsTheList) {
    bool growing = false;
    Later([&] {
        growing = Main().VList[1].booSearching;
        ClickCategory("SMALL");
    });
    ClickCategory("BIG");
    EXPECT_TRUE(growing);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     SMALL");
    EXPECT_EQ(ShownNumbers(), Range(7, 8));
    EXPECT_EQ(Main().VList[1].Count(), 2);
    EXPECT_EQ(List(2).Tag, " 7 8 ");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 7);
    EXPECT_EQ(Main().ui.lblFound.Caption(), "2 recipes found ");
    EXPECT_FALSE(Main().VList[1].booSearching);
    EXPECT_TRUE(List(2).Visible());
}

TEST_F(CategoriesBeingFilled, ANewerClickOnAnEmptyCategoryLeavesNoCurrentRecipe) {
    Later([&] { ClickCategory("NONE"); });
    ClickCategory("BIG");
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
}

TEST_F(CategoriesBeingFilled, ANewerClickOnAllRecipesEndsTheGrowth) {
    Later([&] { ClickCategory("ALL RECIPES"); });
    ClickCategory("BIG");
    EXPECT_TRUE(Main().VList[1].VirtualMode);
    EXPECT_FALSE(Main().VList[1].booSearching);
    EXPECT_EQ(List(2).Tag, "*");
    EXPECT_EQ(Main().ui.lblFound.Caption(), "600 recipes found ");
}

TEST_F(CategoriesBeingFilled, TheSameCategoryClickedAgainIsCompleteInTheEnd) {
    Later([&] { ClickCategory("BIG"); });
    ClickCategory("BIG");
    EXPECT_EQ(Main().VList[1].Count(), 600);
    EXPECT_EQ(List(2).Tag, NumbersFrom(1, 600));
    EXPECT_EQ(Title(1), "Stock recipe 1");
}

TEST_F(CategoriesBeingFilled, ManyClicksInARowEndWithTheLast) {
    for (const char* name : {"BIGGER", "ALL RECIPES", "BIG", "SMALL", "BIGGER"}) {
        Later([this, name] { ClickCategory(name); });
    }
    ClickCategory("BIG");
    EXPECT_TRUE(WaitUntil([&] { return !Main().VList[1].booSearching; }));
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     BIGGER");
    EXPECT_EQ(Main().VList[1].Count(), 599);
    EXPECT_EQ(Title(1), "Stock recipe 2");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
}

TEST_F(CategoriesBeingFilled, TheClickedTextCountsEvenWhenItsLineIsReusedMeanwhile) {
    Later([&] {
        Main().LinesInList[0] = 2;
        Main().lists.ShowListItems(1, 7, true);
    });
    ClickCategory("ALL RECIPES WITH PICTURES");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "ALL RECIPES WITH PICTURES");
    EXPECT_EQ(Main().VList[1].Count(), 598);
    EXPECT_TRUE(Main().ui.rtbSee.Visible());
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 3);
}

TEST_F(CategoriesBeingFilled, ARecipeCanBeOpenedWhileTheListGrows) {
    bool pressed = false;
    const std::function<void()> press = [&] {
        if (List(2).Count() < 5 || !Main().VList[1].booSearching) {
            if (Main().VList[1].booSearching) Later(press);
            return;
        }
        pressed = true;
        PressLine(2, 4);
    };
    Later(press);
    ClickCategory("BIG");
    ASSERT_TRUE(pressed);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 4);
    EXPECT_EQ(Main().VList[1].Count(), 600);
    EXPECT_EQ(SelectedLine(2), 4);
}

TEST_F(CategoriesBeingFilled, ScrollingWhileTheListGrowsIsNotUndoneAtItsEnd) {
    bool scrolled = false;
    const std::function<void()> scroll = [&] {
        if (!Main().VList[1].booSearching) return;
        if (Main().VList[1].Count() < 2 * Fit(2)) {
            Later(scroll);
            return;
        }
        scrolled = true;
        Wheel(2, 1);
    };
    Later(scroll);
    ClickCategory("BIG");
    ASSERT_TRUE(scrolled);
    EXPECT_EQ(Title(1), "Stock recipe 4");
    EXPECT_EQ(Main().VList[1].CurrentIndex, 4);
}

TEST_F(CategoriesBeingFilled, ClosingTheWindowEndsTheFill) {
    Later([&] { Main().ui.window.Close(); });
    ClickCategory("BIG");
    EXPECT_LT(Main().VList[1].Count(), 600);
    EXPECT_TRUE(Boxes.Shown.empty());
}

}  // namespace
}  // namespace larder::test
