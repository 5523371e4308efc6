#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

class LongWalk : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(200);
        Book.Numbers("BIG") = NumbersFrom(1, 200);
        ASSERT_TRUE(Start());
    }
};

TEST_F(LongWalk, NextMeetsEveryRecipeOnce) {
    ClickCategory("BIG");
    Focus(2);
    for (int number = 2; number <= 200; ++number) {
        Click("ibNext");
        ASSERT_EQ(Main().viewer.CurrentRecipe(), number);
        ASSERT_EQ(List(2).SelectedItem()->Tag, std::to_string(number));
    }
    EXPECT_EQ(SelectedLine(2), Fit(2));
    for (int number = 199; number >= 1; --number) {
        Click("ibBack");
        ASSERT_EQ(Main().viewer.CurrentRecipe(), number);
    }
    EXPECT_EQ(SelectedLine(2), 1);
}

TEST_F(LongWalk, NextGoesOnFromTheRecipeThatWasScrolledAway) {
    ClickCategory("BIG");
    PressLine(2, 2);
    for (int i = 0; i < 20; ++i)
        Wheel(2, 1);
    Click("ibNext");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 3);
}

TEST_F(LongWalk, NextAtTheEndDoesNothingThoughTheBarWasScrolledAway) {
    ClickCategory("BIG");
    Focus(2);
    Key(Qt::Key_End);
    Key(Qt::Key_Return);
    ASSERT_EQ(Main().viewer.CurrentRecipe(), 200);
    for (int i = 0; i < 20; ++i)
        Wheel(2, -1);
    Main().ui.rtbSee.SetText("untouched");
    Click("ibNext");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 200);
    EXPECT_EQ(Main().ui.rtbSee.Text(), "untouched");
    EXPECT_EQ(ShownNumbers().back(), 200);
}

// All recipes, some of them deleted: at the beginning, and in the last window.
class WalkPastDeletedRecipes : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(6);
        Book.AddStock("");
        Book.AddManyStock(1);
        Book.AddStock("");
        Book.AddStock("");
        Book.AddManyStock(100);
        Book.AddManyOwn(2);
        Book.AddOwn("");
        Book.AddManyOwn(3);
        ASSERT_TRUE(Start());
        ASSERT_GE(Fit(2), 6);
        ASSERT_LT(2 * Fit(2), Book.StockCount());
        for (int number = 1; number <= Book.StockCount() + Book.OwnCount(); ++number) {
            if (number != 7 && number != 9 && number != 10 && number != 113) {
                Recipes.push_back(number);
            }
        }
        ClickCategory("ALL RECIPES");
        Focus(2);
    }
    int Bar() { return std::stoi(List(2).SelectedItem()->Tag); }

    std::vector<int> Recipes;  // that are there
};

TEST_F(WalkPastDeletedRecipes, NextAndBackLoseNoPress) {
    for (std::size_t i = 1; i < Recipes.size(); ++i) {
        Click("ibNext");
        ASSERT_EQ(Main().viewer.CurrentRecipe(), Recipes[i]);
        ASSERT_EQ(Bar(), Recipes[i]);
    }
    for (std::size_t i = Recipes.size() - 1; i > 0; --i) {
        Click("ibBack");
        ASSERT_EQ(Main().viewer.CurrentRecipe(), Recipes[i - 1]);
        ASSERT_EQ(Bar(), Recipes[i - 1]);
    }
}

TEST_F(WalkPastDeletedRecipes, DownAndUpLoseNoPress) {
    for (std::size_t i = 1; i < Recipes.size(); ++i) {
        Key(Qt::Key_Down);
        ASSERT_EQ(Bar(), Recipes[i]);
    }
    for (std::size_t i = Recipes.size() - 1; i > 0; --i) {
        Key(Qt::Key_Up);
        ASSERT_EQ(Bar(), Recipes[i - 1]);
    }
}

TEST_F(WalkPastDeletedRecipes, AtTheEndsNothingMoves) {
    Key(Qt::Key_End);
    Key(Qt::Key_Return);
    const int last = Main().viewer.CurrentRecipe();
    EXPECT_EQ(last, Recipes.back());
    Main().ui.rtbSee.SetText("untouched");
    Click("ibNext");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), last);
    EXPECT_EQ(Main().ui.rtbSee.Text(), "untouched");
    Key(Qt::Key_Down);
    EXPECT_EQ(Bar(), last);
    EXPECT_EQ(SelectedLine(2), Fit(2));
    Key(Qt::Key_Home);
    Key(Qt::Key_Up);
    EXPECT_EQ(Bar(), 1);
    EXPECT_EQ(SelectedLine(2), 1);
}

}  // namespace
}  // namespace larder::test
