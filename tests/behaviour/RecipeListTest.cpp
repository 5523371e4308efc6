#include "browse/RecipeList.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QWidget>
#include <algorithm>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MeasuredLists.h"
#include "platform/Failure.h"

namespace larder::test {
namespace {

using Titles = std::vector<std::string>;
using Numbers = std::vector<int>;

class RecipesOnShow : public MeasuredLists {
  protected:
    RecipeList& Recipes() { return Main().recipes; }
    std::string Found() { return Main().ui.lblFound.Caption(); }
    Qt::CursorShape Pointer(const std::string& name) { return Widget(name)->cursor().shape(); }
};

TEST_F(RecipesOnShow, TheColumnsAreThoseOfRecipes) {
    ClickCategory("ONE");
    const float width = List(2).Width();
    EXPECT_FLOAT_EQ(List(2).ColumnWidth(1), 281);
    EXPECT_FLOAT_EQ(List(2).ColumnWidth(2), std::max(700.0F, width * 0.25F));
    EXPECT_FLOAT_EQ(List(2).ColumnWidth(3), width * 0.8F);
    EXPECT_TRUE(Recipes().booRecipeColumns);
}

TEST_F(RecipesOnShow, TheNumberColumnIsNeverNarrowerThanItsLeastWidth) {
    List(2).SetWidth(1000);
    Recipes().SetColumnsForRecipes_X2();
    EXPECT_FLOAT_EQ(List(2).ColumnWidth(2), 700);
    EXPECT_FLOAT_EQ(List(2).ColumnWidth(3), 800);
}

TEST_F(RecipesOnShow, TheCountIsReportedWithABlankAtItsEnd) {
    ClickCategory("LONG");
    EXPECT_EQ(Found(), std::to_string(3 * Fit2 + 1) + " recipes found ");
    EXPECT_EQ(Main().ui.lblFound.ToolTipText(),
              std::to_string(3 * Fit2 + 1) + " recipes found in this category or search.");
    EXPECT_TRUE(Main().ui.lblFound.Visible());
}

TEST_F(RecipesOnShow, OneRecipeIsReportedInTheSingular) {
    ClickCategory("ONE");
    EXPECT_EQ(Found(), "1 recipe found ");
}

TEST_F(RecipesOnShow, NoRecipesAreReportedAsZero) {
    ClickCategory("NONE");
    EXPECT_EQ(Found(), "0 recipes found ");
}

TEST_F(RecipesOnShow, AllRecipesAreReportedInThePluralEvenWhenThereIsOne) {
    Main().store.SetTotalRecipes(1);
    ClickCategory("ALL RECIPES");
    EXPECT_EQ(Found(), "1 recipes found ");
    EXPECT_EQ(Main().ui.lblFound.ToolTipText(), "1 recipe found in this category or search.");
}

TEST_F(RecipesOnShow, TheReportEndsWithWhatIsAppended) {
    ClickCategory("ONE");
    Recipes().ReportRecipesFound("...");
    EXPECT_EQ(Found(), "1 recipe found ...");
    EXPECT_EQ(Main().ui.lblFound.ToolTipText(), "1 recipe found in this category or search.");
}

TEST_F(RecipesOnShow, TheReportShowsItsLabel) {
    Main().ui.lblFound.SetVisible(false);
    Recipes().ReportRecipesFound("");
    EXPECT_TRUE(Main().ui.lblFound.Visible());
}

TEST_F(RecipesOnShow, ThePictureIsClickableOnlyWhileThereAreRecipes) {
    ClickCategory("ONE");
    EXPECT_EQ(Pointer("imgPicture"), Qt::PointingHandCursor);
    ClickCategory("NONE");
    EXPECT_NE(Pointer("imgPicture"), Qt::PointingHandCursor);
    EXPECT_EQ(Widget("imgPicture")->toolTip().toStdString(), "");
}

TEST_F(RecipesOnShow, EmptyFavouritesTellHowToAddToThem) {
    ClickCategory("NONE");
    ClickCategory("MY FAVORITES");
    EXPECT_EQ(Widget("imgPicture")->toolTip().toStdString(),
              "To add recipes to the Favorites category, find the recipe you like and then press "
              "the Add button.");
}

TEST_F(RecipesOnShow, TwoCategoriesWithTheSameRecipesAreBothReported) {
    Book.Numbers("TWIN") = " 5 ";
    ASSERT_TRUE(Start());
    ClickCategory("ONE");
    Main().ui.lblFound.SetCaption("");
    ClickCategory("TWIN");
    EXPECT_EQ(Found(), "1 recipe found ");
    EXPECT_EQ(ShownNumbers(), Range(5, 5));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 5);
}

TEST_F(RecipesOnShow, TheBusyLookHidesTheListAndEmptiesTheCount) {
    ClickCategory("ONE");
    Recipes().DecorateWait(true, "");
    EXPECT_EQ(Main().ui.window.Native()->cursor().shape(), Qt::WaitCursor);
    EXPECT_FALSE(List(2).Visible());
    EXPECT_EQ(Found(), "");
    Recipes().DecorateWait(false, "");
    EXPECT_NE(Main().ui.window.Native()->cursor().shape(), Qt::WaitCursor);
    EXPECT_TRUE(List(2).Visible());
    EXPECT_EQ(Found(), "1 recipe found ");
}

TEST_F(RecipesOnShow, TheBusyLookOfAGrowingListLeavesItVisible) {
    ClickCategory("LONG");
    Recipes().DecorateWait(true, "...");
    EXPECT_TRUE(List(2).Visible());
    EXPECT_EQ(Found(), std::to_string(3 * Fit2 + 1) + " recipes found ...");
}

// Sorting.

TEST_F(RecipesOnShow, AClickSortsTheLinesByTitleAndAnotherReversesThem) {
    Book.Numbers("MIXED") = " 3 20 100 9 201 ";
    ASSERT_TRUE(Start());
    ClickCategory("MIXED");
    Click("imgSortByName");
    const Titles sorted = {"Own recipe 201", "Stock recipe 100", "Stock recipe 20",
                           "Stock recipe 3", "Stock recipe 9"};
    EXPECT_EQ(Shown(2), sorted);
    Click("imgSortByName");
    EXPECT_EQ(Shown(2), Titles(sorted.rbegin(), sorted.rend()));
    Click("imgSortByName");
    EXPECT_EQ(Shown(2), sorted);
}

TEST_F(RecipesOnShow, NumbersSortAsNumbers) {
    Book.Numbers("MIXED") = " 100 20 3 9 ";
    ASSERT_TRUE(Start());
    ClickCategory("MIXED");
    Click("imgSortByNum");
    EXPECT_EQ(ShownNumbers(), (Numbers{3, 9, 20, 100}));
    Click("imgSortByNum");
    EXPECT_EQ(ShownNumbers(), (Numbers{100, 20, 9, 3}));
}

TEST_F(RecipesOnShow, AnotherColumnSortsUpwards) {
    Book.Numbers("MIXED") = " 100 20 3 9 ";
    ASSERT_TRUE(Start());
    ClickCategory("MIXED");
    Click("imgSortByNum");
    Click("imgSortByNum");
    Click("imgSortByName");
    EXPECT_EQ(ShownNumbers(), (Numbers{100, 20, 3, 9}));
    Click("imgSortByNum");
    EXPECT_EQ(ShownNumbers(), (Numbers{3, 9, 20, 100}));
}

TEST_F(RecipesOnShow, AnOrderThatIsGivenIsUsed) {
    ClickCategory("SHORT");
    Recipes().SortListBy(2, 1);
    EXPECT_EQ(ShownNumbers().front(), Fit2 - 2);
    Recipes().SortListBy(2, 1);
    EXPECT_EQ(ShownNumbers().front(), Fit2 - 2);
    Recipes().SortListBy(2, 0);
    EXPECT_EQ(ShownNumbers().front(), 1) << "and is turned round by the next click";
}

TEST_F(RecipesOnShow, SortingTouchesOnlyTheWindowAndTheNextFillUndoesIt) {
    OpenWithKeys("LONG");
    Recipes().SortListBy(2, 1);
    const Numbers window = Range(1, Fit2);
    EXPECT_EQ(ShownNumbers(), Numbers(window.rbegin(), window.rend()));
    EXPECT_EQ(Main().VList[1].Peek(1)->Num, 1);
    Main().lists.ShowListItems(2, 2, false);
    EXPECT_EQ(ShownNumbers(), Range(2, Fit2 + 1));
}

TEST_F(RecipesOnShow, AfterSortingTheLineAtAPlaceIsTheOneDisplayedThere) {
    ClickCategory("LONG");
    Recipes().SortListBy(2, 1);
    PressLine(2, 1);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), Fit2);
    EXPECT_EQ(SelectedLine(2), 1);
    Key(Qt::Key_Down);
    EXPECT_EQ(Main().strSelectedKey[1], "k" + std::to_string(Fit2 - 1));
}

TEST_F(RecipesOnShow, SortingKeepsTheBarOnItsRecipe) {
    ClickCategory("LONG");
    PressLine(2, 2);
    Recipes().SortListBy(2, 1);
    EXPECT_EQ(SelectedLine(2), Fit2 - 1);
    EXPECT_EQ(List(2).SelectedItem()->Tag, "2");
}

TEST_F(RecipesOnShow, SortingAnEmptyListDoesNothing) {
    ClickCategory("NONE");
    Click("imgSortByName");
    EXPECT_EQ(List(2).Count(), 0);
}

// Taking a recipe out.

TEST_F(RecipesOnShow, RemovingARecipePutsTheBarOnTheOneThatFollowsIt) {
    ClickCategory("SHORT");
    PressLine(2, 3);
    Recipes().RemoveFrom_lvwX2(3);
    EXPECT_EQ(ShownNumbers().at(2), 4);
    EXPECT_EQ(SelectedLine(2), 3);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 4);
    EXPECT_EQ(Main().strSelectedKey[1], "k4");
    EXPECT_EQ(List(2).Count(), Fit2 - 3);
    EXPECT_EQ(List(2).Tag.find(" 3 "), std::string::npos);
}

TEST_F(RecipesOnShow, RemovingTheFirstRecipeShowsTheNewFirst) {
    ClickCategory("EXACT");
    PressLine(2, 1);
    Recipes().RemoveFrom_lvwX2(1);
    EXPECT_EQ(ShownNumbers(), Range(2, Fit2));
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
}

TEST_F(RecipesOnShow, RemovingTheLastLineMovesTheBarUpOneLine) {
    ClickCategory("SHORT");
    PressLine(2, Fit2 - 2);
    Recipes().RemoveFrom_lvwX2(Fit2 - 2);
    EXPECT_EQ(SelectedLine(2), Fit2 - 3);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), Fit2 - 3);
}

TEST_F(RecipesOnShow, RemovingTheLastRecipeOfALongListKeepsTheWindowFull) {
    OpenWithKeys("LONG");
    Key(Qt::Key_End);
    Recipes().RemoveFrom_lvwX2(3 * Fit2 + 1);
    EXPECT_EQ(ShownNumbers(), Range(2 * Fit2 + 1, 3 * Fit2));
    EXPECT_EQ(SelectedLine(2), Fit2);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 3 * Fit2);
}

TEST_F(RecipesOnShow, RemovingTheOnlyRecipeLeavesNone) {
    ClickCategory("ONE");
    PressLine(2, 1);
    Recipes().RemoveFrom_lvwX2(5);
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(List(2).Tag, "");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_EQ(Main().ui.lblRecipeNum.Caption(), "");
}

TEST_F(RecipesOnShow, RemovingARecipeThatIsNotInTheListDoesNothing) {
    ClickCategory("SHORT");
    PressLine(2, 2);
    const auto before = Shown(2);
    Recipes().RemoveFrom_lvwX2(150);
    EXPECT_EQ(Shown(2), before);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
    EXPECT_TRUE(Main().ui.rtbSee.Visible());
}

TEST_F(RecipesOnShow, ANumberThatIsPartOfAnotherIsNotInTheList) {
    Book.Numbers("FIFTEEN") = " 15 ";
    ASSERT_TRUE(Start());
    ClickCategory("FIFTEEN");
    Recipes().RemoveFrom_lvwX2(5);
    EXPECT_EQ(ShownNumbers(), Range(15, 15));
}

TEST_F(RecipesOnShow, TheFavouritesAreFoundThoughTheyAreNotInOrder) {
    Book.Numbers("MY FAVORITES") = " 9 4 7 1 ";
    ASSERT_TRUE(Start());
    PressLine(2, 2);
    Recipes().RemoveFrom_lvwX2(4);
    EXPECT_EQ(ShownNumbers(), (Numbers{9, 7, 1}));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 7);
}

TEST_F(RecipesOnShow, OutsideTheFavouritesARecipeIsSearchedAsInASortedList) {
    Book.Numbers("MY FAVORITES") = " 9 4 7 1 ";
    Book.Numbers("MIXED") = " 9 4 7 1 ";
    ASSERT_TRUE(Start());
    Recipes().RemoveFrom_lvwX2(1);
    EXPECT_EQ(ShownNumbers(), (Numbers{9, 4, 7}));
    ClickCategory("MIXED");
    Recipes().RemoveFrom_lvwX2(1);
    EXPECT_EQ(ShownNumbers(), (Numbers{9, 4, 7, 1})) << "1 is not where it would be in order";
}

TEST_F(RecipesOnShow, RemovingFromTheMiddleOfALongListLeavesTheWindowAndShowsTheNeighbour) {
    OpenWithKeys("LONG");
    Key(Qt::Key_PageDown);
    const int gone = Fit2 + 4;
    PressLine(2, 4);
    ASSERT_EQ(Main().viewer.CurrentRecipe(), gone);
    Recipes().RemoveFrom_lvwX2(gone);
    Numbers expected = Range(Fit2 + 1, 2 * Fit2 + 1);
    std::erase(expected, gone);
    EXPECT_EQ(ShownNumbers(), expected);
    EXPECT_EQ(Main().VList[1].CurrentIndex, Fit2 + 1);
    EXPECT_EQ(SelectedLine(2), 4) << "the bar keeps its row";
    EXPECT_EQ(Main().viewer.CurrentRecipe(), gone + 1);
}

TEST_F(RecipesOnShow, RemovingFromTheLastWindowShowsANeighbourToo) {
    OpenWithKeys("LONG");
    Key(Qt::Key_End);
    const int gone = 2 * Fit2 + 4;
    PressLine(2, 3);
    ASSERT_EQ(Main().viewer.CurrentRecipe(), gone);
    Recipes().RemoveFrom_lvwX2(gone);
    EXPECT_EQ(SelectedLine(2), 3);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), gone - 1) << "the window is full";
}

TEST_F(RecipesOnShow, RemovingARecipeFromWhichTheBarWasMovedShowsItsNeighbour) {
    for (const char* category : {"SHORT", "LONG"}) {
        ASSERT_TRUE(Start());
        ClickCategory(category);
        PressLine(2, 3);
        Key(Qt::Key_Down);
        Key(Qt::Key_Down);
        Recipes().RemoveFrom_lvwX2(3);
        EXPECT_EQ(Main().viewer.CurrentRecipe(), 4) << category;
        EXPECT_EQ(List(2).SelectedItem()->Tag, "4") << category;
        EXPECT_EQ(SelectedLine(2), 3) << category;
    }
}

TEST_F(RecipesOnShow, RemovingARecipeThatWasScrolledAwayShowsItsNeighbour) {
    ClickCategory("LONG");
    PressLine(2, 3);
    Wheel(2, 20);
    ASSERT_TRUE(List(2).HideSelection());
    Recipes().RemoveFrom_lvwX2(3);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 4);
    EXPECT_EQ(List(2).SelectedItem()->Tag, "4");
    EXPECT_FALSE(List(2).HideSelection());
}

TEST_F(RecipesOnShow, DeletingAmongAllRecipesShowsTheNeighbourWhereverTheBarIs) {
    Book = CookBook();
    Book.AddManyStock(5);
    Book.AddManyOwn(5 * Fit2);
    ASSERT_TRUE(Start());
    const auto remove = [this](int recipe) {
        ASSERT_EQ(Main().viewer.CurrentRecipe(), recipe);
        Boxes.Then(Dialogs::Answer::Ok);
        Main().ownRecipes.DeleteRecipe(recipe, true, false);
    };
    ClickCategory("ALL RECIPES");
    Main().lists.ShowListItems(2, 5, false);
    PressLine(2, 4);
    Wheel(2, 20);
    ASSERT_TRUE(List(2).HideSelection());
    remove(8);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 9);
    EXPECT_EQ(List(2).SelectedItem()->Tag, "9");
    Focus(2);
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    remove(9);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 10);
    EXPECT_EQ(List(2).SelectedItem()->Tag, "10");
}

// With recipes deleted before them, the last ones stand behind the end of the list.
TEST_F(RecipesOnShow, DeletingARecipeBehindTheEndOfAllRecipesShowsTheLastLine) {
    Book = CookBook();
    Book.AddManyStock(5);
    Book.AddManyOwn(5 * Fit2);
    ASSERT_TRUE(Start());
    ClickCategory("ALL RECIPES");
    const std::int32_t last = 5 + 5 * Fit2;
    for (const std::int32_t recipe : {6, 7, 8, 9, 10, last}) {
        if (recipe == last) Main().lists.ShowListItems(2, last - 5 - Fit2 + 1, false);
        Main().viewer.SetCurrentRecipe(recipe);
        Boxes.Then(Dialogs::Answer::Ok);
        Main().ownRecipes.DeleteRecipe(recipe, true, false);
    }
    ASSERT_NE(List(2).SelectedItem(), nullptr);
    EXPECT_EQ(SelectedLine(2), List(2).Count());
    EXPECT_EQ(List(2).SelectedItem()->Tag, std::to_string(Main().viewer.CurrentRecipe()));
    EXPECT_LT(Main().viewer.CurrentRecipe(), last);
    EXPECT_GT(Main().viewer.CurrentRecipe(), last - Fit2);
}

TEST_F(RecipesOnShow, RemovingFromAllRecipesMakesTheListShorterByOne) {
    ClickCategory("ALL RECIPES");
    PressLine(2, 2);
    Recipes().RemoveFrom_lvwX2(2);
    EXPECT_EQ(Main().VList[1].Count(), 204);
    EXPECT_TRUE(Main().VList[1].VirtualMode);
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
    EXPECT_EQ(SelectedLine(2), 2);
}

TEST_F(RecipesOnShow, TheCountFollowsARemoval) {
    ClickCategory("SHORT");
    Recipes().RemoveFrom_lvwX2(2);
    EXPECT_EQ(Found(), std::to_string(Fit2 - 3) + " recipes found ");
}

}  // namespace
}  // namespace larder::test
