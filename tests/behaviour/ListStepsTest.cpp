#include "browse/ListSteps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MeasuredLists.h"

namespace larder::test {
namespace {

class Steps : public MeasuredLists {
  protected:
    // The number of the recipe that has the bar, and the window's first.
    int Bar() { return std::stoi(List(2).SelectedItem()->Tag); }
    int First() { return ShownNumbers().front(); }
    int Last() { return ShownNumbers().back(); }
    void Press(Qt::Key key, int times = 1) {
        for (int i = 0; i < times; ++i)
            Key(key);
    }
    void ExpectBar(int recipe, int line) {
        EXPECT_EQ(Bar(), recipe);
        EXPECT_EQ(SelectedLine(2), line);
        EXPECT_EQ(Main().strSelectedKey[1], "k" + std::to_string(recipe));
        EXPECT_EQ(FocusedName(), "lvwX_2");
    }
};

TEST_F(Steps, DownGoesToTheNextLineOfTheWindow) {
    OpenWithKeys("LONG");
    Press(Qt::Key_Down);
    ExpectBar(2, 2);
    EXPECT_EQ(First(), 1);
}

TEST_F(Steps, DownOnTheLastLineMovesTheWindowByOne) {
    OpenWithKeys("LONG");
    Press(Qt::Key_Down, Fit2 - 1);
    ExpectBar(Fit2, Fit2);
    EXPECT_EQ(First(), 1);
    Press(Qt::Key_Down);
    ExpectBar(Fit2 + 1, Fit2);
    EXPECT_EQ(First(), 2);
}

TEST_F(Steps, DownStaysOnTheLastRecipe) {
    OpenWithKeys("ONE MORE");
    Press(Qt::Key_Down, Fit2 + 5);
    ExpectBar(Fit2 + 1, Fit2);
    EXPECT_EQ(First(), 2);
}

TEST_F(Steps, DownStaysOnTheLastRecipeOfAListThatJustFits) {
    OpenWithKeys("EXACT");
    Press(Qt::Key_Down, Fit2 + 5);
    ExpectBar(Fit2, Fit2);
    EXPECT_EQ(First(), 1);
}

TEST_F(Steps, DownOnTheLastLineOfAShortListKeepsTheBar) {
    OpenWithKeys("SHORT");
    Press(Qt::Key_Down, Fit2);
    ExpectBar(Fit2 - 2, Fit2 - 2);
    EXPECT_FALSE(List(2).HideSelection());
}

TEST_F(Steps, UpGoesToTheLineBefore) {
    OpenWithKeys("LONG");
    Press(Qt::Key_Down, 3);
    Press(Qt::Key_Up);
    ExpectBar(3, 3);
}

TEST_F(Steps, UpOnTheFirstLineMovesTheWindowByOne) {
    OpenWithKeys("LONG");
    Press(Qt::Key_Down, Fit2 + 1);
    ASSERT_EQ(First(), 3);
    Press(Qt::Key_Up, Fit2 - 1);
    ExpectBar(3, 1);
    Press(Qt::Key_Up);
    ExpectBar(2, 1);
    EXPECT_EQ(First(), 2);
}

TEST_F(Steps, UpStaysOnTheFirstRecipe) {
    for (const char* category : {"SHORT", "EXACT", "LONG", "ONE"}) {
        OpenWithKeys(category);
        const int first = First();
        Press(Qt::Key_Up, 2);
        ExpectBar(first, 1);
    }
}

TEST_F(Steps, TheBarStaysVisibleAtTheEdgesOfTheWindow) {
    OpenWithKeys("LONG");
    Press(Qt::Key_Down, Fit2);
    EXPECT_FALSE(List(2).HideSelection());
    Press(Qt::Key_PageDown);
    EXPECT_FALSE(List(2).HideSelection());
}

TEST_F(Steps, PageDownKeepsTheBarOnItsRow) {
    OpenWithKeys("LONG");
    Press(Qt::Key_Down, 2);
    Press(Qt::Key_PageDown);
    EXPECT_EQ(First(), Fit2 + 1);
    ExpectBar(Fit2 + 3, 3);
}

TEST_F(Steps, PageDownBeyondTheEndGoesToTheLastRecipe) {
    OpenWithKeys("LONG");
    Press(Qt::Key_Down, 2);
    Press(Qt::Key_PageDown, 3);
    EXPECT_EQ(Last(), 3 * Fit2 + 1);
    ExpectBar(3 * Fit2 + 1, Fit2);
    Press(Qt::Key_PageDown);
    ExpectBar(3 * Fit2 + 1, Fit2);
}

TEST_F(Steps, PageDownInAListThatFitsGoesToItsLastRecipe) {
    OpenWithKeys("EXACT");
    Press(Qt::Key_PageDown);
    ExpectBar(Fit2, Fit2);
    OpenWithKeys("SHORT");
    Press(Qt::Key_PageDown);
    ExpectBar(Fit2 - 2, Fit2 - 2);
    OpenWithKeys("ONE");
    Press(Qt::Key_PageDown);
    ExpectBar(5, 1);
}

TEST_F(Steps, PageDownByOneLineKeepsTheRowFirst) {
    OpenWithKeys("ONE MORE");
    Press(Qt::Key_PageDown);
    EXPECT_EQ(First(), 2);
    ExpectBar(2, 1);
    Press(Qt::Key_PageDown);
    ExpectBar(Fit2 + 1, Fit2);
}

TEST_F(Steps, PageUpKeepsTheBarOnItsRow) {
    OpenWithKeys("LONG");
    Press(Qt::Key_PageDown, 2);
    Press(Qt::Key_Down, 4);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(First(), Fit2 + 1);
    ExpectBar(Fit2 + 5, 5);
}

TEST_F(Steps, PageUpBeforeTheBeginningGoesToTheFirstRecipe) {
    OpenWithKeys("LONG");
    Press(Qt::Key_Down, 4);
    Press(Qt::Key_PageUp);
    ExpectBar(1, 1);
    Press(Qt::Key_PageUp);
    ExpectBar(1, 1);
}

TEST_F(Steps, PageUpInAListThatFitsGoesToItsFirstRecipe) {
    for (const char* category : {"EXACT", "SHORT"}) {
        OpenWithKeys(category);
        Press(Qt::Key_Down, 3);
        Press(Qt::Key_PageUp);
        ExpectBar(1, 1);
    }
}

// As when the window has become too small for it while the list waited for the focus.
TEST_F(Steps, APageMakesABarWhereThereIsNone) {
    OpenWithKeys("LONG");
    List(2).ClearSelection();
    Press(Qt::Key_PageDown);
    ExpectBar(Fit2 + 1, 1);
    Press(Qt::Key_PageDown);
    List(2).ClearSelection();
    Press(Qt::Key_PageUp);
    ExpectBar(Fit2 + 1, 1);
}

TEST_F(Steps, EndGoesToTheLastRecipeAndHomeToTheFirst) {
    const struct {
        const char* category;
        int count;
    } lists[] = {
        {"LONG", 3 * Fit2 + 1}, {"ONE MORE", Fit2 + 1}, {"EXACT", Fit2}, {"SHORT", Fit2 - 2}};
    for (const auto& list : lists) {
        OpenWithKeys(list.category);
        const int lines = std::min(list.count, Fit2);
        Press(Qt::Key_End);
        EXPECT_EQ(Last(), list.count) << list.category;
        ExpectBar(list.count, lines);
        EXPECT_FALSE(List(2).HideSelection());
        Press(Qt::Key_End);
        ExpectBar(list.count, lines);
        Press(Qt::Key_Home);
        EXPECT_EQ(First(), 1) << list.category;
        ExpectBar(1, 1);
        EXPECT_FALSE(List(2).HideSelection());
        Press(Qt::Key_Home);
        ExpectBar(1, 1);
    }
}

TEST_F(Steps, HomeAndEndWorkFromTheMiddleOfTheWindow) {
    OpenWithKeys("LONG");
    Press(Qt::Key_End);
    Press(Qt::Key_Up, 2);
    Press(Qt::Key_Home);
    ExpectBar(1, 1);
    Press(Qt::Key_Down, 2);
    Press(Qt::Key_End);
    ExpectBar(3 * Fit2 + 1, Fit2);
}

TEST_F(Steps, KeysInAnEmptyListDoNothing) {
    ClickCategory("NONE");
    Focus(2);
    for (const Qt::Key key :
         {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End}) {
        Press(key);
        EXPECT_EQ(SelectedLine(2), 0);
        EXPECT_EQ(List(2).Count(), 0);
    }
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
}

TEST_F(Steps, MovingTheBarOpensNoRecipe) {
    OpenWithKeys("LONG");
    Press(Qt::Key_Down, 3);
    Press(Qt::Key_PageDown);
    Press(Qt::Key_End);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
    EXPECT_FALSE(Main().ui.rtbSee.Visible());
}

TEST_F(Steps, TheKeysStepThroughTheCategoriesToo) {
    Focus(1);
    Press(Qt::Key_Down);
    EXPECT_EQ(SelectedLine(1), 2);
    Press(Qt::Key_End);
    EXPECT_EQ(SelectedLine(1), Fit1);
    EXPECT_EQ(Main().VList[0].CurrentIndex, Categories() - Fit1 + 1);
    EXPECT_EQ(Main().strSelectedKey[0], "     " + Book.Categories.back().first);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Main().VList[0].CurrentIndex, Categories() - 2 * Fit1 + 1);
    EXPECT_EQ(SelectedLine(1), Fit1);
    Press(Qt::Key_Home);
    EXPECT_EQ(Main().strSelectedKey[0], "MY FAVORITES");
    Press(Qt::Key_PageDown);
    EXPECT_EQ(SelectedLine(1), 1);
    EXPECT_EQ(Main().VList[0].CurrentIndex, Fit1 + 1);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "MY FAVORITES");
}

TEST_F(Steps, SteppingDownThroughAllCategoriesMeetsEachOnce) {
    Focus(1);
    for (int place = 1; place <= Categories(); ++place) {
        const std::string name = Book.Categories[static_cast<std::size_t>(place - 1)].first;
        EXPECT_EQ(Main().strSelectedKey[0], (place > 6 ? "     " : "") + name);
        Press(Qt::Key_Down);
    }
}

TEST_F(Steps, ScrollingByOneLineLeavesTheBarOnItsRecipe) {
    OpenWithKeys("LONG");
    Press(Qt::Key_Down, 3);
    Main().steps.ScrollListDown(2);
    EXPECT_EQ(First(), 2);
    EXPECT_EQ(Bar(), 4);
    Main().steps.ScrollListUp(2);
    EXPECT_EQ(First(), 1);
    EXPECT_EQ(Bar(), 4);
    EXPECT_EQ(SelectedLine(2), 4);
}

TEST_F(Steps, ScrollingStopsAtTheEnds) {
    OpenWithKeys("ONE MORE");
    Main().steps.ScrollListUp(2);
    EXPECT_EQ(First(), 1);
    for (int i = 0; i < 3; ++i)
        Main().steps.ScrollListDown(2);
    EXPECT_EQ(First(), 2);
    OpenWithKeys("SHORT");
    Main().steps.ScrollListDown(2);
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2 - 2));
}

TEST_F(Steps, ScrollingUpStartsTheScrollTimerAndAPressStopsIt) {
    OpenWithKeys("LONG");
    Main().steps.ScrollListUp(2);
    EXPECT_TRUE(Main().ui.tmrScrolls.Enabled());
    PressLine(2, 2);
    EXPECT_FALSE(Main().ui.tmrScrolls.Enabled());
}

TEST_F(Steps, TheScrollTimerStopsWithItsFirstTickWhenNothingIsHeld) {
    OpenWithKeys("LONG");
    Main().steps.ScrollListUp(2);
    ASSERT_TRUE(Main().ui.tmrScrolls.Enabled());
    EXPECT_TRUE(WaitUntil([&] { return !Main().ui.tmrScrolls.Enabled(); }));
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
}

TEST_F(Steps, APageWithoutTheKeyboardLeavesTheBarOnItsRecipe) {
    OpenWithKeys("LONG");
    Main().steps.FlipDown(2, false);
    EXPECT_EQ(First(), Fit2 + 1);
    EXPECT_EQ(Main().strSelectedKey[1], "k1");
    EXPECT_TRUE(List(2).HideSelection());
    Main().steps.FlipUp(2, false);
    EXPECT_EQ(First(), 1);
    EXPECT_EQ(Bar(), 1);
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_FALSE(List(2).HideSelection());
}

TEST_F(Steps, AllRecipesAreSteppedThroughLikeAnyList) {
    OpenWithKeys("ALL RECIPES");
    Press(Qt::Key_Down, Fit2);
    ExpectBar(Fit2 + 1, Fit2);
    Press(Qt::Key_PageDown);
    ExpectBar(2 * Fit2 + 1, Fit2);
    Press(Qt::Key_Home);
    ExpectBar(1, 1);
    Press(Qt::Key_End);
    EXPECT_EQ(Main().VList[1].CurrentIndex, 205 - Fit2 + 1);
    EXPECT_EQ(SelectedLine(2), Fit2);
}

}  // namespace
}  // namespace larder::test
