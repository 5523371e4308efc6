#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MeasuredLists.h"

namespace larder::test {
namespace {

// The wheel has carried the selection bar out of the window, and the focus is out of sight.
class BarScrolledAway : public MeasuredLists {
  protected:
    void ScrollAway(int list) {
        while (!List(list).HideSelection()) {
            const int before = Main().VList[static_cast<std::size_t>(list - 1)].CurrentIndex;
            Wheel(list, 1);
            ASSERT_GT(Main().VList[static_cast<std::size_t>(list - 1)].CurrentIndex, before);
        }
        ASSERT_EQ(FocusedName(), "chkFocusCatcher");
    }
    // Recipe 3 has the bar.
    void ScrollRecipesAway(const std::string& category = "LONG") {
        OpenWithKeys(category);
        Press(Qt::Key_Down);
        Press(Qt::Key_Down);
        ScrollAway(2);
    }
    // The second category has the bar; the first is open.
    void ScrollCategoriesAway() {
        Focus(1);
        Press(Qt::Key_Down);
        ScrollAway(1);
    }
    // The release goes to the control that has the focus by then, as it does for a user.
    void Press(Qt::Key key) {
        KeyDown(key);
        KeyUp(key);
    }
    void ExpectBar(int recipe) {
        ASSERT_NE(List(2).SelectedItem(), nullptr);
        EXPECT_EQ(List(2).SelectedItem()->Tag, std::to_string(recipe));
        EXPECT_EQ(Main().strSelectedKey[1], "k" + std::to_string(recipe));
        EXPECT_FALSE(List(2).HideSelection());
        EXPECT_EQ(FocusedName(), "lvwX_2");
    }
};

TEST_F(BarScrolledAway, AKeyMovesItFromTheRecipeThatItIsOn) {
    const struct {
        Qt::Key key;
        int recipe;
    } steps[] = {{Qt::Key_Down, 4},   {Qt::Key_Up, 2},   {Qt::Key_PageDown, 3 + Fit2},
                 {Qt::Key_PageUp, 1}, {Qt::Key_Home, 1}, {Qt::Key_End, 3 * Fit2 + 1}};
    for (const auto& step : steps) {
        SCOPED_TRACE(step.recipe);
        ScrollRecipesAway();
        Press(step.key);
        ExpectBar(step.recipe);
    }
}

TEST_F(BarScrolledAway, AKeyMovesItInAllRecipesToo) {
    ScrollRecipesAway("ALL RECIPES");
    Press(Qt::Key_Down);
    ExpectBar(4);
    Press(Qt::Key_Down);
    ExpectBar(5);
}

TEST_F(BarScrolledAway, AHeldKeyActsOnEverySecondRepeat) {
    ScrollRecipesAway();
    KeyDown(Qt::Key_Down);
    ExpectBar(4);
    KeyDown(Qt::Key_Down, true);
    ExpectBar(4);
    KeyDown(Qt::Key_Down, true);
    ExpectBar(5);
}

TEST_F(BarScrolledAway, EnterOpensTheRecipeThatItIsOn) {
    ScrollRecipesAway();
    Press(Qt::Key_Return);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 3);
    ExpectBar(3);
}

TEST_F(BarScrolledAway, AKeyMovesItAmongTheCategories) {
    ScrollCategoriesAway();
    Press(Qt::Key_Down);
    EXPECT_EQ(Main().strSelectedKey[0], Book.Categories[2].first);
    EXPECT_EQ(FocusedName(), "lvwX_1");
    EXPECT_FALSE(List(1).HideSelection());
    Press(Qt::Key_Up);
    EXPECT_EQ(Main().strSelectedKey[0], Book.Categories[1].first);
}

TEST_F(BarScrolledAway, EnterOpensTheCategoryThatItIsOn) {
    Focus(1);
    for (int i = 1; i < 7; ++i)
        Press(Qt::Key_Down);
    ASSERT_EQ(Main().strSelectedKey[0], "     SHORT");
    ScrollAway(1);
    Press(Qt::Key_Return);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     SHORT");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2 - 2));
    EXPECT_EQ(FocusedName(), "lvwX_1");
}

TEST_F(BarScrolledAway, NextAndBackWalkTheListThatItIsIn) {
    struct Step {
        std::function<void()> act;
        int by;
    };
    const Step steps[] = {{[&] { Key(Qt::Key_N, Qt::AltModifier); }, 1},
                          {[&] { Key(Qt::Key_B, Qt::AltModifier); }, -1},
                          {[&] { Click("ibNext"); }, 1},
                          {[&] { Click("ibBack"); }, -1}};
    for (const Step& step : steps) {
        Focus(1);
        Press(Qt::Key_Home);
        for (int i = 0; i < 7; ++i)
            Press(Qt::Key_Down);
        ASSERT_EQ(Main().strSelectedKey[0], "     EXACT");
        ScrollAway(1);
        step.act();
        EXPECT_EQ(Main().ui.lblCategory.Caption(), step.by > 0 ? "     ONE MORE" : "     SHORT");
        EXPECT_EQ(FocusedName(), "lvwX_1");
    }
    ScrollRecipesAway();
    Key(Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 4);
    ExpectBar(4);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     LONG");
}

TEST_F(BarScrolledAway, AListThatGetsTheFocusKeepsIt) {
    ScrollCategoriesAway();
    Main().ui.ibHelp.SetFocus();
    Focus(1);
    EXPECT_EQ(FocusedName(), "lvwX_1");
    EXPECT_FALSE(List(1).HideSelection());
    EXPECT_EQ(List(1).SelectedItem()->Text(), Book.Categories[1].first);
    ScrollRecipesAway();
    Main().ui.ibHelp.SetFocus();
    Focus(2);
    ExpectBar(3);
}

TEST_F(BarScrolledAway, EnterInAnotherControlOpensTheRecipeThatItIsOn) {
    for (const char* category : {"LONG", "ALL RECIPES"}) {
        ScrollRecipesAway(category);
        Main().viewer.ShowRecipe(1);
        for (Control* other :
             {static_cast<Control*>(&Main().ui.rtbSee), static_cast<Control*>(&Main().ui.ibHelp)}) {
            Main().viewer.ShowRecipe(1);
            Wheel(2, 20);
            ASSERT_TRUE(List(2).HideSelection());
            other->SetFocus();
            ASSERT_TRUE(other->HasFocus());
            Press(Qt::Key_Return);
            EXPECT_EQ(Main().viewer.CurrentRecipe(), 3) << category;
            EXPECT_EQ(List(2).SelectedItem()->Tag, "3");
            EXPECT_FALSE(List(2).HideSelection());
        }
    }
}

TEST_F(BarScrolledAway, TheWheelOverTheOtherListTakesNoFocusForIt) {
    ClickCategory("LONG");
    Press(Qt::Key_Home);
    ScrollAway(1);
    Wheel(2, 1);
    Wheel(2, -1);
    EXPECT_EQ(FocusedName(), "chkFocusCatcher");
    Press(Qt::Key_Down);
    EXPECT_EQ(FocusedName(), "lvwX_1");
    EXPECT_EQ(Main().strSelectedKey[0], Book.Categories[1].first);
}

TEST_F(BarScrolledAway, AKeyThatMovesNoBarStaysWhereItIs) {
    ScrollRecipesAway();
    Press(Qt::Key_S);
    EXPECT_EQ(FocusedName(), "chkFocusCatcher");
    EXPECT_TRUE(List(2).HideSelection());
}

TEST_F(BarScrolledAway, AFocusThatNoListHasGivenAwayTakesNoKeys) {
    ScrollRecipesAway();
    Main().ui.ibHelp.SetFocus();
    Main().ui.chkFocusCatcher.SetFocus();
    const auto shown = ShownNumbers();
    Press(Qt::Key_Down);
    EXPECT_EQ(FocusedName(), "chkFocusCatcher");
    EXPECT_EQ(ShownNumbers(), shown);
}

}  // namespace
}  // namespace larder::test
